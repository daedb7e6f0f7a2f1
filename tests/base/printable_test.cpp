#include "base/printable.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

using namespace std::string_literals;

TEST(Printable, texts_without_commands_stay_as_they_are) {
    for (const std::string text :
         {"", "TOWER 118.1", "~ \xC2\xA0 Z\xC3\xBCrich \xE2\x82\xAC",
          "\xF0\x9F\x93\xBB\xEF\xBF\xBD", "\xE2\x80\xA9\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA",
          "\xF4\x8F\xBF\xBF\xED\x9F\xBF"}) {
        EXPECT_EQ(printable(text), text);
        EXPECT_EQ(printable_in_line(text), text);
    }
    EXPECT_EQ(printable("a\tb\n\nc\n"), "a\tb\n\nc\n");
}

TEST(Printable, ends_of_lines_are_line_feeds) {
    EXPECT_EQ(printable("a\r\nb\r\n\r\n"), "a\nb\n\n");
    EXPECT_EQ(printable("over\rwritten\r"), "over?written?");
    EXPECT_EQ(printable("\r\r\n"), "?\n");
}

TEST(Printable, a_name_within_a_line_stays_within_it) {
    EXPECT_EQ(printable_in_line("a\nb\tc\r\nd"), "a?b?c??d");
}

TEST(Printable, control_characters_are_question_marks) {
    for (int c = 0; c < 0xA0; ++c) {
        if ((c >= ' ' && c < 0x7F) || c == '\n' || c == '\t') continue;
        const std::string text =
            c < 0x80 ? std::string(1, static_cast<char>(c)) : "\xC2"s + static_cast<char>(c);
        EXPECT_EQ(printable("a" + text + "b"), "a?b") << c;
        EXPECT_EQ(printable_in_line("a" + text + "b"), "a?b") << c;
    }
}

TEST(Printable, changes_of_the_direction_are_question_marks) {
    for (const std::string lead : {"\xE2\x80", "\xE2\x81"}) {
        const auto [first, last] =
            lead == "\xE2\x80" ? std::pair(0xAA, 0xAE) : std::pair(0xA6, 0xA9);
        for (int c = first; c <= last; ++c) {
            EXPECT_EQ(printable("a" + lead + static_cast<char>(c) + "b"), "a?b") << c;
        }
        EXPECT_NE(printable(lead + static_cast<char>(first - 1)), "?");
        EXPECT_NE(printable(lead + static_cast<char>(last + 1)), "?");
    }
}

TEST(Printable, bytes_that_are_no_UTF_8_are_question_marks) {
    const std::pair<std::string, std::string> all[] = {
        {"Z\xFCrich", "Z?rich"},
        {"\x9B"s + "31m", "?31m"},
        {"\xC3", "?"},
        {"\xE2\x82", "?"},
        {"\xE2\x82x", "?x"},
        {"\xC3\x1B[31m", "??[31m"},  // the command is none of the character's bytes
        {"\xC0\x9B", "?"},           // ESC in too many bytes
        {"\xE0\x80\x9B", "?"},
        {"\xF0\x80\x80\x9B", "?"},
        {"\xED\xA0\x80", "?"},  // half of a pair
        {"\xED\xBF\xBF", "?"},
        {"\xF4\x90\x80\x80", "?"},  // past the last character
        {"\xF7\xBF\xBF\xBF", "?"},
        {"\xFF\xFE", "??"},
    };
    for (const auto& [text, shown] : all) {
        EXPECT_EQ(printable(text), shown);
        EXPECT_EQ(printable_in_line(text), shown);
    }
}

// Whatever comes, no byte is left that a terminal could take for a command, in UTF-8 or not.
TEST(Printable, nothing_that_a_terminal_obeys_comes_through) {
    SeededRandom random;
    for (int i = 0; i < 20'000; ++i) {
        std::string text;
        for (int size = random.between(0, 12); size > 0; --size) {
            text += random.coin() ? static_cast<char>(random.byte())
                                  : random.one_of("\x1B\xC2\x9B\xE2\x80\xAE\r\n\xF0\xED");
        }
        const std::string shown = printable(text);
        EXPECT_EQ(printable(shown), shown);
        for (std::size_t place = 0; place < shown.size(); ++place) {
            const auto byte = static_cast<unsigned char>(shown[place]);
            EXPECT_TRUE(byte >= ' ' || byte == '\n' || byte == '\t');
            EXPECT_NE(byte, 0x7F);
            const auto next =
                static_cast<unsigned char>(place + 1 < shown.size() ? shown[place + 1] : '\xA0');
            EXPECT_TRUE(byte != 0xC2 || next >= 0xA0);
        }
        EXPECT_EQ(shown.find("\xE2\x80\xAE"), shown.npos);
    }
}

}  // namespace
}  // namespace memwright
