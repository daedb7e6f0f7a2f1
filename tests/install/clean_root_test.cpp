// The Debian package on a system that has nothing but what it depends on.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "install/support/clean_root.h"
#include "install/support/debian_package.h"
#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::read_file;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* kDpkg = "/usr/bin/dpkg";
constexpr const char* kCommandLine = "/usr/bin/memwright-cli";

class CleanRootTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto& why : {DebianPackage::why_not(), CleanRoot::why_not()}) {
            if (!why.empty()) GTEST_SKIP() << why;
        }
        package.emplace();
        // Besides, what keeps the databases of a desktop, and has to forget all about it.
        std::set<std::string> packages = package->packages_in("Depends");
        packages.insert({"desktop-file-utils", "hicolor-icon-theme", "shared-mime-info"});
        try {
            root.emplace(packages);
        } catch (const NoMirror& error) {
            GTEST_SKIP() << "No package mirror can be reached. " << error.what();
        }
    }

    fs::path in_root(const std::string& name) const { return root->path() / name; }

    void expect_complete(const std::string& binary) const {
        EXPECT_THAT(root->output_of("/usr/bin/ldd", {binary}), Not(HasSubstr("not found")))
            << binary;
    }
    void expect_every_library() const {
        for (const std::string& program : kPrograms) expect_complete("/usr/bin/" + program);
        for (const std::string& module : kModules) {
            expect_complete("/usr/lib/memwright/modules/" + module);
        }
        for (const char* plugin : {"/platforms/libqxcb.so", "/platforms/libqoffscreen.so",
                                   "/printsupport/libcupsprintersupport.so"}) {
            expect_complete(std::string(QT_PLUGINS) + plugin);
        }
    }

    void expect_that_the_programs_work() const {
        for (const std::string& program : kPrograms) {
            EXPECT_EQ(root->output_of("/usr/bin/" + program, {"--version"}),
                      program + " " PROJECT_VERSION "\n");
        }
        write_image(in_root("root/radio.120"));
        EXPECT_THAT(root->output_of(kCommandLine, {"channels", "/root/radio.120"}),
                    HasSubstr("TOWER"));
        root->output_of(kCommandLine, {"export", "/root/radio.120", "/root/list.csv"});
        EXPECT_THAT(read_file(in_root("root/list.csv")), HasSubstr("TOWER"));
        root->output_of(kCommandLine, {"print", "/root/radio.120", "--pdf", "/root/pages.pdf"});
        const std::string pages = read_file(in_root("root/pages.pdf"));
        EXPECT_THAT(pages, StartsWith("%PDF-"));
        EXPECT_THAT(pages, HasSubstr("/FontFile")) << "There are no fonts to print with.";
        EXPECT_TRUE(root->run(kCommandLine, {"ports"}).status.success());
    }

    void remove_the_files_of_the_test() const {
        for (const char* name : {"radio.120", "list.csv", "pages.pdf"}) {
            EXPECT_TRUE(fs::remove(in_root("root") / name)) << name;
        }
    }

    std::optional<DebianPackage> package;
    std::optional<CleanRoot> root;
};

TEST_F(CleanRootTest, the_package_is_installed_works_and_is_removed_without_a_trace) {
    const auto before = root->content();
    fs::copy_file(package->file(), in_root("memwright.deb"));
    root->output_of(kDpkg, {"--install", "/memwright.deb"});
    fs::remove(in_root("memwright.deb"));
    EXPECT_TRUE(fs::exists(in_root("usr/share/man/man1/memwright-cli.1.gz")));
    EXPECT_THAT(read_file(in_root("usr/share/mime/globs2")), HasSubstr("*.120"));
    EXPECT_THAT(read_file(in_root("usr/share/applications/mimeinfo.cache")), HasSubstr(kId));

    expect_every_library();
    expect_that_the_programs_work();

    remove_the_files_of_the_test();
    root->output_of(kDpkg, {"--purge", "memwright"});
    const auto after = root->content();
    for (const auto& [name, what] : after) {
        const auto known = before.find(name);
        EXPECT_EQ(what, known == before.end() ? "nothing" : known->second) << name;
    }
    for (const auto& [name, what] : before) EXPECT_TRUE(after.contains(name)) << name;
}

}  // namespace
}  // namespace memwright::install
