#include "support/process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "support/eventually.h"

namespace memwright::systest {
namespace {

std::filesystem::path absolute_program(const std::filesystem::path& program) {
    if (program.has_parent_path()) return std::filesystem::absolute(program);
    const char* path = std::getenv("PATH");
    // Distributions keep daemons out of PATH.
    std::istringstream folders(std::string(path != nullptr ? path : "/usr/bin:/bin") +
                               ":/usr/libexec:/usr/lib/at-spi2-core:/usr/lib");
    for (std::string folder; std::getline(folders, folder, ':');) {
        auto candidate = std::filesystem::path(folder) / program;
        if (access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    throw std::runtime_error("Cannot start '" + program.string() +
                             "': it is not installed. The system tests need the packages xvfb, "
                             "openbox, dbus-daemon and at-spi2-core.");
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

// All that the child needs, laid out beforehand: between fork and exec nothing may allocate.
struct Prepared {
    std::string program;
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    std::string folder;
    std::string input;
    std::string output;
    std::string errors;
    std::vector<char*> argv;
    std::vector<char*> envp;

    explicit Prepared(const Command& command)
        : program(absolute_program(command.program)),
          folder(command.folder),
          input(command.input.empty() ? "/dev/null" : command.input.string()),
          output(command.output.empty() ? "/dev/null" : command.output.string()),
          errors(command.errors.empty() ? "/dev/null" : command.errors.string()) {
        arguments.push_back(program);
        arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
        for (const auto& [name, value] : command.environment) {
            environment.push_back(std::string(name).append("=").append(value));
        }
        argv = pointers(arguments);
        envp = pointers(environment);
    }
};

bool open_as(int descriptor, const char* file, int flags) {
    const int opened = open(file, flags | O_CLOEXEC, 0600);
    return opened >= 0 && dup2(opened, descriptor) == descriptor;
}

[[noreturn]] void become(const Command& command, const Prepared& prepared, pid_t parent) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, command.death_signal);
    const bool orphaned = getppid() != parent;
    const int writing = O_WRONLY | O_CREAT | O_APPEND | O_NOCTTY;
    const bool ready = !orphaned && open_as(0, prepared.input.c_str(), O_RDONLY | O_NOCTTY) &&
                       open_as(1, prepared.output.c_str(), writing) &&
                       open_as(2, prepared.errors.c_str(), writing) &&
                       (prepared.folder.empty() || chdir(prepared.folder.c_str()) == 0);
    if (command.inherited_descriptor >= 0) fcntl(command.inherited_descriptor, F_SETFD, 0);
    if (ready) execve(prepared.program.c_str(), prepared.argv.data(), prepared.envp.data());
    _exit(127);
}

}  // namespace

Environment inherited_environment() {
    Environment found;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string text = *each;
        const auto equals = text.find('=');
        if (equals != std::string::npos) found[text.substr(0, equals)] = text.substr(equals + 1);
    }
    return found;
}

std::ostream& operator<<(std::ostream& out, const ExitStatus& status) {
    if (status.signal != 0) return out << "ended by signal " << status.signal;
    return out << "exit status " << status.code;
}

Process::Process(const Command& command) {
    const Prepared prepared(command);
    const pid_t parent = getpid();
    pid_ = fork();
    if (pid_ < 0) {
        throw std::runtime_error("Cannot start '" + prepared.program + "': " + strerror(errno));
    }
    if (pid_ == 0) become(command, prepared, parent);
    setpgid(pid_, pid_);  // here too: whoever signals the group first must find it
}

Process::~Process() { stop(); }

std::optional<ExitStatus> Process::exit_status() {
    int status = 0;
    if (!ended_ && waitpid(pid_, &status, WNOHANG) == pid_) {
        ended_ = WIFSIGNALED(status) ? ExitStatus{0, WTERMSIG(status)}
                                     : ExitStatus{WEXITSTATUS(status), 0};
    }
    return ended_;
}

void Process::signal(int number) {
    if (!exit_status()) kill(-pid_, number);
}

void Process::stop() {
    signal(SIGTERM);
    if (wait_until([this] { return exit_status().has_value(); }, Milliseconds{2000})) return;
    signal(SIGKILL);
    wait_until([this] { return exit_status().has_value(); });
}

}  // namespace memwright::systest
