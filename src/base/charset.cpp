#include "base/charset.h"

#include <algorithm>
#include <array>

namespace memwright {
namespace {

constexpr unsigned char kFirstOwn = 0x80;

// Codes 0x80 to 0x9F; all others are the characters of the same number.
constexpr std::array<char32_t, 32> kOwnCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void append_utf8(std::string& text, char32_t c) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

}  // namespace

char32_t character_from_radio(unsigned char byte) {
    const std::size_t own = static_cast<std::size_t>(byte) - kFirstOwn;
    return byte >= kFirstOwn && own < kOwnCharacters.size() ? kOwnCharacters[own] : byte;
}

int radio_from_character(char32_t character) {
    const auto own = std::ranges::find(kOwnCharacters, character);
    if (own != kOwnCharacters.end()) {
        return kFirstOwn + static_cast<int>(own - kOwnCharacters.begin());
    }
    if (character < kFirstOwn) return static_cast<int>(character);
    if (character >= kFirstOwn + kOwnCharacters.size() && character <= 0xFF) {
        return static_cast<int>(character);
    }
    return -1;
}

std::optional<char32_t> take_character(std::string_view& text) {
    // The lowest character that needs so many bytes after the first.
    constexpr std::array<char32_t, 4> kLowest = {0, 0x80, 0x800, 0x10000};
    constexpr char32_t kFirstSurrogate = 0xD800, kLastSurrogate = 0xDFFF, kLast = 0x10FFFF;
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) return first;
    if (first < 0xC0 || first >= 0xF8) return std::nullopt;
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    char32_t c = first & (0x3F >> more);
    for (std::size_t i = 0; i < more; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0) != 0x80) {
            return std::nullopt;
        }
        c = (c << 6) | (static_cast<unsigned char>(text.front()) & 0x3F);
        text.remove_prefix(1);
    }
    const bool none =
        c < kLowest[more] || c > kLast || (c >= kFirstSurrogate && c <= kLastSurrogate);
    return none ? std::nullopt : std::optional(c);
}

std::string utf8_from_radio(std::string_view text) {
    std::string utf8;
    for (const char byte : text) {
        append_utf8(utf8, character_from_radio(static_cast<unsigned char>(byte)));
    }
    return utf8;
}

std::string radio_from_utf8(std::string_view text) {
    std::string radio;
    while (!text.empty()) {
        const auto character = take_character(text);
        const int byte = character ? radio_from_character(*character) : -1;
        radio += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return radio;
}

}  // namespace memwright
