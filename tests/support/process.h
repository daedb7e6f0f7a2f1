#pragma once

// One child process in a process group of its own, which never outlives the test: the kernel
// ends it when the test dies, however that happens. Its output goes to files, so a child that
// writes much never waits for a reader.
// Errors: std::runtime_error when the program cannot be found or started.

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace memwright::systest {

using Environment = std::map<std::string, std::string>;

struct Command {
    std::filesystem::path program;  // a plain name is looked up in PATH
    std::vector<std::string> arguments = {};
    Environment environment = {};       // the whole of it; nothing is inherited
    std::filesystem::path folder = {};  // where it runs; empty for the test's own
    std::filesystem::path input = {};
    std::filesystem::path output = {};
    std::filesystem::path errors = {};
    int inherited_descriptor = -1;  // kept open in the child under the same number
    int death_signal = SIGKILL;     // what it receives when the test dies
};

// The environment of the test itself.
Environment inherited_environment();

struct ExitStatus {
    int code = 0;    // meaningful when signal is 0
    int signal = 0;  // the signal that ended it
    bool success() const { return code == 0 && signal == 0; }
    friend bool operator==(const ExitStatus&, const ExitStatus&) = default;
    friend std::ostream& operator<<(std::ostream& out, const ExitStatus& status);
};

class Process {
  public:
    explicit Process(const Command& command);
    ~Process();  // stops it
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return pid_; }
    std::optional<ExitStatus> exit_status();  // empty while it runs
    void signal(int number);                  // to the whole group
    void stop();                              // politely, then by force

  private:
    pid_t pid_ = -1;
    std::optional<ExitStatus> ended_;
};

}  // namespace memwright::systest
