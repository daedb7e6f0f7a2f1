#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/error.h"

namespace memwright {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::size_t kDigitsPerGroup = 4;
constexpr std::array<std::string_view, 16> kGroups = {
    "0000", "0001", "0010", "0011", "0100", "0101", "0110", "0111",
    "1000", "1001", "1010", "1011", "1100", "1101", "1110", "1111"};

// The value of a hexadecimal digit, or -1.
constexpr int digit_value(char c) {
    if (is_digit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

std::string lower_case(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

std::string lHex(std::uint32_t lNumber) {
    constexpr std::size_t kMost = 8;
    constexpr std::size_t kLeast = 2;
    std::array<char, kMost> digits{};
    std::size_t first = kMost;
    while (lNumber != 0 || first > kMost - kLeast) {
        digits[--first] = kHexDigits[lNumber % 16];
        lNumber /= 16;
    }
    return {digits.data() + first, kMost - first};
}

std::int32_t lLng(std::string_view HexNumber) {
    std::uint32_t number = 0;
    const char* const end = HexNumber.data() + HexNumber.size();
    const auto [stop, error] = std::from_chars(HexNumber.data(), end, number, 16);
    if (error != std::errc{} || stop != end) {
        throw ConversionError("\"" + std::string(HexNumber) + "\" is no hexadecimal number.");
    }
    return static_cast<std::int32_t>(number);
}

std::string Hex2Bin(std::string_view hex) {
    std::string bin;
    std::string_view group;
    for (const char digit : hex) {
        const int value = digit_value(digit);
        // Deliberate: an unknown character repeats the group before it.
        if (value >= 0) group = kGroups[static_cast<std::size_t>(value)];
        bin += group;
    }
    return bin;
}

std::string Bin2Hex(std::string_view bin) {
    std::string hex;
    std::string_view digit;
    for (; !bin.empty(); bin.remove_prefix(std::min(kDigitsPerGroup, bin.size()))) {
        const auto group = std::ranges::find(kGroups, bin.substr(0, kDigitsPerGroup));
        // Deliberate: an unknown slice, a short last one too, repeats the digit before it.
        if (group != kGroups.end()) {
            digit = kHexDigits.substr(static_cast<std::size_t>(group - kGroups.begin()), 1);
        }
        hex += digit;
    }
    return hex;
}

std::string Bin2Dec(std::string_view bin) { return std::to_string(lLng(Bin2Hex(bin))); }

double leading_number(std::string_view text) {
    std::size_t length = 0;
    bool point_seen = false;
    while (length < text.size() &&
           (is_digit(text[length]) || (text[length] == '.' && !point_seen))) {
        point_seen = point_seen || text[length] == '.';
        ++length;
    }
    double number = 0;
    const auto [stop, error] =
        std::from_chars(text.data(), text.data() + length, number, std::chars_format::fixed);
    if (error == std::errc::result_out_of_range) {
        // Too large if a digit other than 0 stands before the point, else too small.
        const bool huge = text[text.find_first_not_of('0')] != '.';
        return huge ? std::numeric_limits<double>::max() : 0;
    }
    return number;
}

std::string shortest_text(double number) {
    std::array<char, std::numeric_limits<double>::max_exponent10 + 32> text{};
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc{}) throw ConversionError("A number is too long to be written out.");
    return {text.data(), end};
}

std::string with_leading_zeros(std::string text, std::size_t length) {
    if (text.size() < length) text.insert(0, length - text.size(), '0');
    return text;
}

std::optional<int> whole_number(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

bool boolean_from_text(const std::string& text) {
    const std::string word = lower_case(text);
    if (word == "true") return true;
    if (word == "false") return false;
    return number_from_text(text) != 0;
}

int integer_from_text(const std::string& text) {
    const double number = std::nearbyint(number_from_text(text));
    if (number < std::numeric_limits<std::int16_t>::min() ||
        number > std::numeric_limits<std::int16_t>::max()) {
        throw ConversionError("\"" + text + "\" does not fit in 16 bits: -32768 to 32767.");
    }
    return static_cast<int>(number);
}

double number_from_text(const std::string& text) {
    std::string_view digits = text;
    // The standard library reads no plus sign.
    if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
    double number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] =
        std::from_chars(digits.data(), end, number, std::chars_format::general);
    if (error != std::errc{} || stop != end || !std::isfinite(number)) {
        throw ConversionError("\"" + text + "\" is no number.");
    }
    return number;
}

}  // namespace memwright
