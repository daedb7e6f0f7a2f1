#include "image/frequency_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

std::string formatted(std::string Freq) { return FormatFreq(Freq); }

TEST(FormatFreqText, has_five_decimals) {
    EXPECT_EQ(formatted("145.5125"), "145.51250");
    EXPECT_EQ(formatted("145"), "145.00000");
    EXPECT_EQ(formatted("145."), "145.00000");
    EXPECT_EQ(formatted(".5"), "0.50000");
    EXPECT_EQ(formatted("145.512509"), "145.51250");
}

TEST(FormatFreqText, a_fraction_that_the_radio_has_no_code_for_is_dropped) {
    EXPECT_EQ(formatted("145.51233"), "145.51200");
    EXPECT_EQ(formatted("145.51299"), "145.51200");
    EXPECT_EQ(formatted("145.51205"), "145.51200");
    EXPECT_EQ(formatted("145.51224999"), "145.51200");
}

TEST(FormatFreqText, a_fraction_that_the_radio_has_a_code_for_is_kept) {
    for (const char* text : {"145.51225", "145.51250", "145.51275", "145.51200"}) {
        EXPECT_EQ(formatted(text), text);
    }
}

TEST(FormatFreqText, decimals_that_do_not_read_as_a_number_are_kept) {
    EXPECT_EQ(formatted("145.512xy"), "145.512xy");
    EXPECT_EQ(formatted("145.5120x"), "145.5120x");
    EXPECT_EQ(formatted("145.5125x"), "145.51200");
    EXPECT_EQ(formatted("145.x"), "145.x0000");
    EXPECT_EQ(formatted("145.512-5"), "145.512-5");
}

TEST(FormatFreqText, more_than_1299_becomes_1299_and_keeps_its_decimals) {
    EXPECT_EQ(formatted("2000"), "1299.00000");
    EXPECT_EQ(formatted("1300.5"), "1299.50000");
    EXPECT_EQ(formatted("1299.99975"), "1299.99975");
    EXPECT_EQ(formatted("1299x.5"), "1299x.50000");
    EXPECT_EQ(formatted("01300"), "1299.00000");
    EXPECT_EQ(formatted(std::string(400, '9')), "1299.00000");
    EXPECT_EQ(formatted(std::string(400, '0') + std::string(400, '9')), "1299.00000");
}

TEST(FormatFreqText, what_does_not_read_as_a_number_becomes_0) {
    EXPECT_EQ(formatted("abc"), "0.00000");
    EXPECT_EQ(formatted(""), "0.00000");
    EXPECT_EQ(formatted("."), "0.00000");
    EXPECT_EQ(formatted("000.5"), "0.50000");
    EXPECT_EQ(formatted("-5"), "0.00000");
    EXPECT_EQ(formatted("+5"), "0.00000");
    EXPECT_EQ(formatted(" 145.5"), "0.50000");
    EXPECT_EQ(formatted("0x.5"), "0.50000");
}

TEST(FormatFreqText, any_other_integer_part_is_kept_as_typed) {
    EXPECT_EQ(formatted("0145.5"), "0145.50000");
    EXPECT_EQ(formatted("145MHz"), "145MHz.00000");
    EXPECT_EQ(formatted("1e5"), "1e5.00000");
    EXPECT_EQ(formatted("145,5"), "145,5.00000");
}

TEST(FormatFreqText, only_the_first_two_pieces_between_points_count) {
    EXPECT_EQ(formatted("1.2.3"), "1.20000");
    EXPECT_EQ(formatted("145..5"), "145.00000");
    EXPECT_EQ(formatted("1.2."), "1.20000");
}

TEST(FormatFreqText, a_blocked_frequency_moves_up_but_the_callers_text_does_not) {
    std::string Freq = "339.5";
    EXPECT_EQ(FormatFreq(Freq), "340.00000");
    EXPECT_EQ(Freq, "339.50000");
    Freq = "145.5125";
    EXPECT_EQ(FormatFreq(Freq), "145.51250");
    EXPECT_EQ(Freq, "145.51250");
}

TEST(FormatFreqText, the_fraction_is_dropped_before_the_blocked_ranges_are_asked) {
    EXPECT_EQ(formatted("338.99901"), "338.99900");
    EXPECT_EQ(formatted("338.99925"), "340.00000");
}

TEST(FormatFreqText, is_its_own_normal_form) {
    SeededRandom random;
    for (int round = 0; round < 3000; ++round) {
        const std::string once = formatted(random.text("0123456789.x", 12));
        ASSERT_EQ(formatted(once), once);
    }
}

// The plain formulation: whole numbers of ten hertz.
std::string plain_format(const std::string& integer, const std::string& decimals) {
    long megahertz = 0;
    for (const char c : integer) megahertz = megahertz * 10 + (c - '0');
    long tens = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        tens = tens * 10 + (i < decimals.size() ? decimals[i] - '0' : 0);
    }
    tens -= tens % 25 == 0 ? 0 : tens % 100;
    const std::string shown = megahertz > 1299 ? "1299" : megahertz == 0 ? "0" : integer;
    if (megahertz > 1299) megahertz = 1299;

    const long frequency = megahertz * 100000 + tens;
    const std::pair<long, long> blocked[] = {
        {338999, 340}, {350999, 352}, {371999, 373}, {383383, 385}, {541999, 549}, {557999, 572},
        {604999, 615}, {619999, 630}, {783999, 798}, {806999, 820}, {823999, 849}, {868999, 894}};
    for (const auto& [lower_kilohertz, upper_megahertz] : blocked) {
        if (frequency > lower_kilohertz * 100 && frequency < upper_megahertz * 100000) {
            return std::to_string(upper_megahertz) + ".00000";
        }
    }
    return shown + "." + std::to_string(100000 + tens).substr(1);
}

TEST(FormatFreqText, agrees_with_whole_numbers_on_random_numbers) {
    SeededRandom random;
    for (int round = 0; round < 10000; ++round) {
        const int highest[] = {0, 9, 999, 1400, 99999};
        const std::string integer =
            random.text("0", 2) + std::to_string(random.between(0, highest[random.between(0, 4)]));
        const std::string decimals = random.text(random.coin() ? "0123456789" : "0257", 8);
        const bool bare = decimals.empty() && random.coin();
        std::string typed = integer;
        if (!bare) typed.append(".").append(decimals);
        ASSERT_EQ(formatted(typed), plain_format(integer, decimals)) << '"' << typed << '"';
    }
}

TEST(Mem2RowNumber, is_the_row_of_bank_and_number) {
    EXPECT_EQ(Mem2Row("000"), 1);
    EXPECT_EQ(Mem2Row("012"), 13);
    EXPECT_EQ(Mem2Row("163"), 128);
    EXPECT_EQ(Mem2Row("963"), 640);
}

TEST(Mem2RowNumber, a_short_text_has_zeros_put_in_front) {
    EXPECT_EQ(Mem2Row("5"), 6);
    EXPECT_EQ(Mem2Row("12"), 13);
    EXPECT_EQ(Mem2Row(""), 1);
}

TEST(Mem2RowNumber, is_not_checked) {
    EXPECT_EQ(Mem2Row("099"), 100);
    EXPECT_EQ(Mem2Row("999"), 9 * 64 + 100);
    EXPECT_EQ(Mem2Row("abc"), 1);
    EXPECT_EQ(Mem2Row("1x9"), 65);
    EXPECT_EQ(Mem2Row("20005"), 2 * 64 + 6);
}

TEST(Mem2RowNumber, every_memory_has_its_row) {
    int row = 0;
    for (int bank = 0; bank < 10; ++bank) {
        for (int number = 0; number < 64; ++number) {
            ++row;
            const std::string mem = std::to_string(1000 + bank * 100 + number).substr(1);
            EXPECT_EQ(Mem2Row(mem), row) << mem;
        }
    }
    EXPECT_EQ(row, 640);
}

}  // namespace
}  // namespace memwright
