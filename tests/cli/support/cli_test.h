#pragma once

// The built memwright-cli, run to its end in a folder of its own that holds its files and, apart
// from them, its settings. No shell reads its arguments.

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "cli/support/image.h"
#include "support/process.h"
#include "support/temporary_folder.h"

namespace memwright::cli_tests {

using Words = std::vector<std::string>;

inline constexpr int kBySignal = -1;

// How a run ended: the exit status, standard output, standard error.
struct Ended {
    int status = 0;
    std::string output;
    std::string errors;

    friend bool operator==(const Ended&, const Ended&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Ended& ended) {
        return out << "exit status " << ended.status << "\noutput: " << ended.output
                   << "\nerrors: " << ended.errors;
    }
};

// It did what it was asked for and had nothing to say.
inline Ended done(const std::string& output = "") { return {0, output, ""}; }

Words operator+(const Words& first, const Words& then);

// The program with its arguments; it runs in `folder` and keeps its settings in `home`.
systest::Command cli_command(const Words& arguments, const TemporaryFolder& folder,
                             const TemporaryFolder& home);

// Streams that the command does not name are given, or come back.
Ended run_to_end(systest::Command command, const std::string& input = "");

class CliTest : public ::testing::Test {
  protected:
    systest::Command command(const Words& arguments) const {
        return cli_command(arguments, folder_, home_);
    }
    Ended run(const Words& arguments, const std::string& input = "") const {
        return run_to_end(command(arguments), input);
    }

    std::string put(const std::string& name, const Image& image) const {
        return folder_.put(name, image.bytes());
    }
    std::string put_text(const std::string& name, const std::string& text) const {
        return folder_.put(name, {text.begin(), text.end()});
    }
    std::string text(const std::string& name) const {
        const auto bytes = folder_.get(name);
        return {bytes.begin(), bytes.end()};
    }
    std::string file(const std::string& name) const { return folder_.file(name); }

    TemporaryFolder folder_;
    TemporaryFolder home_;
};

}  // namespace memwright::cli_tests
