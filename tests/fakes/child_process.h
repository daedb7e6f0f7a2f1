#pragma once

// Work in a child process: under another user, with limits of its own, or killed in the middle.
// POSIX only. A child reports in words; one that hangs is ended after a minute.

#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <functional>
#include <string>

namespace memwright {

inline constexpr uid_t kNobody = 65534;

// Ends the child if it never comes back.
inline void end_child_after_a_minute() { alarm(60); }

inline int wait_for(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// What `work` returns in a child process; "error: " and the text of an exception that leaves it;
// "died" if the child did not come to its end.
inline std::string in_child(const std::function<std::string()>& work) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child < 0) return "no child";
    if (child == 0) {
        close(ends[0]);
        end_child_after_a_minute();
        std::string report;
        try {
            report = work();
        } catch (const std::exception& error) {
            report = std::string("error: ") + error.what();
        }
        report += '\n';
        const bool told =
            write(ends[1], report.data(), report.size()) == static_cast<ssize_t>(report.size());
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    std::string report;
    char part[4096];
    for (ssize_t size = 0; (size = read(ends[0], part, sizeof part)) > 0;) {
        report.append(part, static_cast<std::size_t>(size));
    }
    close(ends[0]);
    const int status = wait_for(child);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || report.empty()) return "died";
    report.pop_back();
    return report;
}

// Gives up the rights of the system's administrator, if the process has them.
inline bool become_an_ordinary_user(gid_t group = kNobody) {
    if (geteuid() != 0) return true;
    return setgid(group) == 0 && setuid(kNobody) == 0 && geteuid() == kNobody;
}

inline std::string as_an_ordinary_user(const std::function<std::string()>& work) {
    return in_child([&]() -> std::string {
        if (!become_an_ordinary_user()) return "cannot change the user";
        return work();
    });
}

// From now on this process can write no file past `size` bytes; trying gives an error.
inline bool limit_file_size(rlim_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, size};
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

}  // namespace memwright
