#include "image/memory_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "base/error.h"

namespace memwright {
namespace {

constexpr int kLowestInt = std::numeric_limits<int>::min();
constexpr int kHighestInt = std::numeric_limits<int>::max();

TEST(MemoryImageStore, is_created_with_7392_zeros) {
    const MemoryImage image;
    ASSERT_EQ(image.bytes().size(), 7392U);
    EXPECT_TRUE(std::ranges::all_of(image.bytes(), [](std::uint8_t byte) { return byte == 0; }));
}

TEST(MemoryImageStore, holds_any_byte_at_its_first_and_its_last_offset) {
    MemoryImage image;
    for (int value = 0; value < 256; ++value) {
        image.set(0, static_cast<std::uint8_t>(value));
        image.set(7391, static_cast<std::uint8_t>(255 - value));
        EXPECT_EQ(image.get(0), value);
        EXPECT_EQ(image.get(7391), 255 - value);
        EXPECT_EQ(image.bytes().front(), value);
        EXPECT_EQ(image.bytes().back(), 255 - value);
    }
}

TEST(MemoryImageStore, an_offset_outside_is_an_index_error_and_changes_nothing) {
    MemoryImage image;
    image.set(0, 1);
    image.set(7391, 2);
    const MemoryImage before = image;
    for (const int offset : {-1, 7392, 7393, kLowestInt, kHighestInt}) {
        EXPECT_THROW(image.get(offset), IndexError) << offset;
        EXPECT_THROW(image.set(offset, 0x55), IndexError) << offset;
    }
    EXPECT_EQ(image, before);
}

TEST(MemoryImageStore, an_index_error_names_the_offset_and_the_bounds) {
    try {
        MemoryImage().get(7392);
        FAIL() << "no error";
    } catch (const IndexError& error) {
        EXPECT_NE(std::string(error.what()).find("7392"), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("7391"), std::string::npos);
    }
}

TEST(MemoryImageStore, two_images_are_equal_when_every_byte_is) {
    MemoryImage one;
    MemoryImage other;
    EXPECT_EQ(one, other);
    other.set(7391, 1);
    EXPECT_NE(one, other);
    one.set(7391, 1);
    EXPECT_EQ(one, other);
}

}  // namespace
}  // namespace memwright
