// Reading, existence and the current folder.

#include <filesystem>

#include "native/files.h"

namespace memwright {
namespace {

TEST(NativeRead, gives_the_whole_of_a_file_of_the_wanted_length) {
    const TemporaryFolder folder;
    EXPECT_EQ(read_all(folder.put("a", pattern(7392)), 7392), pattern(7392));
}

TEST(NativeRead, gives_no_more_than_wanted_of_a_longer_file) {
    const TemporaryFolder folder;
    EXPECT_EQ(read_all(folder.put("a", pattern(8000)), 7392), pattern(7392));
    EXPECT_EQ(folder.get("a"), pattern(8000));
}

TEST(NativeRead, gives_what_there_is_of_a_shorter_file) {
    const TemporaryFolder folder;
    EXPECT_EQ(read_all(folder.put("a", pattern(7391)), 7392), pattern(7391));
    EXPECT_EQ(read_all(folder.put("b", pattern(1)), 7392), pattern(1));
}

TEST(NativeRead, gives_nothing_of_an_empty_file) {
    const TemporaryFolder folder;
    Bytes bytes = pattern(10);
    NativeFileSystem().read(folder.put("a", {}), 7392, bytes);
    EXPECT_TRUE(bytes.empty());
}

TEST(NativeRead, changes_no_byte_value) {
    const TemporaryFolder folder;
    Bytes bytes;
    for (int value = 0; value < 256; ++value) bytes.push_back(static_cast<std::uint8_t>(value));
    EXPECT_EQ(read_all(folder.put("a", bytes), 7392), bytes);
}

TEST(NativeRead, creates_a_missing_file_empty) {
    const TemporaryFolder folder;
    EXPECT_TRUE(read_all(folder.file("new.120"), 7392).empty());
    EXPECT_EQ(folder.names(), std::vector<std::string>{"new.120"});
    EXPECT_EQ(std::filesystem::file_size(folder.file("new.120")), 0U);
}

TEST(NativeRead, refuses_a_folder) {
    const TemporaryFolder folder;
    const std::string error = reading(folder.path().string());
    EXPECT_TRUE(has(error, folder.path().string())) << error;
    EXPECT_TRUE(has(error, "it is a folder")) << error;
}

TEST(NativeRead, a_missing_folder_is_an_error_that_names_the_file) {
    const TemporaryFolder folder;
    const std::string path = folder.file("no/such/file.120");
    const std::string error = reading(path);
    EXPECT_TRUE(has(error, path)) << error;
    EXPECT_TRUE(has(error, "Cannot create")) << error;
    EXPECT_TRUE(folder.names().empty());
}

TEST(NativeRead, a_file_in_the_place_of_a_folder_is_an_error) {
    const TemporaryFolder folder;
    folder.put("file", pattern(5));
    EXPECT_TRUE(has(reading(folder.file("file/under.120")), "Cannot create"));
    EXPECT_EQ(folder.get("file"), pattern(5));
}

TEST(NativeRead, an_empty_name_is_an_error) { EXPECT_TRUE(has(reading(""), "Cannot create")); }

// What open_input gives, in pieces of this size.
Bytes read_in_pieces(const std::string& path, std::size_t size) {
    const auto file = NativeFileSystem().open_input(path);
    Bytes bytes, piece(size);
    std::size_t count = size;
    while (count == size) {
        count = file->read(piece);
        bytes.insert(bytes.end(), piece.begin(),
                     piece.begin() + static_cast<std::ptrdiff_t>(count));
    }
    EXPECT_EQ(file->read(piece), 0U) << "behind the end";
    return bytes;
}

TEST(NativeInput, reads_a_file_in_pieces_of_any_size) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.csv", pattern(10000));
    for (const std::size_t size : {1U, 7U, 4096U, 5000U, 9999U, 10000U, 10001U, 65536U}) {
        EXPECT_EQ(read_in_pieces(path, size), pattern(10000)) << size;
    }
    EXPECT_EQ(folder.get("a.csv"), pattern(10000));
}

TEST(NativeInput, fills_all_pieces_but_the_last) {
    const TemporaryFolder folder;
    const auto file = NativeFileSystem().open_input(folder.put("a.csv", pattern(10000)));
    Bytes piece(4096);
    for (const std::size_t count : {4096U, 4096U, 1808U, 0U}) EXPECT_EQ(file->read(piece), count);
}

TEST(NativeInput, knows_how_large_the_file_was_when_it_was_opened) {
    const TemporaryFolder folder;
    for (const std::size_t size : {0U, 1U, 10000U}) {
        const std::string path = folder.put("a.csv", pattern(size));
        const auto file = NativeFileSystem().open_input(path);
        EXPECT_EQ(file->size(), size);
        folder.put("a.csv", pattern(20));
        EXPECT_EQ(file->size(), size);
    }
}

TEST(NativeInput, goes_on_with_a_file_that_is_replaced_or_removed_meanwhile) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.csv", pattern(10000));
    const auto file = NativeFileSystem().open_input(path);
    Bytes piece(5000);
    EXPECT_EQ(file->read(piece), 5000U);
    NativeFileSystem().replace(path, pattern(10));
    std::filesystem::remove(path);
    const Bytes old = pattern(10000);
    EXPECT_EQ(file->read(piece), 5000U);
    EXPECT_EQ(piece, Bytes(old.begin() + 5000, old.end()));
}

TEST(NativeInput, a_missing_file_is_an_error_and_not_created) {
    const TemporaryFolder folder;
    for (const std::string& path : {folder.file("new.csv"), folder.file("no/such/file.csv")}) {
        const std::string error = opening(path);
        EXPECT_TRUE(has(error, "Cannot open " + path + ": No such file")) << error;
        EXPECT_TRUE(has(error, "Check that the file can be read, or open another one.")) << error;
    }
    EXPECT_TRUE(folder.names().empty());
    EXPECT_TRUE(has(opening(""), "Cannot open"));
}

TEST(NativeInput, refuses_a_folder) {
    const TemporaryFolder folder;
    const std::string path = folder.path().string();
    EXPECT_EQ(opening(path), "Cannot open " + path + ": it is a folder.\nChoose an ordinary file.");
}

TEST(NativeExists, sees_files_and_folders) {
    const TemporaryFolder folder;
    NativeFileSystem files;
    EXPECT_TRUE(files.exists(folder.put("file", {})));
    EXPECT_TRUE(files.exists(folder.path().string()));
    EXPECT_FALSE(files.exists(folder.file("missing")));
}

TEST(NativeExists, is_false_for_names_that_cannot_be) {
    const TemporaryFolder folder;
    NativeFileSystem files;
    EXPECT_FALSE(files.exists(""));
    EXPECT_FALSE(files.exists(folder.file(std::string(10000, 'x'))));
    EXPECT_FALSE(files.exists(std::string(100000, '/') + "x"));
    EXPECT_FALSE(files.exists(folder.put("file", {}) + "/under"));
}

class NativeFolder : public testing::Test {
  protected:
    void TearDown() override { std::filesystem::current_path(before_); }

    std::filesystem::path before_ = std::filesystem::current_path();
    TemporaryFolder folder_;
    NativeFileSystem files_;
};

TEST_F(NativeFolder, the_current_folder_can_be_changed_and_asked_for) {
    const std::string real = std::filesystem::canonical(folder_.path()).string();
    files_.set_current_folder(real);
    EXPECT_EQ(files_.current_folder(), real);
}

TEST_F(NativeFolder, names_without_a_folder_lie_in_the_current_one) {
    files_.set_current_folder(folder_.path().string());
    files_.overwrite("short.120", pattern(7392));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"short.120"});
    files_.overwrite("short.120", pattern(7392, 1));
    EXPECT_EQ(read_all("short.120", 10000), pattern(7392, 1));
    EXPECT_TRUE(files_.exists("short.120"));
    EXPECT_EQ(folder_.names(), std::vector<std::string>{"short.120"});
}

TEST_F(NativeFolder, a_missing_folder_is_an_error_and_the_current_one_stays) {
    const std::string missing = folder_.file("missing");
    try {
        files_.set_current_folder(missing);
        FAIL() << "no error";
    } catch (const FileError& error) {
        EXPECT_TRUE(has(error.what(), missing)) << error.what();
    }
    EXPECT_EQ(files_.current_folder(), before_.string());
}

}  // namespace
}  // namespace memwright
