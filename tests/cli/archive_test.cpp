// archive: what came from radios and went to them, and how it comes back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "cli/support/radio_test.h"

namespace memwright::cli_tests {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class Archive : public RadioTest {
  protected:
    fs::path kept() const { return home_.path() / ".local/share/memwright/radio images"; }

    void keep(const std::string& name, const Image& image) const {
        fs::create_directories(kept());
        const std::string bytes = image.text();
        std::ofstream(kept() / name, std::ios::binary) << bytes;
    }

    const Image first_ = Image().channel(1, "FIRST", "145.5");
    const Image second_ = Image().channel(2, "SECOND", "88.3", "WFM").set(6666, {2});
};

TEST_F(Archive, is_empty_at_first) {
    EXPECT_EQ(run({"archive"}), done());
    EXPECT_EQ(run({"archive", "show", "1"}),
              (Ended{4, "",
                     "memwright-cli: There is no image \"1\" in " + kept().string() +
                         ".\nmemwright-cli archive lists those that are there.\n"}));
    EXPECT_FALSE(fs::exists(kept()));
}

TEST_F(Archive, lists_shows_and_restores_by_number_and_by_name) {
    keep("2026-01-02 03.04.05 read.120", first_);
    keep("2026-01-02 03.04.06 written.120", second_);
    keep("notes.txt", first_);
    EXPECT_EQ(run({"archive"}), done("1   2026-01-02 03.04.06 written.120\n"
                                     "2   2026-01-02 03.04.05 read.120\n"));
    put("second.120", second_);
    EXPECT_EQ(run({"archive", "show", "1"}), run({"channels", "second.120"}));
    EXPECT_THAT(run({"archive", "show", "1"}).output, HasSubstr("SECOND"));
    EXPECT_EQ(run({"archive", "show", "2026-01-02 03.04.06 written.120"}),
              run({"channels", "second.120"}));
    EXPECT_EQ(run({"archive", "restore", "2", "back.120"}), done());
    EXPECT_EQ(text("back.120"), first_.text());
    EXPECT_EQ(run({"archive", "restore", "2026-01-02 03.04.06 written.120", "-"}),
              done(second_.text()));
}

TEST_F(Archive, restoring_replaces_a_file_whole_or_not_at_all) {
    keep("2026-01-02 03.04.05 read.120", first_);
    put("old.120", second_);
    EXPECT_EQ(run({"archive", "restore", "1", "old.120"}), done());
    EXPECT_EQ(text("old.120"), first_.text());
    const Ended failed = run({"archive", "restore", "1", "no/folder.120"});
    EXPECT_EQ(failed.status, 4);
    EXPECT_THAT(failed.errors, HasSubstr("no/folder.120"));
    EXPECT_EQ(folder_.names(), Words{"old.120"});
}

TEST_F(Archive, what_is_not_in_the_list_is_not_there) {
    keep("2026-01-02 03.04.05 read.120", first_);
    keep("notes.txt", second_);
    put("a.120", second_);
    for (const char* const meant : {"0", "2", "+1", "1.0", "99999999999999999999", "notes.txt",
                                    "../../../../a.120", "a.120", "2026-01-02 03.04.05 read"}) {
        const Ended ended = run({"archive", "restore", meant, "out.120"});
        EXPECT_EQ(ended.status, 4) << meant;
        EXPECT_THAT(ended.errors, HasSubstr("There is no image \"" + std::string(meant) + "\""));
    }
    EXPECT_EQ(folder_.names(), Words{"a.120"});
}

TEST_F(Archive, without_a_home_folder_it_says_what_to_set) {
    auto homeless = command({"archive"});
    homeless.environment.erase("HOME");
    EXPECT_EQ(run_to_end(homeless),
              (Ended{4, "",
                     "memwright-cli: Cannot tell where the images of radios are: there is no home "
                     "folder.\nSet HOME or XDG_DATA_HOME.\n"}));
}

TEST_F(Archive, has_what_a_radio_sent_even_if_the_file_cannot_be_written) {
    start_radio({"--image", put("radio.120", second_)});
    RunningCli cli(command({"read", "no/folder.120", "--port", port, "--yes"}));
    const Ended ended = cli.end();
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors, HasSubstr("no/folder.120"));
    EXPECT_THAT(ended.errors, HasSubstr("What the radio sent is kept: memwright-cli archive "
                                        "restore 1 FILE makes a file of it.\n"));
    EXPECT_THAT(run({"archive"}).output, MatchesRegex("1   20[-0-9]+ [0-9.]+ read\\.120\n"));
    EXPECT_EQ(run({"archive", "restore", "1", "-"}), done(second_.text()));
}

TEST_F(Archive, has_what_was_about_to_be_written_even_if_the_radio_fails) {
    start_radio({"--mode", "receive", "--fault", "hang-up@10"});
    RunningCli cli(command({"write", put("mine.120", first_), "--port", port, "--yes"}));
    EXPECT_NE(cli.end().status, 0);
    EXPECT_THAT(run({"archive"}).output, MatchesRegex("1   20[-0-9]+ [0-9.]+ written\\.120\n"));
    EXPECT_EQ(run({"archive", "restore", "1", "-"}), done(first_.text()));
}

TEST_F(Archive, has_an_image_once_and_with_its_latest_time) {
    keep("2020-01-02 03.04.05 read.120", first_);
    start_radio({"--mode", "receive", "--fault", "hang-up@10"});
    RunningCli cli(command({"write", put("mine.120", first_), "--port", port, "--yes"}));
    EXPECT_NE(cli.end().status, 0);
    EXPECT_THAT(run({"archive"}).output, MatchesRegex("1   20[-0-9]+ [0-9.]+ written\\.120\n"));
}

TEST_F(Archive, that_cannot_be_kept_stands_in_no_transfers_way) {
    fs::create_directories(kept().parent_path());
    std::ofstream(kept()) << "a file where the folder belongs";
    start_radio({"--image", put("radio.120", second_)});
    RunningCli cli(command({"read", "out.120", "--port", port, "--yes"}));
    const Ended ended = cli.end();
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.errors, HasSubstr("No copy of the image was kept. "));
    EXPECT_EQ(text("out.120"), second_.text());
}

TEST_F(Archive, is_not_pointed_to_where_nothing_could_be_kept) {
    fs::create_directories(kept().parent_path());
    std::ofstream(kept()) << "a file where the folder belongs";
    start_radio({"--image", put("radio.120", second_)});
    RunningCli cli(command({"read", "no/folder.120", "--port", port, "--yes"}));
    const Ended ended = cli.end();
    EXPECT_EQ(ended.status, 4);
    EXPECT_THAT(ended.errors, HasSubstr("No copy of the image was kept. "));
    EXPECT_THAT(ended.errors, HasSubstr("no/folder.120"));
    EXPECT_THAT(ended.errors, ::testing::Not(HasSubstr("archive restore")));
}

}  // namespace
}  // namespace memwright::cli_tests
