#pragma once

// The built memwright-cli in the place of a test's child process.

#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace memwright::faults {

// What the program writes is in the files "output" and "errors" of the folder, which holds its
// settings and the user's data, too.
class BuiltCli {
  public:
    explicit BuiltCli(const TemporaryFolder& home) : home_(home) {}

    // Makes the program of the calling process, traced from its start if so wished. Its output goes
    // to `output`, if there is one.
    [[noreturn]] void become(const std::vector<std::string>& arguments, bool traced,
                             const std::string& output = "") const;

    // Runs it untouched; its exit status, -1 if a signal ended it.
    int run(const std::vector<std::string>& arguments) const;

    // What the last run said on standard error.
    std::string errors() const;

  private:
    const TemporaryFolder& home_;
};

}  // namespace memwright::faults
