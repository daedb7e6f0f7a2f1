#include "image/blocked_ranges.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

// Bounds in tens of hertz, so that whole numbers decide.
struct Range {
    std::int64_t lower;
    std::int64_t upper;
    const char* result;
};

constexpr Range kRanges[] = {
    {33899900, 34000000, "340.00000"}, {35099900, 35200000, "352.00000"},
    {37199900, 37300000, "373.00000"}, {38338300, 38500000, "385.00000"},
    {54199900, 54900000, "549.00000"}, {55799900, 57200000, "572.00000"},
    {60499900, 61500000, "615.00000"}, {61999900, 63000000, "630.00000"},
    {78399900, 79800000, "798.00000"}, {80699900, 82000000, "820.00000"},
    {82399900, 84900000, "849.00000"}, {86899900, 89400000, "894.00000"},
};

std::string text_of(std::int64_t tens_of_hertz) {
    char text[40];
    std::snprintf(text, sizeof text, "%lld.%05lld", static_cast<long long>(tens_of_hertz / 100000),
                  static_cast<long long>(tens_of_hertz % 100000));
    return text;
}

TEST(BlockedRanges, the_bounds_themselves_are_free) {
    for (const Range& range : kRanges) {
        EXPECT_EQ(CheckBlocked(text_of(range.lower)), text_of(range.lower));
        EXPECT_EQ(CheckBlocked(text_of(range.upper)), text_of(range.upper));
    }
}

TEST(BlockedRanges, just_inside_of_either_bound_moves_up_to_the_upper_edge) {
    for (const Range& range : kRanges) {
        EXPECT_EQ(CheckBlocked(text_of(range.lower + 1)), range.result);
        EXPECT_EQ(CheckBlocked(text_of(range.upper - 1)), range.result);
        EXPECT_EQ(CheckBlocked(text_of((range.lower + range.upper) / 2)), range.result);
        EXPECT_EQ(CheckBlocked(text_of(range.upper - 1) + "9999"), range.result);
        EXPECT_EQ(CheckBlocked(text_of(range.lower) + "0001"), range.result);
    }
}

TEST(BlockedRanges, just_outside_of_either_bound_is_free) {
    for (const Range& range : kRanges) {
        EXPECT_EQ(CheckBlocked(text_of(range.lower - 1)), text_of(range.lower - 1));
        EXPECT_EQ(CheckBlocked(text_of(range.upper + 1)), text_of(range.upper + 1));
    }
}

TEST(BlockedRanges, frequencies_around_340_MHz) {
    EXPECT_EQ(CheckBlocked("339.50000"), "340.00000");
    EXPECT_EQ(CheckBlocked("339.00000"), "340.00000");
    EXPECT_EQ(CheckBlocked("338.99900"), "338.99900");
    EXPECT_EQ(CheckBlocked("340.00000"), "340.00000");
    EXPECT_EQ(CheckBlocked("340.0"), "340.0");
}

TEST(BlockedRanges, the_fourth_range_is_wider_than_its_neighbours) {
    EXPECT_EQ(CheckBlocked("384.00000"), "385.00000");
    EXPECT_EQ(CheckBlocked("383.50000"), "385.00000");
    EXPECT_EQ(CheckBlocked("383.30000"), "383.30000");
    EXPECT_EQ(CheckBlocked("383.383"), "383.383");
}

TEST(BlockedRanges, texts_of_other_forms_are_read_as_numbers) {
    EXPECT_EQ(CheckBlocked("560"), "572.00000");
    EXPECT_EQ(CheckBlocked("870.5"), "894.00000");
    EXPECT_EQ(CheckBlocked("0870.5"), "894.00000");
    EXPECT_EQ(CheckBlocked("870.5 MHz"), "894.00000");
    EXPECT_EQ(CheckBlocked("870e9"), "894.00000");
}

TEST(BlockedRanges, a_free_frequency_keeps_every_character) {
    for (const char* text : {"894.00000", "345.00000", "345", "0345.5", "345.5xyz", "abc", "",
                             " 560", "-560", "+560", "1.5e2", ".", "0", "1300"}) {
        EXPECT_EQ(CheckBlocked(text), text);
    }
    EXPECT_EQ(CheckBlocked(std::string(400, '9')), std::string(400, '9'));
}

TEST(BlockedRanges, agree_with_whole_numbers_on_random_frequencies) {
    SeededRandom random;
    for (int round = 0; round < 20000; ++round) {
        std::int64_t frequency = random.between(0, 130000000);
        if (random.coin()) {
            const Range& near = kRanges[random.between(0, 11)];
            frequency = (random.coin() ? near.lower : near.upper) + random.between(-200, 200);
        }
        const std::string text = std::string(static_cast<std::size_t>(random.between(0, 2)), '0') +
                                 text_of(frequency) + random.text(" xe.,-", 2);
        std::string expected = text;
        for (const Range& range : kRanges) {
            if (range.lower < frequency && frequency < range.upper) expected = range.result;
        }
        ASSERT_EQ(CheckBlocked(text), expected) << '"' << text << '"';
    }
}

TEST(BlockedRanges, a_moved_frequency_is_free) {
    for (const Range& range : kRanges) EXPECT_EQ(CheckBlocked(range.result), range.result);
}

}  // namespace
}  // namespace memwright
