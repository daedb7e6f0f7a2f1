#include "image/frequency_text.h"

#include <algorithm>

#include "base/number_text.h"
#include "image/blocked_ranges.h"
#include "image/layout.h"

namespace memwright {
namespace {

constexpr std::size_t kKilohertzDigits = 3;
constexpr std::size_t kDecimals = 5;
constexpr std::size_t kIntegerDigits = 3;
constexpr double kHighestMegahertz = 1299;
constexpr std::string_view kNoFrequency = "15FFFFF";

struct Parts {
    std::string integer;
    std::string decimals;
};

// The texts before and after the first point; what follows a second point is dropped.
Parts split_at_point(const std::string& text) {
    const auto point = text.find('.');
    if (point == std::string::npos) return {text, "0"};
    return {text.substr(0, point), text.substr(point + 1, text.find('.', point + 1) - point - 1)};
}

std::string five_decimals(std::string decimals) {
    decimals.resize(kDecimals, '0');
    return decimals;
}

// Packed digits as a decimal number: the hundreds of MHz, one hexadecimal digit, become "0" to
// "15".
std::string with_decimal_hundreds(const std::string& digits) {
    return std::to_string(lLng(digits.substr(0, 1))) + digits.substr(1);
}

}  // namespace

FrequencyDigits digits_from_frequency(std::string& Freq) {
    Freq = shortest_text(leading_number(Freq));
    auto [integer, decimals] = split_at_point(Freq);
    if (integer.size() > kIntegerDigits) {
        const auto hundreds = static_cast<std::uint32_t>(leading_number(integer.substr(0, 2)));
        std::string hex = lHex(hundreds);
        if (hex.front() == '0') hex.erase(0, 1);
        integer = hex + integer.substr(integer.size() - 2);
    }
    decimals = five_decimals(std::move(decimals));
    return {with_leading_zeros(std::move(integer), kIntegerDigits) +
                decimals.substr(0, kKilohertzDigits),
            decimals.substr(kKilohertzDigits)};
}

std::string frequency_from_digits(const std::string& digits, const std::string& fraction) {
    std::string text = with_decimal_hundreds(digits);
    if (text == kNoFrequency) return "";
    text.insert(text.size() - kKilohertzDigits, ".");
    text = shortest_text(leading_number(text));
    if (!fraction.empty()) {
        // Deliberate: the code follows the shortened text, not three kilohertz digits.
        if (text.size() < kIntegerDigits) text.resize(kIntegerDigits, '0');
        text += fraction;
    }
    const auto point = text.find('.');
    if (point == std::string::npos) return text + ".00000";
    text.resize(std::max(text.size(), point + 1 + kDecimals), '0');
    return text;
}

std::string limit_from_digits(const std::string& digits, const std::string& fraction) {
    const std::string text = with_decimal_hundreds(digits);
    if (text == kNoFrequency) return "";
    const std::size_t point = text.size() - kKilohertzDigits;
    // Deliberate: unlike a channel's, these kilohertz are not shortened before the code follows.
    return shortest_text(leading_number(text.substr(0, point))) + "." +
           five_decimals(text.substr(point) + fraction);
}

std::string FormatFreq(std::string& Freq) {
    auto [integer, decimals] = split_at_point(Freq);
    const double megahertz = leading_number(integer);
    if (megahertz > kHighestMegahertz) {
        integer = "1299";
    } else if (megahertz == 0) {
        integer = "0";
    }
    decimals = five_decimals(std::move(decimals));
    const std::string fraction = decimals.substr(kKilohertzDigits);
    if (leading_number(fraction) != 0 && fraction != "25" && fraction != "75" && fraction != "50") {
        decimals.replace(kKilohertzDigits, fraction.size(), "00");
    }
    Freq = integer + "." + decimals;
    return CheckBlocked(Freq);
}

bool is_occupied(const std::string& frequency) { return leading_number(frequency) != 0; }

std::int16_t Mem2Row(const std::string& mem) {
    const std::string digits = with_leading_zeros(mem, 3);
    const double bank = leading_number(digits.substr(0, 1));
    const double number = leading_number(digits.substr(digits.size() - 2));
    return static_cast<std::int16_t>(bank * layout::kMemoriesPerBank + number + 1);
}

}  // namespace memwright
