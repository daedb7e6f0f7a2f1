#pragma once

// The running build, installed under a prefix of the test's own as a user would do it, and what is
// said of its files. It goes away with the test.
// Errors: std::runtime_error, with what the installer said.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/run_program.h"
#include "support/temporary_folder.h"

namespace memwright::install {

inline constexpr const char* kId = "org.memwright.Memwright";
inline constexpr const char* kMimeType = "application/x-vr120-image";
inline constexpr const char* kMimeIcon = "application-x-vr120-image";
inline const std::vector<std::string> kPrograms = {"memwright", "memwright-cli", "vr120-sim"};
// What they load when they need it.
inline const std::vector<std::string> kModules = {"memwright-ports-and-pages.so",
                                                  "memwright-printing.so"};

class Installation {
  public:
    Installation();

    std::filesystem::path prefix() const { return folder_.path() / "prefix"; }
    std::filesystem::path program(const std::string& name) const { return prefix() / "bin" / name; }
    std::filesystem::path share() const { return prefix() / "share"; }
    std::filesystem::path module(const std::string& name) const;
    std::filesystem::path page(const std::string& program) const;
    std::filesystem::path desktop_file() const;
    std::filesystem::path mime_file() const;
    std::filesystem::path metainfo() const;
    std::filesystem::path icons() const { return share() / "icons/hicolor"; }

    // What makes a session find what is installed, before what the system has.
    systest::Environment environment() const;

    // What one of the programs says, which is to end well.
    std::string say(const std::string& program, std::vector<std::string> arguments) const;

    // A folder for the test's files.
    std::filesystem::path folder() const { return folder_.path(); }

  private:
    TemporaryFolder folder_{TemporaryFolder::For::the_test};
};

// Installs under the prefix; with a `stage`, below that folder, as packagers do.
void install(const std::filesystem::path& prefix, const std::string& stage = "");

// Every file under the folder, from there on, and its permissions.
using Files = std::map<std::string, int>;
Files files_under(const std::filesystem::path& folder);

// What belongs into the prefix.
Files installed_files();

// An image file with the memory of a radio that has been in use.
void write_image(const std::filesystem::path& file);

// Why a test cannot be run here: "" where the program is installed.
std::string missing(const std::filesystem::path& program, const std::string& package);

// Every match of a regular expression's first group, in order, each once.
std::vector<std::string> matches(const std::string& text, const std::string& expression);

}  // namespace memwright::install
