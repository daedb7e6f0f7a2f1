#include "cli/support/cli_test.h"

#include <cstdlib>

#include "support/built_programs.h"
#include "support/run_program.h"

namespace memwright::cli_tests {

Words operator+(const Words& first, const Words& then) {
    Words all = first;
    all.insert(all.end(), then.begin(), then.end());
    return all;
}

systest::Command cli_command(const Words& arguments, const TemporaryFolder& folder,
                             const TemporaryFolder& home) {
    systest::Command command = {.program = systest::built_program("memwright-cli"),
                                .arguments = arguments,
                                .environment = {{"HOME", home.path().string()},
                                                {"LC_ALL", "C.UTF-8"},
                                                {"PATH", "/usr/bin:/bin"}},
                                .folder = folder.path()};
    for (const char* const name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (const char* const value = std::getenv(name)) command.environment[name] = value;
    }
    return command;
}

Ended run_to_end(systest::Command command, const std::string& input) {
    const auto [status, output, errors] = systest::run_apart(std::move(command), input);
    return {status.signal != 0 ? kBySignal : status.code, output, errors};
}

}  // namespace memwright::cli_tests
