#pragma once

// A small Debian of the test's own, without anything of this machine: the system itself and the
// packages that are asked for, from the machine's own package sources. Programs run in it as if it
// were the whole system. It goes away with the test.
// Root only, with the Debian package mmdebstrap.
// Errors: NoMirror when no packages can be fetched; otherwise std::runtime_error with what was
// said.

#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace memwright::install {

class NoMirror : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class CleanRoot {
  public:
    explicit CleanRoot(const std::set<std::string>& packages);  // a minute, or two on a slow disk

    // Why there can be none here; "" if there can.
    static std::string why_not();

    std::filesystem::path path() const { return folder_.path() / "root"; }

    // Runs a program of the root in it.
    systest::Outcome run(const std::string& program, std::vector<std::string> arguments) const;
    std::string output_of(const std::string& program, std::vector<std::string> arguments) const;

    // Every file, folder and link with what it is: kind, permissions, length or target. Without the
    // logs, the locks and the package manager's lists, which every installation changes.
    std::map<std::string, std::string> content() const;

  private:
    TemporaryFolder folder_;
};

}  // namespace memwright::install
