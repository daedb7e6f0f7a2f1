#include "table/frequency_series.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "image/frequency_text.h"

namespace memwright {
namespace {

using namespace columns;

constexpr std::size_t kStepDecimals = 5;
constexpr std::int64_t kMostStep = 1'000'000'000'000;  // 10 GHz
constexpr std::int64_t kTensOfHertz = 1000;            // hundredths of hertz in ten hertz
constexpr std::int64_t kMegahertz = 100'000;           // tens of hertz
// A typed frequency of this or more is not kept as it is (FormatFreq).
constexpr std::int64_t kTooHigh = 1300 * kMegahertz;

std::string row_text(int row) { return "Row " + std::to_string(row); }

std::string frequency_text(std::int64_t tens_of_hertz) {
    return std::to_string(tens_of_hertz / kMegahertz) + "." +
           with_leading_zeros(std::to_string(tens_of_hertz % kMegahertz), kStepDecimals);
}

std::int64_t rounded_to_tens(std::int64_t hundredths) {
    return (hundredths + kTensOfHertz / 2) / kTensOfHertz;
}

}  // namespace

std::optional<std::int64_t> step_from_text(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative) text.remove_prefix(1);
    const auto point = std::min(text.find_first_of(".,"), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    if (whole.empty() && decimals.empty()) return std::nullopt;
    if (decimals.size() > kStepDecimals) return std::nullopt;
    std::string digits(whole);
    digits += decimals;
    digits.append(kStepDecimals - decimals.size(), '0');
    if (!std::ranges::all_of(digits, is_digit)) return std::nullopt;
    std::int64_t step = 0;
    for (const char digit : digits) step = std::min(10 * step + (digit - '0'), kMostStep);
    return negative ? -step : step;
}

std::optional<std::string> numbered_on(std::string tag, int n) {
    while (tag.ends_with(' ')) tag.pop_back();
    const auto text_end = std::find_if_not(tag.rbegin(), tag.rend(), is_digit).base();
    const std::string text(tag.begin(), text_end);
    const std::string number(text_end, tag.end());
    if (number.empty()) return tag;
    if (number.size() > layout::kLabelSize) return std::nullopt;
    const std::string next =
        with_leading_zeros(std::to_string(*whole_number(number) + n), number.size());
    if (next.size() > layout::kLabelSize) return std::nullopt;
    return text.substr(0, layout::kLabelSize - next.size()) + next;
}

FilledRows filled(TableRows rows, const FrequencySeries& series, int first_row) {
    if (rows.empty()) return {};
    const auto problem = [&](int n, const std::string& text) {
        return FilledRows{.rows = {}, .problem = row_text(first_row + n) + " would get " + text};
    };
    FilledRows result;
    const TableRow first = rows.front();
    const std::int64_t start = std::llround(leading_number(first.text(kFreq)) * kMegahertz);
    for (int n = 1; n < static_cast<int>(rows.size()); ++n) {
        const std::int64_t exact = start * kTensOfHertz + n * series.step;
        if (exact <= 0) return problem(n, "a frequency of 0 or less.");
        if (rounded_to_tens(exact) >= kTooHigh) return problem(n, "1300 MHz or more.");
        std::string typed = frequency_text(rounded_to_tens(exact));
        const std::string frequency = FormatFreq(typed);
        if (!is_occupied(frequency)) return problem(n, "a frequency of 0 or less.");
        if (frequency != typed) ++result.blocked;
        const auto tag = series.number_tags ? numbered_on(first.text(kTag), n) : first.text(kTag);
        if (!tag) return problem(n, "a tag with more than 6 digits.");
        TableRow& row = rows[static_cast<std::size_t>(n)];
        row.at(kFreq).text = frequency;
        row.at(kTag).text = *tag;
        row.at(kMode).text = first.text(kMode);
        row.at(kPref).text = first.text(kPref);
    }
    result.rows = std::move(rows);
    return result;
}

}  // namespace memwright
