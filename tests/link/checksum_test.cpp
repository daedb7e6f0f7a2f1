#include "link/checksum.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "base/error.h"

namespace memwright {
namespace {

using Bytes = std::vector<std::uint8_t>;

// As many bytes as CalcChecksumB adds, and more behind them.
Bytes zeros_with(std::uint8_t first, std::size_t size = 8122) {
    Bytes bytes(size, 0);
    bytes[0] = first;
    return bytes;
}

TEST(Checksum, the_opening_frame_sums_to_201) {
    const Bytes frame = {0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00};
    EXPECT_EQ(CalcChecksum(frame, 0, 6), "201");
}

TEST(Checksum, thirty_seven_bytes_of_FF_sum_to_219) {
    EXPECT_EQ(CalcChecksum(Bytes(37, 0xFF), 0, 36), "219");
}

TEST(Checksum, both_ends_are_added_and_nothing_beside_them) {
    const Bytes bytes = {100, 1, 2, 3, 100};
    EXPECT_EQ(CalcChecksum(bytes, 1, 3), "6");
    EXPECT_EQ(CalcChecksum(bytes, 2, 2), "2");
    EXPECT_EQ(CalcChecksum(bytes, 0, 4), "206");
}

TEST(Checksum, it_is_written_in_decimal_without_zeros_in_front) {
    EXPECT_EQ(CalcChecksum(Bytes{0}, 0, 0), "0");
    EXPECT_EQ(CalcChecksum(Bytes{7}, 0, 0), "7");
    EXPECT_EQ(CalcChecksum(Bytes{255}, 0, 0), "255");
    EXPECT_EQ(CalcChecksum(Bytes{255, 1}, 0, 1), "0");
}

TEST(Checksum, bytes_that_are_not_there_are_an_IndexError) {
    EXPECT_THROW(CalcChecksum(Bytes(40), 3, 40), IndexError);
    EXPECT_THROW(CalcChecksum(Bytes{}, 0, 0), IndexError);
    EXPECT_THROW(CalcChecksum(Bytes(40), 5, 3), IndexError) << "it ends before it begins";
}

TEST(Checksum, it_is_what_is_left_when_256_is_taken_from_the_sum_as_often_as_it_goes) {
    constexpr unsigned kSeed = 4101;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    for (int round = 0; round < 500; ++round) {
        Bytes bytes(1 + random() % 60);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() % 256);
        const std::size_t start = random() % bytes.size();
        const std::size_t end = start + random() % (bytes.size() - start);
        int sum = 0;
        for (std::size_t i = start; i <= end; ++i) sum += bytes[i];
        while (sum >= 256) sum -= 256;
        ASSERT_EQ(CalcChecksum(bytes, start, end), std::to_string(sum));
    }
}

TEST(ChecksumB, it_is_the_last_two_hexadecimal_digits_of_the_sum) {
    EXPECT_EQ(CalcChecksumB(Bytes(8122, 0xFF)), "46");  // 1F9A46
    EXPECT_EQ(CalcChecksumB(zeros_with(0x10)), "10");
    EXPECT_EQ(CalcChecksumB(zeros_with(0xAB)), "AB");
}

TEST(ChecksumB, a_sum_below_16_is_a_single_digit) {
    EXPECT_EQ(CalcChecksumB(zeros_with(0)), "0");
    EXPECT_EQ(CalcChecksumB(zeros_with(11)), "B");
    EXPECT_EQ(CalcChecksumB(zeros_with(15)), "F");
}

TEST(ChecksumB, a_larger_sum_keeps_a_zero_among_its_last_two_digits) {
    Bytes bytes = zeros_with(0xFF);
    bytes[1] = 6;  // 105
    EXPECT_EQ(CalcChecksumB(bytes), "05");
}

TEST(ChecksumB, byte_8121_counts_and_byte_8122_does_not) {
    Bytes bytes = zeros_with(0, 8123);
    bytes[8121] = 0x21;
    bytes[8122] = 0x44;
    EXPECT_EQ(CalcChecksumB(bytes), "21");
}

TEST(ChecksumB, fewer_than_8122_bytes_are_an_IndexError) {
    EXPECT_THROW(CalcChecksumB(Bytes(8121)), IndexError);
}

TEST(ParseBytes, every_byte_is_two_digits_and_a_space) {
    const Bytes bytes = {0x0C, 0x01, 0xA5};
    EXPECT_EQ(ParseBytes(bytes), "0C 01 A5 ");
    EXPECT_EQ(ParseBytes(Bytes{0x00, 0xFF}), "00 FF ");
}

TEST(ParseBytes, no_bytes_give_no_text) { EXPECT_EQ(ParseBytes(Bytes{}), ""); }

}  // namespace
}  // namespace memwright
