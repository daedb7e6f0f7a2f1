// Filling the image from a file.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/error.h"
#include "image/image_store.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

Bytes counting(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return bytes;
}

Bytes image_of(ImageStore& store) {
    const auto bytes = store->MemoryImage.bytes();
    return {bytes.begin(), bytes.end()};
}

TEST(Open, takes_a_whole_image_file) {
    const TemporaryFolder folder;
    ImageStore store;
    store->OpenVR120(folder.put("whole.120", counting(7392)));
    EXPECT_EQ(image_of(store), counting(7392));
}

TEST(Open, takes_the_first_7392_bytes_of_a_file_of_8000) {
    const TemporaryFolder folder;
    ImageStore store;
    store->OpenVR120(folder.put("long.120", counting(8000)));
    EXPECT_EQ(image_of(store), counting(7392));
}

TEST(Open, fills_up_a_short_file_with_zeros) {
    const TemporaryFolder folder;
    ImageStore store;
    store->OpenVR120(folder.put("whole.120", Bytes(7392, 0xEE)));
    store->OpenVR120(folder.put("short.120", counting(100)));
    Bytes expected = counting(100);
    expected.resize(7392, 0);
    EXPECT_EQ(image_of(store), expected);
}

TEST(Open, takes_an_empty_file) {
    const TemporaryFolder folder;
    ImageStore store;
    store->set_byte(0, 1);
    store->OpenVR120(folder.put("empty.120", {}));
    EXPECT_EQ(image_of(store), Bytes(7392, 0));
}

TEST(Open, creates_a_missing_file_empty) {
    const TemporaryFolder folder;
    ImageStore store;
    store->set_byte(0, 1);
    store->OpenVR120(folder.file("missing.120"));
    EXPECT_EQ(image_of(store), Bytes(7392, 0));
    EXPECT_EQ(folder.get("missing.120"), Bytes());
}

TEST(Open, a_file_that_cannot_be_opened_leaves_the_image_as_it_was) {
    const TemporaryFolder folder;
    ImageStore store;
    store->OpenVR120(folder.put("whole.120", counting(7392)));
    EXPECT_THROW(store->OpenVR120(folder.path().string()), FileError);
    EXPECT_THROW(store->OpenVR120(folder.file("no/such/folder.120")), FileError);
    EXPECT_THROW(store->OpenVR120(""), FileError);
    EXPECT_EQ(image_of(store), counting(7392));
}

// A disk that fails behind some bytes, as many as it has or as are wanted of it.
class FailingFileSystem final : public FileSystem {
  public:
    explicit FailingFileSystem(std::size_t size) : size_(size) {}

    void read(const std::string& /*path*/, std::size_t limit, Bytes& bytes) override {
        bytes = Bytes(std::min(size_, limit), 0x42);
        throw FileError("the disk fails");
    }
    void overwrite(const std::string& /*path*/, std::span<const std::uint8_t> /*bytes*/) override {}
    void replace(const std::string& /*path*/, std::span<const std::uint8_t> /*bytes*/) override {}
    void replace_private(const std::string& /*path*/,
                         std::span<const std::uint8_t> /*bytes*/) override {}
    std::unique_ptr<InputFile> open_input(const std::string& /*path*/) override { return nullptr; }
    bool exists(const std::string& /*path*/) noexcept override { return true; }
    std::vector<std::string> files_in(const std::string& /*folder*/) override { return {}; }
    void make_private_folder(const std::string& /*path*/) override {}
    void rename(const std::string& /*from*/, const std::string& /*to*/) override {}
    void remove(const std::string& /*path*/) override {}
    int age_in_days(const std::string& /*path*/) override { return 0; }
    std::string current_folder() override { return {}; }
    void set_current_folder(const std::string& /*path*/) override {}

  private:
    std::size_t size_;
};

TEST(Open, bytes_read_before_a_failure_stay_in_the_image) {
    FailingFileSystem files(1000);
    modVR120 store(files);
    for (int i = 0; i < 7392; ++i) store.set_byte(i, 0x11);
    EXPECT_THROW(store.OpenVR120("any.120"), FileError);
    EXPECT_EQ(store.MemoryImage.get(0), 0x42);
    EXPECT_EQ(store.MemoryImage.get(999), 0x42);
    EXPECT_EQ(store.MemoryImage.get(1000), 0x11);
    EXPECT_EQ(store.MemoryImage.get(7391), 0x11);
}

TEST(Open, of_a_file_without_an_end_no_more_than_the_image_holds_is_read) {
    FailingFileSystem files(1'000'000);
    modVR120 store(files);
    EXPECT_THROW(store.OpenVR120("any.120"), FileError);
    EXPECT_EQ(store.MemoryImage.get(7391), 0x42);
}

TEST(Open, FileExists_is_true_for_files_and_folders_and_false_for_everything_else) {
    const TemporaryFolder folder;
    ImageStore store;
    EXPECT_TRUE(store->FileExists(folder.put("file.120", {1})));
    EXPECT_TRUE(store->FileExists(folder.path().string()));
    EXPECT_FALSE(store->FileExists(folder.file("missing.120")));
    EXPECT_FALSE(store->FileExists(folder.file("file.120/under.120")));
    EXPECT_FALSE(store->FileExists(folder.file("no/such/folder.120")));
    EXPECT_FALSE(store->FileExists(""));
    EXPECT_FALSE(store->FileExists(std::string(100000, 'x')));
}

}  // namespace
}  // namespace memwright
