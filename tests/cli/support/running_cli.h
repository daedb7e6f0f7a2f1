#pragma once

// memwright-cli while it runs: for transfers, which take as long as the radio does, and for
// signals. What it writes is in files, or on a terminal that the test holds.

#include <functional>
#include <string>

#include "cli/support/cli_test.h"
#include "support/process.h"
#include "support/temporary_folder.h"

namespace memwright::cli_tests {

class RunningCli {
  public:
    // Streams that the command does not name are files.
    explicit RunningCli(systest::Command command);

    // Until standard error holds the text; a failure of the test if that does not come.
    void wait_for_error(const std::string& text);

    void signal(int number) { process_.signal(number); }
    pid_t pid() const { return process_.pid(); }
    bool runs() { return !process_.exit_status().has_value(); }

    // Waits for the end of a whole transfer, if need be.
    Ended end();

  private:
    TemporaryFolder folder_;
    systest::Command command_;
    systest::Process process_;
};

// Two ends of a terminal that memwright-cli is started at.
class Terminal {
  public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    const std::string& path() const { return path_; }
    void type(const std::string& keys) const;

    // All that has been shown so far.
    std::string shown();
    void wait_for(const std::string& text);

  private:
    int master_ = -1;
    int slave_ = -1;  // stays open, so that what is shown is kept
    std::string path_;
    std::string shown_;
};

}  // namespace memwright::cli_tests
