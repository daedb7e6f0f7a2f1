#pragma once

// The Debian package of the running build, as cpack makes it, in a folder of the test's own.
// Errors: std::runtime_error, with what the programs said.

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace memwright::install {

class DebianPackage {
  public:
    DebianPackage();

    // Why there can be none here; "" if there can.
    static std::string why_not();

    const std::filesystem::path& file() const { return file_; }

    // A field of its control file.
    std::string field(const std::string& name) const;

    // The names of the packages in such a field, without their versions.
    std::set<std::string> packages_in(const std::string& field) const;

    // Lines such as "-rw-r--r-- root/root 397 2026-11-21 01:53 ./usr/share/..."
    std::vector<std::string> listing() const;

    // What stands in the archive for the package manager: "control" and scripts.
    std::set<std::string> control_files() const;

    // Unpacks its files below a folder.
    void unpack(const std::filesystem::path& folder) const;

  private:
    TemporaryFolder folder_{TemporaryFolder::For::the_test};
    std::filesystem::path file_;
};

}  // namespace memwright::install
