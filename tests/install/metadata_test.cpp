// What desktops are told of the program: by the desktop file, the file type, the icons and the
// AppStream metadata.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::read_file;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAreArray;

// What a key of a desktop file says.
std::string value_of(const std::string& text, const std::string& key) {
    const auto found = matches(text, "^" + key + "=(.*)$");
    return found.size() == 1 ? found.front() : "";
}

// Width and height of a PNG file.
std::pair<int, int> size_of_picture(const fs::path& file) {
    const std::string bytes = read_file(file);
    if (!bytes.starts_with("\x89PNG\r\n\x1a\n") || bytes.size() < 24) return {};
    const auto number = [&](std::size_t offset) {
        int value = 0;
        for (std::size_t i = offset; i < offset + 4; ++i) {
            value = value * 256 + static_cast<unsigned char>(bytes[i]);
        }
        return value;
    };
    return {number(16), number(20)};
}

class Metadata : public testing::Test {
  protected:
    systest::Outcome run(const fs::path& program, std::vector<std::string> arguments) const {
        return systest::run_program(program, std::move(arguments), installation.environment());
    }
    std::string desktop() const { return read_file(installation.desktop_file()); }
    std::string metainfo() const { return read_file(installation.metainfo()); }

    Installation installation;
};

TEST_F(Metadata, the_desktop_file_is_valid) {
    const fs::path program = "/usr/bin/desktop-file-validate";
    if (const auto why = missing(program, "desktop-file-utils"); !why.empty()) GTEST_SKIP() << why;
    const auto outcome = run(program, {installation.desktop_file()});
    EXPECT_TRUE(outcome.status.success());
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Metadata, the_appstream_metadata_is_valid) {
    const fs::path program = "/usr/bin/appstreamcli";
    if (const auto why = missing(program, "appstream"); !why.empty()) GTEST_SKIP() << why;
    const auto outcome =
        run(program, {"validate", "--no-net", "--explain", installation.metainfo()});
    EXPECT_TRUE(outcome.status.success()) << outcome.output;
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("successful"), Not(ContainsRegex("(^|\n)[EW]: "))));
}

TEST_F(Metadata, the_file_type_goes_into_the_database_with_both_endings) {
    const fs::path program = "/usr/bin/update-mime-database";
    if (const auto why = missing(program, "shared-mime-info"); !why.empty()) GTEST_SKIP() << why;
    const auto outcome = run(program, {installation.share() / "mime"});
    EXPECT_TRUE(outcome.status.success());
    EXPECT_EQ(outcome.output, "");
    const std::string globs = read_file(installation.share() / "mime/globs2");
    EXPECT_THAT(globs, HasSubstr(":application/x-vr120-image:*.120\n"));
    EXPECT_THAT(globs, HasSubstr(":application/x-vr120-image:*.tk1\n"));
    EXPECT_THAT(read_file(installation.share() / "mime" / (std::string(kMimeType) + ".xml")),
                HasSubstr("VR-120 memory image"));
}

TEST_F(Metadata, no_other_file_type_of_the_system_has_these_endings) {
    const std::string system = read_file("/usr/share/mime/packages/freedesktop.org.xml");
    if (system.empty()) GTEST_SKIP() << "install the package shared-mime-info.";
    EXPECT_THAT(matches(system, "glob pattern=\"(\\*\\.(120|tk1))\""), ElementsAre());
}

TEST_F(Metadata, the_desktop_file_starts_an_installed_program_with_one_file) {
    EXPECT_EQ(value_of(desktop(), "Exec"), "memwright %f");
    EXPECT_TRUE(fs::exists(installation.program("memwright")));
}

TEST_F(Metadata, the_desktop_file_opens_the_file_type) {
    EXPECT_EQ(value_of(desktop(), "MimeType"), std::string(kMimeType) + ";");
    EXPECT_THAT(matches(read_file(installation.mime_file()), "mime-type type=\"([^\"]*)\""),
                ElementsAre(kMimeType));
}

TEST_F(Metadata, the_metadata_speaks_of_what_is_installed) {
    EXPECT_THAT(matches(metainfo(), "<id>(.*)</id>"), ElementsAre(kId));
    EXPECT_THAT(matches(metainfo(), "<launchable type=\"desktop-id\">(.*)</launchable>"),
                ElementsAre(installation.desktop_file().filename()));
    EXPECT_THAT(matches(metainfo(), "<binary>(.*)</binary>"), UnorderedElementsAreArray(kPrograms));
    EXPECT_THAT(matches(metainfo(), "<mediatype>(.*)</mediatype>"), ElementsAre(kMimeType));
}

TEST_F(Metadata, the_newest_release_is_the_programs_version) {
    const auto releases = matches(metainfo(), "<release version=\"([^\"]*)\"");
    ASSERT_FALSE(releases.empty());
    EXPECT_EQ(releases.front(), PROJECT_VERSION);
}

TEST_F(Metadata, name_and_summary_are_the_same_everywhere) {
    EXPECT_THAT(matches(metainfo(), "<name>(.*)</name>"), ElementsAre(value_of(desktop(), "Name")));
    EXPECT_THAT(matches(metainfo(), "<summary>(.*)</summary>"),
                ElementsAre(value_of(desktop(), "Comment")));
}

TEST_F(Metadata, the_icons_that_are_named_exist) {
    EXPECT_EQ(value_of(desktop(), "Icon"), kId);
    EXPECT_THAT(matches(metainfo(), "<icon type=\"stock\">(.*)</icon>"), ElementsAre(kId));
    // An icon of a file type has its name, with "-" for "/", unless the type says otherwise.
    EXPECT_THAT(read_file(installation.mime_file()), Not(HasSubstr("icon")));
    const fs::path scalable = installation.icons() / "scalable";
    EXPECT_TRUE(fs::exists(scalable / "apps" / (std::string(kId) + ".svg")));
    EXPECT_TRUE(fs::exists(scalable / "mimetypes" / (std::string(kMimeIcon) + ".svg")));
    // The size without which there is an icon in no theme.
    const fs::path usual = installation.icons() / "48x48";
    EXPECT_TRUE(fs::exists(usual / "apps" / (std::string(kId) + ".png")));
    EXPECT_TRUE(fs::exists(usual / "mimetypes" / (std::string(kMimeIcon) + ".png")));
}

TEST_F(Metadata, every_picture_has_the_size_of_its_folder) {
    int pictures = 0;
    for (const auto& [name, mode] : files_under(installation.icons())) {
        if (!name.ends_with(".png")) continue;
        const int size = std::stoi(name);
        EXPECT_EQ(size_of_picture(installation.icons() / name), std::pair(size, size)) << name;
        ++pictures;
    }
    EXPECT_EQ(pictures, 11);
}

TEST_F(Metadata, the_drawings_are_square_and_nobody_elses) {
    for (const auto& [name, mode] : files_under(installation.icons() / "scalable")) {
        const std::string drawing = read_file(installation.icons() / "scalable" / name);
        EXPECT_THAT(drawing, HasSubstr("viewBox=\"0 0 128 128\"")) << name;
        EXPECT_THAT(drawing, Not(HasSubstr("href"))) << name << " takes something from elsewhere";
    }
}

}  // namespace
}  // namespace memwright::install
