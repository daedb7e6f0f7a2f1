#include "platform/settings_store.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "base/error.h"

namespace memwright {
namespace {

std::string lower_case(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

}  // namespace

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

std::string text_from_number(double number) {
    std::array<char, std::numeric_limits<double>::max_exponent10 + 32> text{};
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc{}) throw ConversionError("A number is too long to be written out.");
    return {text.data(), end};
}

}  // namespace memwright
