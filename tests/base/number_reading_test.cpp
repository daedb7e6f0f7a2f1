#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "fakes/seeded_random.h"

namespace memwright {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(NumberReading, a_number_is_digits_with_at_most_one_point) {
    EXPECT_EQ(leading_number("145"), 145);
    EXPECT_EQ(leading_number("145.5125"), 145.5125);
    EXPECT_EQ(leading_number(".5"), 0.5);
    EXPECT_EQ(leading_number("5."), 5);
    EXPECT_EQ(leading_number("007.50"), 7.5);
}

TEST(NumberReading, a_whole_number_is_digits_alone_and_a_minus_sign) {
    EXPECT_EQ(whole_number("0"), 0);
    EXPECT_EQ(whole_number("0239"), 239);
    EXPECT_EQ(whole_number("-5"), -5);
    for (const char* const text : {"", "-", "+5", " 5", "5 ", "5.", "1e3", "0x10", "4294967296"}) {
        EXPECT_EQ(whole_number(text), std::nullopt) << text;
    }
}

TEST(NumberReading, reading_stops_at_the_first_character_that_is_no_part_of_it) {
    EXPECT_EQ(leading_number("1.2.3"), 1.2);
    EXPECT_EQ(leading_number("5..5"), 5);
    EXPECT_EQ(leading_number("12,5"), 12);
    EXPECT_EQ(leading_number("12 5"), 12);
    EXPECT_EQ(leading_number("145MHz"), 145);
    EXPECT_EQ(leading_number("5-3"), 5);
    EXPECT_EQ(leading_number(std::string("4\0"
                                         "5",
                                         3)),
              4);
    EXPECT_EQ(leading_number("3\xB2"), 3);
}

TEST(NumberReading, reading_stops_at_the_end_of_a_text_that_is_part_of_a_longer_one) {
    const std::string_view longer = "145.5125";
    EXPECT_EQ(leading_number(longer.substr(0, 2)), 14);
    EXPECT_EQ(leading_number(longer.substr(0, 3)), 145);
    EXPECT_EQ(leading_number(longer.substr(0, 5)), 145.5);
    EXPECT_EQ(leading_number(longer.substr(0, 0)), 0);
}

TEST(NumberReading, there_are_no_exponents) {
    EXPECT_EQ(leading_number("1e5"), 1);
    EXPECT_EQ(leading_number("1E5"), 1);
    EXPECT_EQ(leading_number("1d5"), 1);
    EXPECT_EQ(leading_number("2.5e-3"), 2.5);
}

TEST(NumberReading, a_text_that_does_not_start_with_a_number_reads_as_0) {
    for (const char* text : {"", ".", "..5", "-5", "+5", " 5", "\t5", "abc", "e5", ",5", "inf",
                             "nan", "infinity", "x10", "&H10", "\xB2"}) {
        EXPECT_EQ(leading_number(text), 0) << '"' << text << '"';
    }
}

TEST(NumberReading, hexadecimal_prefixes_are_not_known) { EXPECT_EQ(leading_number("0x1F"), 0); }

TEST(NumberReading, long_digit_strings_keep_their_size) {
    EXPECT_DOUBLE_EQ(leading_number("123456789012345678901234567890"), 1.2345678901234568e29);
    EXPECT_DOUBLE_EQ(leading_number("0.123456789012345678901234567890"), 0.12345678901234568);
    EXPECT_DOUBLE_EQ(leading_number("145.51250000000000000000000000000000000000001"), 145.5125);
    EXPECT_DOUBLE_EQ(leading_number(std::string(300, '9')), 1e300);
}

TEST(NumberReading, more_digits_than_a_number_holds_read_as_the_largest_number) {
    EXPECT_EQ(leading_number(std::string(400, '9')), kLargest);
    EXPECT_EQ(leading_number("1" + std::string(400, '0')), kLargest);
    EXPECT_EQ(leading_number(std::string(400, '9') + ".5"), kLargest);
    EXPECT_EQ(leading_number(std::string(400, '9') + "MHz"), kLargest);
    EXPECT_EQ(leading_number(std::string(400, '0') + std::string(400, '9')), kLargest);
}

TEST(NumberReading, any_number_of_zeros_may_stand_in_front) {
    EXPECT_EQ(leading_number(std::string(400, '0')), 0);
    EXPECT_EQ(leading_number(std::string(400, '0') + "5"), 5);
    EXPECT_EQ(leading_number(std::string(400, '0') + "12.5"), 12.5);
}

TEST(NumberReading, a_number_too_small_to_hold_reads_as_0) {
    EXPECT_EQ(leading_number("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_number("." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_number(std::string(400, '0') + "." + std::string(400, '0') + "9"), 0);
}

TEST(NumberReading, the_shortest_text_has_no_zeros_at_its_end) {
    EXPECT_EQ(shortest_text(12.340), "12.34");
    EXPECT_EQ(shortest_text(145.000), "145");
    EXPECT_EQ(shortest_text(100), "100");
    EXPECT_EQ(shortest_text(0), "0");
    EXPECT_EQ(shortest_text(0.5), "0.5");
}

TEST(NumberReading, the_shortest_text_never_has_an_exponent) {
    EXPECT_EQ(shortest_text(0.00001), "0.00001");
    EXPECT_EQ(shortest_text(1e22), "1" + std::string(22, '0'));
    EXPECT_EQ(shortest_text(kLargest).size(), 309U);
    EXPECT_EQ(shortest_text(kLargest).find_first_not_of("0123456789"), std::string::npos);
    const std::string smallest = shortest_text(std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(smallest, "0." + std::string(323, '0') + "5");
}

// Up to fifteen digits a number has one shortest writing, which plain text work finds as well.
TEST(NumberReading, writing_what_was_read_drops_only_needless_zeros) {
    SeededRandom random;
    for (int round = 0; round < 5000; ++round) {
        const std::string integer = random.text("0123456789", 7);
        const std::string decimals = random.text("0000123456789", 8);
        std::string expected = integer;
        expected.erase(0, expected.find_first_not_of('0'));
        if (expected.empty()) expected = "0";
        const auto last = decimals.find_last_not_of('0');
        if (last != std::string::npos) expected.append(".").append(decimals, 0, last + 1);
        std::string typed = integer;
        typed.append(".").append(decimals).append(random.text("xe -+.,", 3));
        ASSERT_EQ(shortest_text(leading_number(typed)), expected) << '"' << typed << '"';
    }
}

}  // namespace
}  // namespace memwright
