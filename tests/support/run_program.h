#pragma once

// Runs a program to its end and gives what it wrote. The arguments reach it as they are: no shell
// reads them.
// Errors: std::runtime_error when it cannot be started or does not end in time.

#include <filesystem>
#include <string>
#include <vector>

#include "support/eventually.h"
#include "support/process.h"

namespace memwright::systest {

struct Outcome {
    ExitStatus status;
    std::string output;  // standard output and errors, as they came
};

// With the environment and a PATH.
Outcome run_program(const std::filesystem::path& program, std::vector<std::string> arguments,
                    Environment environment = {}, Milliseconds patience = kPatience);

// The same; fails, with what it wrote, unless it succeeds.
std::string output_of(const std::filesystem::path& program, std::vector<std::string> arguments,
                      Environment environment = {}, Milliseconds patience = kPatience);

struct SeparateOutcome {
    ExitStatus status;
    std::string output;
    std::string errors;
};

// Runs a command as it stands, but for the streams that it leaves open: standard input is the text,
// output and errors come back, each by itself.
SeparateOutcome run_apart(Command command, const std::string& input = "");

}  // namespace memwright::systest
