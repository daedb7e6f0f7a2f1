#include "system/support/program.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "support/read_file.h"

namespace memwright::systest {
namespace {

std::string inherited(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) + ":" : std::string();
}

Command command_for(const Desktop& desktop, const std::filesystem::path& file,
                    std::vector<std::string> arguments, const Environment& extra,
                    const std::filesystem::path& output, const std::filesystem::path& errors) {
    Environment environment = desktop.environment();
    environment["ASAN_OPTIONS"] = inherited("ASAN_OPTIONS") + "exitcode=86";
    environment["UBSAN_OPTIONS"] = inherited("UBSAN_OPTIONS") + "print_stacktrace=1:exitcode=86";
    for (const auto& [name, value] : extra) {
        std::string& set = environment[name];
        set = name == "ASAN_OPTIONS" ? set + ":" + value : value;
    }
    return {.program = file,
            .arguments = std::move(arguments),
            .environment = std::move(environment),
            .folder = desktop.home(),
            .output = output,
            .errors = errors};
}

std::filesystem::path output_file(Desktop& desktop) {
    return desktop.folder() / ("program" + std::to_string(desktop.next_program()) + ".out");
}

}  // namespace

Program::Program(Desktop& desktop, const std::filesystem::path& file,
                 std::vector<std::string> arguments, const Environment& extra)
    : desktop_(desktop),
      name_(file.filename()),
      output_(output_file(desktop)),
      errors_(std::filesystem::path(output_).replace_extension(".err")),
      process_(command_for(desktop, file, std::move(arguments), extra, output_, errors_)) {}

Program::~Program() {
    const auto ended = process_.exit_status();
    if (ended && !ended->success() && !end_expected_) {
        ADD_FAILURE() << account();
    } else if (testing::Test::HasFailure() || std::uncaught_exceptions() > 0) {
        std::cerr << account() << '\n';
    }
    process_.stop();
    check_sanitizers();
}

ExitStatus Program::wait_for_exit(Milliseconds patience) {
    end_expected_ = true;
    if (!wait_until([this] { return !running(); }, patience)) {
        ADD_FAILURE() << "Did not end within " << patience.count() << " ms\n" << account();
        kill();
    }
    check_sanitizers();
    return process_.exit_status().value_or(ExitStatus{});
}

void Program::kill() {
    end_expected_ = true;
    process_.signal(SIGKILL);
    wait_until([this] { return !running(); });
}

std::string Program::output() const { return read_file(output_); }

std::string Program::errors() const { return read_file(errors_); }

std::string Program::wait_for_line(std::string_view text, Milliseconds patience) const {
    std::string found;
    const auto look = [&] {
        // Asked before the output is read: what it wrote just before ending still counts.
        const bool alive = running();
        std::istringstream lines(output());
        for (std::string line; std::getline(lines, line) && !lines.eof();) {
            if (line.find(text) == std::string::npos) continue;
            found = line;
            return true;
        }
        if (!alive) require_running();
        return false;
    };
    if (wait_until(look, patience)) return found;
    throw NotThere("No line with '" + std::string(text) + "' was written.\n" + account());
}

void Program::require_running() const {
    if (!running()) throw std::runtime_error(account());
}

void Program::check_sanitizers() {
    if (checked_) return;
    const std::string text = errors();
    for (const char* mark : {"ERROR: AddressSanitizer", "ERROR: LeakSanitizer", "runtime error:"}) {
        if (text.find(mark) == std::string::npos) continue;
        checked_ = true;
        ADD_FAILURE() << "A sanitizer complains of " << name_ << ":\n" << text;
        return;
    }
}

std::string Program::account() const {
    std::ostringstream text;
    text << "The program " << name_;
    if (const auto ended = process_.exit_status()) {
        text << " has ended: " << *ended;
    } else {
        text << " is running.";
    }
    text << "\n---- its output ----\n"
         << output() << "---- its errors ----\n"
         << errors() << "----";
    return text.str();
}

}  // namespace memwright::systest
