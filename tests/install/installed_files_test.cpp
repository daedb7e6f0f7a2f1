// What an installation puts where, and that its programs run from there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "install/support/installation.h"
#include "support/read_file.h"

namespace memwright::install {
namespace {

namespace fs = std::filesystem;
using systest::read_file;
using testing::HasSubstr;
using testing::StartsWith;

class Installed : public testing::Test {
  protected:
    fs::path image() const {
        const fs::path file = installation.folder() / "radio.120";
        write_image(file);
        return file;
    }

    Installation installation;
};

TEST_F(Installed, every_file_is_where_it_belongs_and_there_are_no_others) {
    EXPECT_EQ(files_under(installation.prefix()), installed_files());
}

TEST_F(Installed, packagers_get_the_same_files_below_their_own_folder) {
    const fs::path stage = installation.folder() / "stage";
    install("/opt/memwright", stage);
    EXPECT_EQ(files_under(stage / "opt/memwright"), installed_files());
}

TEST_F(Installed, the_copyright_is_the_licence_of_the_project) {
    EXPECT_EQ(read_file(installation.share() / "doc/memwright/copyright"),
              read_file(SOURCE_FOLDER "/LICENSE"));
}

TEST_F(Installed, every_program_tells_the_same_version) {
    for (const std::string& program : kPrograms) {
        EXPECT_EQ(installation.say(program, {"--version"}), program + " " PROJECT_VERSION "\n");
    }
}

TEST_F(Installed, the_command_line_shows_channels) {
    EXPECT_THAT(installation.say("memwright-cli", {"channels", image()}), HasSubstr("TOWER"));
}

TEST_F(Installed, the_command_line_lists_ports) {
    const auto outcome = systest::run_program(installation.program("memwright-cli"), {"ports"},
                                              installation.environment());
    EXPECT_TRUE(outcome.status.success()) << outcome.output;
}

TEST_F(Installed, the_command_line_prints) {
    const fs::path pages = installation.folder() / "channels.pdf";
    installation.say("memwright-cli", {"print", image(), "--pdf", pages});
    EXPECT_THAT(read_file(pages), StartsWith("%PDF-"));
}

TEST_F(Installed, the_command_line_finds_its_module_when_a_link_leads_to_it) {
    const fs::path link = installation.folder() / "mw";
    const fs::path pages = installation.folder() / "channels.pdf";
    fs::create_symlink(installation.program("memwright-cli"), link);
    systest::output_of(link, {"print", image(), "--pdf", pages}, installation.environment());
    EXPECT_THAT(read_file(pages), StartsWith("%PDF-"));
}

TEST_F(Installed, the_command_line_finds_its_module_when_the_installation_has_moved) {
    const fs::path elsewhere = installation.folder() / "elsewhere";
    fs::rename(installation.prefix(), elsewhere);
    const auto outcome = systest::run_program(elsewhere / "bin/memwright-cli", {"ports"});
    EXPECT_TRUE(outcome.status.success()) << outcome.output;
}

TEST_F(Installed, the_command_line_names_the_module_that_it_misses) {
    fs::remove(installation.module("memwright-ports-and-pages.so"));
    const auto outcome = systest::run_program(installation.program("memwright-cli"), {"ports"},
                                              installation.environment());
    EXPECT_EQ(outcome.status.code, 4);
    EXPECT_THAT(outcome.output, HasSubstr("memwright/modules/memwright-ports-and-pages.so"));
    EXPECT_THAT(installation.say("memwright-cli", {"channels", image()}), HasSubstr("TOWER"));
}

TEST_F(Installed, the_simulated_radio_runs) {
    systest::Process radio(
        {.program = installation.program("vr120-sim"), .output = installation.folder() / "device"});
    EXPECT_TRUE(systest::wait_until([&] {
        return read_file(installation.folder() / "device").find('\n') != std::string::npos;
    }));
    EXPECT_THAT(read_file(installation.folder() / "device"), StartsWith("/dev/"));
}

}  // namespace
}  // namespace memwright::install
