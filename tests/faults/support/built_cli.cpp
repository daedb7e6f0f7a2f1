#include "faults/support/built_cli.h"

#include <fcntl.h>

#include <cstdlib>

#include "fakes/child_process.h"
#include "faults/support/every_fault.h"
#include "faults/support/traced_child.h"
#include "support/built_programs.h"

namespace memwright::faults {
namespace {

constexpr int kNotStarted = 98;

void redirect(int stream, const std::string& path, int flags) {
    const int file = open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (file < 0 || dup2(file, stream) < 0) _exit(kNotStarted);
    close(file);
}

// What the sanitizers find is told all the same; their search for leaks cannot be traced.
void leave_leaks_alone() {
    const char* const given = std::getenv("ASAN_OPTIONS");
    const std::string options = (given == nullptr ? "" : std::string(given) + ":");
    setenv("ASAN_OPTIONS", (options + "detect_leaks=0").c_str(), 1);
}

}  // namespace

void BuiltCli::become(const std::vector<std::string>& arguments, bool traced,
                      const std::string& output) const {
    constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
    redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    redirect(STDOUT_FILENO, output.empty() ? home_.file("output") : output, kNew);
    redirect(STDERR_FILENO, home_.file("errors"), kNew);
    setenv("HOME", home_.path().c_str(), 1);
    for (const char* const name : {"XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME"}) {
        unsetenv(name);
    }
    leave_leaks_alone();
    std::string program = systest::built_program("memwright-cli");
    std::vector<std::string> words = arguments;
    std::vector<char*> given{program.data()};
    for (std::string& word : words) given.push_back(word.data());
    given.push_back(nullptr);
    if (traced) trace_from_here();
    execv(program.c_str(), given.data());
    _exit(kNotStarted);
}

int BuiltCli::run(const std::vector<std::string>& arguments) const {
    const pid_t child = fork();
    if (child == 0) {
        end_child_after_a_minute();
        become(arguments, false);
    }
    const int status = wait_for(child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string BuiltCli::errors() const {
    const auto bytes = content_of(home_.path() / "errors").value_or(Bytes{});
    return {bytes.begin(), bytes.end()};
}

}  // namespace memwright::faults
