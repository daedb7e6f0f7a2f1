// The conversions between settings' texts and what they say.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <optional>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "fakes/memory_settings.h"
#include "fakes/seeded_random.h"

namespace memwright {
namespace {

const std::vector<std::string> kNoNumbers = {"",     " ",   "abc",  "1,5",   "1 ",    " 1",
                                             "0x10", "inf", "-inf", "nan",   "+",     "-",
                                             "+-1",  "--1", "++1",  "1e999", "1.5.2", "12abc"};

TEST(SettingsText, true_and_false_are_words_in_any_case) {
    for (const char* text : {"True", "true", "TRUE", "tRuE"}) EXPECT_TRUE(boolean_from_text(text));
    for (const char* text : {"False", "false", "FALSE"}) EXPECT_FALSE(boolean_from_text(text));
}

TEST(SettingsText, a_number_is_true_unless_it_is_0) {
    for (const char* text : {"1", "-1", "2", "0.5", "+1"}) EXPECT_TRUE(boolean_from_text(text));
    for (const char* text : {"0", "0.0", "-0", "+0"}) EXPECT_FALSE(boolean_from_text(text));
}

TEST(SettingsText, any_other_text_is_no_boolean) {
    for (const std::string& text : kNoNumbers) {
        EXPECT_THROW(boolean_from_text(text), ConversionError) << text;
    }
    for (const char* text : {"yes", "on", "T", "True "}) {
        EXPECT_THROW(boolean_from_text(text), ConversionError) << text;
    }
}

TEST(SettingsText, whole_numbers_fill_16_bits) {
    EXPECT_EQ(integer_from_text("0"), 0);
    EXPECT_EQ(integer_from_text("2"), 2);
    EXPECT_EQ(integer_from_text("+12"), 12);
    EXPECT_EQ(integer_from_text("32767"), 32767);
    EXPECT_EQ(integer_from_text("-32768"), -32768);
    for (const char* text : {"32768", "-32769", "99999999999", "1e300"}) {
        EXPECT_THROW(integer_from_text(text), ConversionError) << text;
    }
}

TEST(SettingsText, a_fraction_is_rounded_and_its_half_to_the_even_number) {
    EXPECT_EQ(integer_from_text("1.4"), 1);
    EXPECT_EQ(integer_from_text("1.6"), 2);
    EXPECT_EQ(integer_from_text("0.5"), 0);
    EXPECT_EQ(integer_from_text("1.5"), 2);
    EXPECT_EQ(integer_from_text("2.5"), 2);
    EXPECT_EQ(integer_from_text("-1.5"), -2);
}

TEST(SettingsText, a_number_has_a_point_and_a_sign) {
    EXPECT_EQ(number_from_text("7050"), 7050);
    EXPECT_EQ(number_from_text("-1.25"), -1.25);
    EXPECT_EQ(number_from_text("+1.25"), 1.25);
    EXPECT_EQ(number_from_text(".5"), 0.5);
}

TEST(SettingsText, any_other_text_is_no_number) {
    for (const std::string& text : kNoNumbers) {
        EXPECT_THROW(number_from_text(text), ConversionError) << text;
        EXPECT_THROW(integer_from_text(text), ConversionError) << text;
    }
}

TEST(SettingsText, the_error_names_the_text) {
    try {
        number_from_text("wide");
        FAIL() << "no error";
    } catch (const ConversionError& error) {
        EXPECT_STREQ(error.what(), "\"wide\" is no number.");
    }
}

TEST(SettingsText, numbers_are_written_short_and_without_an_exponent) {
    EXPECT_EQ(shortest_text(7050), "7050");
    EXPECT_EQ(shortest_text(0.1), "0.1");
    EXPECT_EQ(shortest_text(-37.5), "-37.5");
    EXPECT_EQ(shortest_text(0), "0");
    EXPECT_EQ(shortest_text(1e21), "1000000000000000000000");
    EXPECT_EQ(shortest_text(1e-7), "0.0000001");
}

TEST(SettingsText, every_number_reads_back_as_it_was_written) {
    SeededRandom random;
    const auto check = [](double number) {
        const std::string text = shortest_text(number);
        EXPECT_EQ(number_from_text(text), number);
        EXPECT_EQ(text.find_first_not_of("-.0123456789"), std::string::npos) << text;
    };
    using limits = std::numeric_limits<double>;
    for (const double number :
         {limits::max(), limits::lowest(), limits::min(), limits::denorm_min()})
        check(number);
    int checked = 0;
    while (checked < 5000) {
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i) bits = (bits << 8) | random.byte();
        const auto number = std::bit_cast<double>(bits);
        if (!std::isfinite(number)) continue;
        check(number);
        ++checked;
    }
}

// Writes and reads numbers as "1.234,5".
class OtherNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(SettingsText, no_conversion_depends_on_the_locale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new OtherNumbers));
    const std::string text = shortest_text(12345.5);
    const double number = number_from_text("12345.5");
    std::locale::global(before);
    EXPECT_EQ(text, "12345.5");
    EXPECT_EQ(number, 12345.5);
}

TEST(SettingsStore, get_gives_the_default_only_for_what_is_absent) {
    fakes::MemorySettings settings;
    EXPECT_EQ(settings.get("VR120", "Settings", "Top", "5"), "5");
    settings.save("VR120", "Settings", "Top", "");
    EXPECT_EQ(settings.get("VR120", "Settings", "Top", "5"), "");
    settings.save("VR120", "Settings", "Top", "7");
    EXPECT_EQ(settings.get("VR120", "Settings", "Top", "5"), "7");
    EXPECT_EQ(settings.get("VR120Clone", "Settings", "Top", "5"), "5");
    settings.remove("VR120", "Settings", "Top");
    EXPECT_EQ(settings.get("VR120", "Settings", "Top", "5"), "5");
}

}  // namespace
}  // namespace memwright
