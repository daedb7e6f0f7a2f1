#include "base/number_text.h"

#include <gtest/gtest.h>

#include <cctype>
#include <limits>
#include <string>

#include "base/error.h"
#include "fakes/seeded_random.h"

namespace memwright {
namespace {

TEST(NumberText, lHex_writes_at_least_two_digits) {
    EXPECT_EQ(lHex(0), "00");
    EXPECT_EQ(lHex(10), "0A");
    EXPECT_EQ(lHex(255), "FF");
    EXPECT_EQ(lHex(256), "100");
    EXPECT_EQ(lHex(0xFFFFFFFF), "FFFFFFFF");
}

TEST(NumberText, lLng_reads_either_case) {
    EXPECT_EQ(lLng("0"), 0);
    EXPECT_EQ(lLng("a5"), 0xA5);
    EXPECT_EQ(lLng("A5"), 0xA5);
    EXPECT_EQ(lLng("0000000ff"), 255);
}

TEST(NumberText, lLng_gives_a_signed_number_of_32_bits) {
    EXPECT_EQ(lLng("7FFFFFFF"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(lLng("80000000"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(lLng("FFFFFFFF"), -1);
    EXPECT_THROW(lLng("100000000"), ConversionError);
}

TEST(NumberText, lLng_refuses_what_is_no_hexadecimal_number) {
    for (const char* text : {"", "G", "1G", "G1", " 1", "1 ", "-1", "+1", "0x1", "&H1", "1.0"}) {
        EXPECT_THROW(lLng(text), ConversionError) << '"' << text << '"';
    }
}

TEST(NumberText, lLng_reads_what_lHex_wrote_of_every_byte) {
    for (int value = 0; value < 256; ++value) {
        const std::string text = lHex(static_cast<std::uint32_t>(value));
        EXPECT_EQ(text.size(), 2U);
        EXPECT_EQ(lLng(text), value);
    }
}

TEST(NumberText, Hex2Bin_knows_every_digit_in_both_cases) {
    EXPECT_EQ(Hex2Bin("01234567"), "00000001001000110100010101100111");
    EXPECT_EQ(Hex2Bin("89ABCDEF"), "10001001101010111100110111101111");
    EXPECT_EQ(Hex2Bin("abcdef"), "101010111100110111101111");
    EXPECT_EQ(Hex2Bin("a5"), "10100101");
    EXPECT_EQ(Hex2Bin(""), "");
}

TEST(NumberText, Hex2Bin_repeats_the_group_before_an_unknown_character) {
    EXPECT_EQ(Hex2Bin("1G"), "00010001");
    EXPECT_EQ(Hex2Bin("F--0"), "1111111111110000");
}

TEST(NumberText, Hex2Bin_gives_nothing_for_an_unknown_first_character) {
    EXPECT_EQ(Hex2Bin("G1"), "0001");
    EXPECT_EQ(Hex2Bin("GHI"), "");
}

// Of all 256 characters, those beside the digits and letters too.
TEST(NumberText, Hex2Bin_knows_no_other_characters_than_the_digits) {
    const std::string digits = "0123456789ABCDEFabcdef";
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        const bool known = digits.find(c) != std::string::npos;
        EXPECT_EQ(Hex2Bin(std::string(1, c)).size(), known ? 4U : 0U) << "character " << code;
    }
}

TEST(NumberText, Bin2Hex_knows_every_group_in_upper_case) {
    EXPECT_EQ(Bin2Hex("00000001001000110100010101100111"), "01234567");
    EXPECT_EQ(Bin2Hex("10001001101010111100110111101111"), "89ABCDEF");
    EXPECT_EQ(Bin2Hex(""), "");
}

TEST(NumberText, Bin2Hex_repeats_the_digit_before_a_slice_that_is_no_group) {
    EXPECT_EQ(Bin2Hex("00010"), "11");
    EXPECT_EQ(Bin2Hex("0101201011"), "555");
    EXPECT_EQ(Bin2Hex("1111 0000001"), "FF1");
}

TEST(NumberText, Bin2Hex_gives_nothing_for_a_first_slice_that_is_no_group) {
    EXPECT_EQ(Bin2Hex("101"), "");
    EXPECT_EQ(Bin2Hex("20000001"), "1");
}

TEST(NumberText, Bin2Dec_writes_the_decimal_number) {
    EXPECT_EQ(Bin2Dec("00000000"), "0");
    EXPECT_EQ(Bin2Dec("10000000"), "128");
    EXPECT_EQ(Bin2Dec("11111111"), "255");
    EXPECT_EQ(Bin2Dec("000100000000"), "256");
}

TEST(NumberText, Bin2Dec_refuses_a_text_without_a_single_group) {
    EXPECT_THROW(Bin2Dec(""), ConversionError);
    EXPECT_THROW(Bin2Dec("101"), ConversionError);
}

TEST(NumberText, Bin2Dec_gives_every_byte_back) {
    for (int value = 0; value < 256; ++value) {
        std::string bin;
        for (int bit = 7; bit >= 0; --bit) bin += (value >> bit & 1) != 0 ? '1' : '0';
        EXPECT_EQ(Bin2Dec(bin), std::to_string(value));
    }
}

TEST(NumberText, Hex2Bin_agrees_with_bit_arithmetic_on_random_texts) {
    SeededRandom random;
    for (int round = 0; round < 3000; ++round) {
        const std::string hex = random.text("0123456789ABCDEFabcdefGgz @-.\xFF", 12);
        std::string expected;
        int group = -1;
        for (const char c : hex) {
            const std::string digits = "0123456789abcdef";
            const auto place =
                digits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
            if (place != std::string::npos) group = static_cast<int>(place);
            for (int bit = 8; group >= 0 && bit > 0; bit /= 2) {
                expected += (group & bit) != 0 ? '1' : '0';
            }
        }
        ASSERT_EQ(Hex2Bin(hex), expected) << '"' << hex << '"';
    }
}

TEST(NumberText, Bin2Hex_agrees_with_bit_arithmetic_on_random_texts) {
    SeededRandom random;
    for (int round = 0; round < 3000; ++round) {
        const std::string bin = random.text(random.coin() ? "01" : "010101012x ", 21);
        std::string expected;
        int last = -1;
        for (std::size_t first = 0; first < bin.size(); first += 4) {
            int value = 0;
            int digits = 0;
            for (std::size_t i = first; i < first + 4 && i < bin.size(); ++i) {
                if (bin[i] != '0' && bin[i] != '1') continue;
                value = value * 2 + (bin[i] - '0');
                ++digits;
            }
            if (digits == 4) last = value;
            if (last >= 0) expected += static_cast<char>(last < 10 ? '0' + last : 'A' + last - 10);
        }
        ASSERT_EQ(Bin2Hex(bin), expected) << '"' << bin << '"';
    }
}

TEST(NumberText, Bin2Hex_undoes_Hex2Bin_on_upper_case_digits) {
    SeededRandom random;
    for (int round = 0; round < 1000; ++round) {
        const std::string hex = random.text("0123456789ABCDEF", 16);
        ASSERT_EQ(Bin2Hex(Hex2Bin(hex)), hex);
    }
}

TEST(NumberText, with_leading_zeros_fills_up_and_never_cuts) {
    EXPECT_EQ(with_leading_zeros("5", 3), "005");
    EXPECT_EQ(with_leading_zeros("", 2), "00");
    EXPECT_EQ(with_leading_zeros("1234", 3), "1234");
}

}  // namespace
}  // namespace memwright
