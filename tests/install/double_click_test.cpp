// A double click on an image file in a file manager, on a desktop that knows the installation.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/support/installation.h"
#include "support/read_file.h"
#include "system/support/program.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::Desktop;
using systest::Program;
using systest::TopWindow;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

class DoubleClick : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto& [program, package] :
             {std::pair{"/usr/bin/gio", "libglib2.0-bin"},
              {"/usr/bin/update-mime-database", "shared-mime-info"},
              {"/usr/bin/update-desktop-database", "desktop-file-utils"}}) {
            if (const auto why = missing(program, package); !why.empty()) GTEST_SKIP() << why;
        }
        systest::output_of("/usr/bin/update-mime-database", {installation.share() / "mime"},
                           environment());
        systest::output_of("/usr/bin/update-desktop-database",
                           {installation.share() / "applications"}, environment());
        desktop = std::make_unique<Desktop>();
    }
    systest::Environment environment() const {
        systest::Environment found = installation.environment();
        found.erase("HOME");  // the desktop has one
        return found;
    }

    fs::path image(const std::string& name) const {
        const fs::path file = desktop->folder() / name;
        write_image(file);
        return file;
    }

    // What the desktop's own tool answers; its programs go their own ways.
    std::string gio(std::vector<std::string> arguments) const {
        Program program(*desktop, "gio", std::move(arguments), environment());
        EXPECT_EQ(program.wait_for_exit(), systest::ExitStatus{}) << program.errors();
        EXPECT_EQ(program.errors(), "");
        return program.output();
    }

    // The window that a double click on the file opens.
    TopWindow opened(const fs::path& file) const {
        gio({"open", file});
        return desktop->window("Memwright v" PROJECT_VERSION " - " + file.string());
    }

    void close(const TopWindow& window) const {
        window.close();
        EXPECT_TRUE(systest::wait_until([&] { return desktop->windows().empty(); }));
    }

    Installation installation;
    std::unique_ptr<Desktop> desktop;
};

TEST_F(DoubleClick, both_endings_are_memory_images) {
    for (const char* name : {"a.120", "b.tk1", "C.TK1"}) {
        EXPECT_THAT(gio({"info", "-a", "standard::content-type,standard::icon", image(name)}),
                    AllOf(HasSubstr("standard::content-type: application/x-vr120-image\n"),
                          ContainsRegex("standard::icon: +" + std::string(kMimeIcon))))
            << name;
    }
}

TEST_F(DoubleClick, other_files_are_none) {
    EXPECT_THAT(gio({"info", "-a", "standard::content-type", image("a.121")}),
                testing::Not(HasSubstr("vr120")));
}

TEST_F(DoubleClick, memory_images_belong_to_the_program) {
    const std::string answer = gio({"mime", kMimeType});
    EXPECT_THAT(answer,
                ContainsRegex("Default application for .*: " + std::string(kId) + "\\.desktop\n"));
}

TEST_F(DoubleClick, an_image_is_opened_in_the_program) { close(opened(image("a.120"))); }

TEST_F(DoubleClick, an_image_of_the_other_ending_is_opened_in_the_program) {
    close(opened(image("b.tk1")));
}

TEST_F(DoubleClick, a_name_with_blanks_signs_and_letters_of_all_kinds_is_opened) {
    close(opened(image("Zoë's \"radio\" 50% & $HOME.120")));
}

TEST_F(DoubleClick, the_window_is_known_as_the_desktop_files) {
    const TopWindow window = opened(image("a.120"));
    const auto wanted =
        matches(systest::read_file(installation.desktop_file()), "^StartupWMClass=(.*)$");
    ASSERT_EQ(wanted.size(), 1U);
    EXPECT_EQ(window.class_name(), wanted.front());
    close(window);
}

TEST_F(DoubleClick, the_window_has_an_icon_in_every_size) {
    const TopWindow window = opened(image("a.120"));
    EXPECT_THAT(window.icon_sizes(), testing::IsSupersetOf({16, 24, 32, 48, 64, 128, 256}));
    close(window);
}

}  // namespace
}  // namespace memwright::install
