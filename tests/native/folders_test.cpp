// Folders, names and ages of files on the real file system.

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

#include "native/files.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kForeign =
    "Gr\xC3\xBC\xC3\x9F"
    "e \xE2\x82\xAC.120";

// The text of the FileError that `work` gives, or "done".
template <class Work>
std::string outcome(Work work) {
    try {
        work();
        return "done";
    } catch (const FileError& error) {
        return error.what();
    }
}

class NativeFolders : public testing::Test {
  protected:
    TemporaryFolder folder;
    NativeFileSystem files;
};

TEST_F(NativeFolders, the_files_in_a_folder_are_listed_sorted_and_nothing_else) {
    for (const char* const name : {"b", "a.120", "C", kForeign, ".hidden"}) folder.put(name, {1});
    fs::create_directory(folder.path() / "aa");
    folder.put("aa/inside", {});
    EXPECT_THAT(files.files_in(folder.path().string()),
                ElementsAre(".hidden", "C", kForeign, "a.120", "b"));
}

TEST_F(NativeFolders, there_are_no_files_in_what_is_no_folder) {
    EXPECT_THAT(files.files_in(folder.file("none")), IsEmpty());
    EXPECT_THAT(files.files_in(folder.put("file", {1})), IsEmpty());
    EXPECT_THAT(files.files_in(""), IsEmpty());
    EXPECT_THAT(files.files_in(folder.path().string()), ElementsAre("file"));
}

TEST_F(NativeFolders, a_folder_in_the_place_of_a_file_or_below_one_is_refused) {
    folder.put("file", {7});
    EXPECT_THAT(outcome([&] { files.make_private_folder(folder.file("file")); }),
                StartsWith("Cannot make the folder " + folder.file("file") + ": "));
    EXPECT_THAT(outcome([&] { files.make_private_folder(folder.file("file/below")); }),
                StartsWith("Cannot make the folder " + folder.file("file/below") + ": "));
    EXPECT_EQ(folder.get("file"), Bytes{7});
}

TEST_F(NativeFolders, a_file_is_renamed_with_what_it_holds) {
    folder.put("a", {1, 2});
    files.rename(folder.file("a"), folder.file(kForeign));
    EXPECT_THAT(folder.names(), ElementsAre(kForeign));
    EXPECT_EQ(folder.get(kForeign), (Bytes{1, 2}));
}

TEST_F(NativeFolders, a_file_that_is_not_there_cannot_be_renamed) {
    EXPECT_THAT(outcome([&] { files.rename(folder.file("a"), folder.file("b")); }),
                AllOf(StartsWith("Cannot rename " + folder.file("a") + ": "),
                      HasSubstr("It keeps its name.")));
    folder.put("a", {1});
    EXPECT_NE(outcome([&] { files.rename(folder.file("a"), folder.file("none/b")); }), "done");
    EXPECT_EQ(folder.get("a"), Bytes{1});
}

TEST_F(NativeFolders, a_file_is_removed_and_one_that_is_not_there_does_not_matter) {
    folder.put("a", {1});
    folder.put("b", {1});
    files.remove(folder.file("a"));
    files.remove(folder.file("a"));
    EXPECT_THAT(folder.names(), ElementsAre("b"));
}

TEST_F(NativeFolders, what_cannot_be_removed_is_told) {
    fs::create_directory(folder.path() / "full");
    folder.put("full/file", {1});
    EXPECT_THAT(outcome([&] { files.remove(folder.file("full")); }),
                AllOf(StartsWith("Cannot remove " + folder.file("full") + ": "),
                      HasSubstr("It stays where it is.")));
    EXPECT_EQ(folder.get("full/file"), Bytes{1});
}

TEST_F(NativeFolders, the_age_of_a_file_is_counted_in_whole_days) {
    folder.put("a", {1});
    const auto age_when = [&](std::chrono::hours hours) {
        fs::last_write_time(folder.path() / "a", fs::file_time_type::clock::now() - hours);
        return files.age_in_days(folder.file("a"));
    };
    EXPECT_EQ(age_when(std::chrono::hours(0)), 0);
    EXPECT_EQ(age_when(std::chrono::hours(23)), 0);
    EXPECT_EQ(age_when(std::chrono::hours(24)), 1);
    EXPECT_EQ(age_when(std::chrono::hours(24 * 31)), 31);
    EXPECT_EQ(age_when(std::chrono::hours(24 * 3650)), 3650);
}

TEST_F(NativeFolders, a_file_of_the_future_or_of_no_age_is_not_old) {
    folder.put("a", {1});
    fs::last_write_time(folder.path() / "a",
                        fs::file_time_type::clock::now() + std::chrono::hours(24 * 400));
    EXPECT_LE(files.age_in_days(folder.file("a")), 0);
    EXPECT_EQ(files.age_in_days(folder.file("none")), 0);
}

}  // namespace
}  // namespace memwright
