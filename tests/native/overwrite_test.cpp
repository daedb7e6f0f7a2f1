// Saving: what is in the file afterwards, and what else is in its folder.

#include <vector>

#include "native/files.h"

namespace memwright {
namespace {

using Names = std::vector<std::string>;

class NativeSave : public BothWaysToSave {};

TEST_P(NativeSave, makes_a_new_file) {
    const TemporaryFolder folder;
    EXPECT_EQ(saving(folder.file("new.120"), pattern(7392)), "saved");
    EXPECT_EQ(folder.get("new.120"), pattern(7392));
    EXPECT_EQ(folder.names(), Names{"new.120"});
}

TEST_P(NativeSave, replaces_the_bytes_of_a_file) {
    const TemporaryFolder folder;
    const std::string path = folder.put("old.120", pattern(7392));
    EXPECT_EQ(saving(path, pattern(7392, 99)), "saved");
    EXPECT_EQ(folder.get("old.120"), pattern(7392, 99));
    EXPECT_EQ(folder.names(), Names{"old.120"});
}

TEST(NativeOverwrite, keeps_the_bytes_that_a_longer_file_has_past_its_end) {
    const TemporaryFolder folder;
    const std::string path = folder.put("long.120", pattern(10000, 7));
    EXPECT_EQ(saving(path, pattern(7392, 99)), "saved");
    Bytes expected = pattern(10000, 7);
    const Bytes saved = pattern(7392, 99);
    std::copy(saved.begin(), saved.end(), expected.begin());
    EXPECT_EQ(folder.get("long.120"), expected);
    EXPECT_EQ(folder.names(), Names{"long.120"});
}

TEST(NativeReplace, keeps_nothing_of_a_longer_file) {
    const TemporaryFolder folder;
    const std::string path = folder.put("long.csv", pattern(10000, 7));
    for (const std::size_t size : {7392U, 1U, 0U}) {
        EXPECT_EQ(saving(path, pattern(size, 99), kReplace), "saved");
        EXPECT_EQ(folder.get("long.csv"), pattern(size, 99));
        EXPECT_EQ(folder.names(), Names{"long.csv"});
    }
}

TEST_P(NativeSave, makes_a_shorter_file_longer) {
    const TemporaryFolder folder;
    EXPECT_EQ(saving(folder.put("short.120", pattern(100)), pattern(7392, 9)), "saved");
    EXPECT_EQ(folder.get("short.120"), pattern(7392, 9));
    EXPECT_EQ(saving(folder.put("empty.120", {}), pattern(7392, 9)), "saved");
    EXPECT_EQ(folder.get("empty.120"), pattern(7392, 9));
}

TEST(NativeOverwrite, with_no_bytes_leaves_the_file_as_it_is) {
    const TemporaryFolder folder;
    EXPECT_EQ(saving(folder.put("old.120", pattern(50)), {}), "saved");
    EXPECT_EQ(folder.get("old.120"), pattern(50));
    EXPECT_EQ(saving(folder.file("new.120"), {}), "saved");
    EXPECT_EQ(folder.get("new.120"), Bytes());
}

TEST_P(NativeSave, can_be_done_again_and_again) {
    const TemporaryFolder folder;
    for (int round = 0; round < 20; ++round) {
        EXPECT_EQ(saving(folder.file("a.120"), pattern(7392, round)), "saved");
        EXPECT_EQ(folder.get("a.120"), pattern(7392, round));
    }
    EXPECT_EQ(folder.names(), Names{"a.120"});
}

TEST_P(NativeSave, touches_no_other_file) {
    const TemporaryFolder folder;
    folder.put("neighbour.120", pattern(20));
    EXPECT_EQ(saving(folder.file("a.120"), pattern(7392)), "saved");
    EXPECT_EQ(folder.get("neighbour.120"), pattern(20));
    EXPECT_EQ(folder.names(), (Names{"a.120", "neighbour.120"}));
}

TEST_P(NativeSave, takes_names_with_blanks_and_with_any_letters) {
    const TemporaryFolder folder;
    const std::string name =
        "my r\xC3\xA4"
        "dio \xE6\x97\xA5 '\"$x.120";
    EXPECT_EQ(saving(folder.file(name), pattern(7392)), "saved");
    EXPECT_EQ(read_all(folder.file(name), 7392), pattern(7392));
}

TEST_P(NativeSave, refuses_a_folder) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "sub");
    const std::string error = saving(folder.file("sub"), pattern(7392));
    EXPECT_TRUE(has(error, folder.file("sub"))) << error;
    EXPECT_TRUE(has(error, "it is a folder")) << error;
    EXPECT_EQ(folder.names(), Names{"sub"});
    EXPECT_TRUE(std::filesystem::is_empty(folder.path() / "sub"));
}

TEST_P(NativeSave, a_missing_folder_is_an_error_that_names_the_file_and_the_remedy) {
    const TemporaryFolder folder;
    const std::string path = folder.file("no/such/file.120");
    const std::string error = saving(path, pattern(7392));
    EXPECT_TRUE(has(error, "Cannot save " + path)) << error;
    EXPECT_TRUE(has(error, "Check that its folder exists")) << error;
    EXPECT_TRUE(folder.names().empty());
}

TEST_P(NativeSave, a_file_in_the_place_of_a_folder_is_an_error) {
    const TemporaryFolder folder;
    folder.put("file", pattern(5));
    EXPECT_TRUE(has(saving(folder.file("file/under.120"), pattern(7392)), "Cannot save"));
    EXPECT_EQ(folder.get("file"), pattern(5));
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST_P(NativeSave, an_empty_name_is_an_error_and_leaves_nothing_behind) {
    const TemporaryFolder folder;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const std::string error = saving("", pattern(7392));
    std::filesystem::current_path(before);
    EXPECT_TRUE(has(error, "Cannot save")) << error;
    EXPECT_TRUE(folder.names().empty());
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeSave, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
