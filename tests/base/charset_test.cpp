#include "base/charset.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>

namespace memwright {
namespace {

using namespace std::string_literals;

// The characters of 0x80 to 0x9F that are not those of the same number.
const std::map<int, char32_t> kOwn = {
    {0x80, U'€'}, {0x82, U'‚'}, {0x83, U'ƒ'}, {0x84, U'„'}, {0x85, U'…'}, {0x86, U'†'},
    {0x87, U'‡'}, {0x88, U'ˆ'}, {0x89, U'‰'}, {0x8A, U'Š'}, {0x8B, U'‹'}, {0x8C, U'Œ'},
    {0x8E, U'Ž'}, {0x91, U'‘'}, {0x92, U'’'}, {0x93, U'“'}, {0x94, U'”'}, {0x95, U'•'},
    {0x96, U'–'}, {0x97, U'—'}, {0x98, U'˜'}, {0x99, U'™'}, {0x9A, U'š'}, {0x9B, U'›'},
    {0x9C, U'œ'}, {0x9E, U'ž'}, {0x9F, U'Ÿ'}};

std::string every_byte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

TEST(Charset, every_byte_has_its_character) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto own = kOwn.find(byte);
        const char32_t wanted = own == kOwn.end() ? static_cast<char32_t>(byte) : own->second;
        EXPECT_EQ(character_from_radio(static_cast<unsigned char>(byte)), wanted) << byte;
    }
}

TEST(Charset, every_character_that_the_radio_has_gives_its_byte) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto own = kOwn.find(byte);
        const char32_t given = own == kOwn.end() ? static_cast<char32_t>(byte) : own->second;
        EXPECT_EQ(radio_from_character(given), byte);
    }
}

TEST(Charset, of_all_other_characters_the_radio_has_none) {
    int known = 0;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (radio_from_character(character) >= 0) ++known;
    }
    EXPECT_EQ(known, 256);
    EXPECT_EQ(radio_from_character(0x80), -1);
    EXPECT_EQ(radio_from_character(0x9F), -1);
    EXPECT_EQ(radio_from_character(0x100), -1);
}

TEST(Charset, every_byte_survives_the_way_to_utf8_and_back) {
    const std::string utf8 = utf8_from_radio(every_byte());
    const auto three_bytes =
        std::ranges::count_if(kOwn, [](const auto& own) { return own.second >= 0x800; });
    EXPECT_EQ(utf8.size(), 256U + 128U + static_cast<std::size_t>(three_bytes));
    EXPECT_EQ(radio_from_utf8(utf8), every_byte());
}

TEST(Charset, utf8_is_written_in_one_two_and_three_bytes) {
    EXPECT_EQ(utf8_from_radio("A\xE9\x80"), "A\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(utf8_from_radio("\x81\0\x7F"s), "\xC2\x81\0\x7F"s);
    EXPECT_EQ(utf8_from_radio(""), "");
}

TEST(Charset, a_character_that_the_radio_does_not_have_becomes_a_question_mark) {
    EXPECT_EQ(radio_from_utf8("aЖb"), "a?b");
    EXPECT_EQ(radio_from_utf8("\xF0\x9F\x93\xBB"), "?");
}

TEST(Charset, bytes_that_are_no_utf8_become_question_marks) {
    const std::array<std::pair<std::string, std::string>, 12> cases = {{
        {"\x80", "?"},              // a second byte without a first
        {"\xBF\x41", "?A"},         //
        {"\xC3", "?"},              // cut short
        {"\xE2\x82", "?"},          //
        {"\xC3\x41", "?A"},         // what follows is not lost
        {"\xE2\x82\x41", "?A"},     //
        {"\xFF\x41", "?A"},         // no first byte
        {"\xC1\x81", "?"},          // longer than "A" needs
        {"\xE0\x81\x81", "?"},      //
        {"\xF0\x80\x81\x81", "?"},  //
        {"\xF9\x81\x81\x81", "????"},
        {"\xF8\x41", "?A"},  //
    }};
    for (const auto& [utf8, radio] : cases) {
        EXPECT_EQ(radio_from_utf8(utf8), radio) << testing::PrintToString(utf8);
    }
}

}  // namespace
}  // namespace memwright
