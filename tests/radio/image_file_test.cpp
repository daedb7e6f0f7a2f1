#include "radio/image_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/error.h"
#include "radio/computer.h"
#include "support/temporary_folder.h"

namespace memwright::radio {
namespace {

class ImageFile : public testing::Test {
  protected:
    void write(const Bytes& bytes) const {
        std::ofstream file(path_, std::ios::binary);
        for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
    }

    Bytes content() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    TemporaryFolder folder_;
    std::string path_ = folder_.file("image.120");
};

TEST_F(ImageFile, is_saved_byte_for_byte_and_nothing_else) {
    const MemoryImage image = random_image(40);
    save_image(path_, image);
    EXPECT_EQ(content(), bytes_of(image));
    EXPECT_EQ(folder_.names().size(), 1U);
    EXPECT_EQ(load_image(path_), image);
}

TEST_F(ImageFile, replaces_an_older_and_longer_one_whole) {
    write(Bytes(9000, 0x55));
    save_image(path_, random_image(41));
    EXPECT_EQ(content(), bytes_of(random_image(41)));
}

TEST_F(ImageFile, is_loaded_from_the_start_of_a_longer_one) {
    Bytes bytes = bytes_of(random_image(42));
    bytes.push_back(0x55);
    write(bytes);
    EXPECT_EQ(load_image(path_), random_image(42));
}

TEST_F(ImageFile, is_refused_if_it_is_too_short) {
    write(Bytes(7391, 0x55));
    EXPECT_THROW(load_image(path_), FileError);
}

TEST_F(ImageFile, is_not_created_by_loading_it) {
    EXPECT_THROW(load_image(path_), FileError);
    EXPECT_EQ(folder_.names().size(), 0U);
}

TEST_F(ImageFile, that_cannot_be_saved_leaves_nothing_behind) {
    std::filesystem::create_directory(path_);
    EXPECT_THROW(save_image(path_, random_image(43)), FileError);
    EXPECT_EQ(folder_.names().size(), 1U);
    EXPECT_THROW(save_image(folder_.file("none/image.120"), random_image(43)), FileError);
}

}  // namespace
}  // namespace memwright::radio
