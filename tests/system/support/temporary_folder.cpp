#include "system/support/temporary_folder.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace memwright::systest {
namespace {

[[noreturn]] void guard(int pipe_end, const char* folder) {
    // A group of its own, so that Ctrl+C in the terminal does not take the guard along.
    setpgid(0, 0);
    dup2(pipe_end, 0);
    // Two rounds: the first may meet a process that is just ending and still writing.
    execl("/bin/sh", "sh", "-c", "read -r _; rm -rf \"$0\" || rm -rf \"$0\"", folder, nullptr);
    _exit(127);
}

}  // namespace

TemporaryFolder::TemporaryFolder(const std::filesystem::path& parent) {
    std::string name = parent / "memwright-XXXXXX";
    std::array<int, 2> ends{-1, -1};
    if (mkdtemp(name.data()) == nullptr || pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("Cannot make the folder '" + name + "': " + strerror(errno));
    }
    path_ = name;
    guard_ = fork();
    if (guard_ == 0) guard(ends[0], name.c_str());
    close(ends[0]);
    guard_pipe_ = ends[1];
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    close(guard_pipe_);
    if (guard_ > 0) waitpid(guard_, nullptr, 0);
}

}  // namespace memwright::systest
