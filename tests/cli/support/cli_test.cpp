#include "cli/support/cli_test.h"

#include <cstdlib>

#include "printing/support/run_program.h"

namespace memwright::cli_tests {

Words operator+(const Words& first, const Words& then) {
    Words all = first;
    all.insert(all.end(), then.begin(), then.end());
    return all;
}

Ended CliTest::run(const Words& arguments, const std::string& input) const {
    return run_command(command(arguments), input);
}

Ended CliTest::run_command(systest::Command command, const std::string& input) const {
    const auto [status, output, errors] = printing::run_apart(std::move(command), input);
    return {status.signal != 0 ? kBySignal : status.code, output, errors};
}

systest::Command CliTest::command(const Words& arguments) const {
    systest::Command command = {.program = MEMWRIGHT_CLI,
                                .arguments = arguments,
                                .environment = {{"HOME", home_.path().string()},
                                                {"LC_ALL", "C.UTF-8"},
                                                {"PATH", "/usr/bin:/bin"}},
                                .folder = folder_.path()};
    for (const char* const name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (const char* const value = std::getenv(name)) command.environment[name] = value;
    }
    return command;
}

}  // namespace memwright::cli_tests
