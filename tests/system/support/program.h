#pragma once

// A program under test, started on a desktop. Its output can be read at any time.
// A program that a sanitizer complains of, or that dies without the test asking for its exit
// status, fails the test.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/eventually.h"
#include "support/process.h"
#include "system/support/desktop.h"

namespace memwright::systest {

class Program {
  public:
    Program(Desktop& desktop, const std::filesystem::path& file,
            std::vector<std::string> arguments = {}, const Environment& extra = {});
    virtual ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Desktop& desktop() const { return desktop_; }
    pid_t pid() const { return process_.pid(); }
    bool running() const { return !process_.exit_status(); }

    // Fails the test, and kills the program, when it does not end in time.
    ExitStatus wait_for_exit(Milliseconds patience = kPatience);
    void signal(int number) { process_.signal(number); }
    void kill();  // as a power cut would

    std::string output() const;  // all of it up to now
    std::string errors() const;
    // The first whole line of the output that has the text in it.
    std::string wait_for_line(std::string_view text, Milliseconds patience = kPatience) const;

    // Throws, with all that the program said, when it is no longer there to be driven.
    void require_running() const;

  private:
    void check_sanitizers();
    std::string account() const;

    Desktop& desktop_;
    std::string name_;
    std::filesystem::path output_;
    std::filesystem::path errors_;
    mutable Process process_;  // asking for the status collects it
    bool end_expected_ = false;
    bool checked_ = false;
};

}  // namespace memwright::systest
