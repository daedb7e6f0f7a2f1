// The Debian package: what it holds, and what it depends on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>

#include "install/support/debian_package.h"
#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::output_of;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::StartsWith;

class Package : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto why = DebianPackage::why_not(); !why.empty()) GTEST_SKIP() << why;
    }

    // Made once, by one whose files are his own.
    static const DebianPackage& made() {
        umask(077);
        static const DebianPackage package;
        return package;
    }
};

// The package that a file of the system came with.
std::string owner_of(const fs::path& file) {
    // Libraries are known by one of two names since /lib is a link to /usr/lib.
    const std::string real = fs::canonical(file);
    for (const std::string& name : {real, real.substr(std::string("/usr").size())}) {
        const auto outcome = systest::run_program("/usr/bin/dpkg-query", {"--search", name});
        if (outcome.status.success()) return outcome.output.substr(0, outcome.output.find(':'));
    }
    return "nobody's " + real;
}

// The packages with the libraries that a program or library names itself.
std::set<std::string> packages_for(const fs::path& binary) {
    const std::string found = output_of("/usr/bin/ldd", {binary});
    std::set<std::string> packages;
    for (const std::string& library :
         matches(output_of("/usr/bin/readelf", {"--dynamic", binary}), "NEEDED.*\\[(.*)\\]$")) {
        if (library.starts_with("ld-linux")) continue;
        const std::string name = std::regex_replace(library, std::regex("[.+]"), "\\$&");
        const auto paths = matches(found, "^\\s*" + name + " => ([^ ]+) ");
        packages.insert(paths.size() == 1 ? owner_of(paths.front()) : "no " + library);
    }
    return packages;
}

TEST_F(Package, depends_on_the_packages_of_the_libraries_that_its_binaries_name) {
    const DebianPackage& package = made();
    const Installation installation;
    std::set<std::string> needed;
    std::vector<fs::path> binaries;
    for (const std::string& module : kModules) binaries.push_back(installation.module(module));
    for (const std::string& program : kPrograms) binaries.push_back(installation.program(program));
    for (const fs::path& binary : binaries) needed.merge(packages_for(binary));
    EXPECT_THAT(needed, testing::Contains("libqt6serialport6"));
    EXPECT_EQ(package.packages_in("Depends"), needed);
}

TEST_F(Package, the_plugins_that_are_loaded_come_with_what_it_depends_on) {
    const DebianPackage& package = made();
    const fs::path plugins = QT_PLUGINS;
    for (const char* plugin : {"platforms/libqxcb.so", "platforms/libqoffscreen.so",
                               "printsupport/libcupsprintersupport.so"}) {
        EXPECT_THAT(package.packages_in("Depends"), testing::Contains(owner_of(plugins / plugin)))
            << plugin;
    }
}

TEST_F(Package, is_described) {
    const DebianPackage& package = made();
    EXPECT_EQ(package.field("Package"), "memwright");
    EXPECT_EQ(package.field("Version"), PROJECT_VERSION);
    EXPECT_EQ(package.field("Section"), "hamradio");
    EXPECT_THAT(package.field("Maintainer"), ContainsRegex("^.+ <.+@.+>$"));
    EXPECT_THAT(package.field("Description"), ContainsRegex("^editor for .{10,60}\n .*\n .*"));
    EXPECT_EQ(package.packages_in("Recommends"),
              (std::set<std::string>{"desktop-file-utils", "hicolor-icon-theme", "qt6-wayland"}));
}

TEST_F(Package, needs_no_scripts) {
    EXPECT_THAT(made().control_files(), ElementsAre("control", "md5sums"));
}

TEST_F(Package, holds_what_an_installation_has_and_what_Debian_wants_besides) {
    const DebianPackage& package = made();
    const TemporaryFolder folder;
    package.unpack(folder.path());
    Files wanted;
    for (const auto& [name, mode] : installed_files()) {
        const bool page = name.starts_with("share/man/");
        wanted["usr/" + name + (page ? ".gz" : "")] = mode;
    }
    wanted["usr/share/doc/memwright/changelog.gz"] = 0644;
    EXPECT_EQ(files_under(folder.path()), wanted);
}

TEST_F(Package, its_files_are_roots_and_its_folders_open_whoever_made_it) {
    int folders = 0;
    for (const std::string& line : made().listing()) {
        EXPECT_THAT(line, ContainsRegex("^[^ ]+ root/root "));
        if (line.starts_with('d')) {
            EXPECT_THAT(line, StartsWith("drwxr-xr-x "));
            ++folders;
        }
    }
    EXPECT_GT(folders, 10);
}

TEST_F(Package, its_binaries_are_stripped) {
    const DebianPackage& package = made();
    const TemporaryFolder folder;
    package.unpack(folder.path());
    std::size_t binaries = 0;
    for (const auto& [name, mode] : files_under(folder.path())) {
        const std::string kind = output_of("/usr/bin/file", {"--brief", folder.path() / name});
        if (!kind.starts_with("ELF")) continue;
        EXPECT_THAT(kind, HasSubstr(", stripped")) << name;
        ++binaries;
    }
    EXPECT_EQ(binaries, kPrograms.size() + kModules.size());
}

TEST_F(Package, its_changelog_is_Debians_and_speaks_of_this_version) {
    const DebianPackage& package = made();
    const TemporaryFolder folder;
    package.unpack(folder.path());
    const fs::path changelog = folder.path() / "usr/share/doc/memwright/changelog.gz";
    const std::string text = output_of("/bin/zcat", {changelog});
    EXPECT_THAT(text, StartsWith("memwright (" PROJECT_VERSION ") "));
    EXPECT_EQ(output_of("/usr/bin/dpkg-parsechangelog",
                        {"-l", SOURCE_FOLDER "/packaging/changelog", "-S", "Version"}),
              PROJECT_VERSION "\n");
}

}  // namespace
}  // namespace memwright::install
