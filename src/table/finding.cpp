#include "table/finding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "base/number_text.h"
#include "table/cell_rules.h"
#include "table/columns.h"

namespace memwright::finding {
namespace {

using namespace columns;

// Tens of hertz, in which every frequency of the table is a whole number.
using Frequency = std::int64_t;
constexpr double kPerMegahertz = 1e5;
constexpr std::size_t kDecimals = 5;
constexpr std::size_t kMostWholeDigits = 9;

struct Frequencies {
    Frequency lowest;
    Frequency highest;
};

// Capitals and small letters of Windows-1252 as one.
constexpr unsigned char folded(unsigned char c) {
    const bool capital = (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    if (capital) return static_cast<unsigned char>(c + 0x20);
    if (c == 0x8A || c == 0x8C || c == 0x8E) return static_cast<unsigned char>(c + 0x10);
    return c == 0x9F ? 0xFF : c;
}

constexpr auto kFolded = [] {
    std::array<unsigned char, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        table[c] = folded(static_cast<unsigned char>(c));
    }
    return table;
}();

bool same_letter(char a, char b) {
    return kFolded[static_cast<unsigned char>(a)] == kFolded[static_cast<unsigned char>(b)];
}

std::size_t position_of(std::string_view text, std::string_view in, std::size_t start = 0) {
    const auto from = in.begin() + static_cast<std::ptrdiff_t>(start);
    const auto found = std::search(from, in.end(), text.begin(), text.end(), same_letter);
    return found == in.end() ? std::string_view::npos
                             : static_cast<std::size_t>(found - in.begin());
}

std::string_view without_blanks_around(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Frequency frequency_of(std::string_view text) {
    constexpr double kMost = 1e12;  // as megahertz: far beyond what a cell holds
    return std::llround(std::min(leading_number(text), kMost) * kPerMegahertz);
}

// A frequency as a whole: digits with at most one point or comma. One that is finer than any in the
// table is none.
std::optional<Frequency> frequency_in(std::string_view query) {
    std::string text(without_blanks_around(query));
    std::ranges::replace(text, ',', '.');
    const auto point = std::min(text.find('.'), text.size());
    const auto last = text.find_last_not_of('0');
    const bool digits = std::ranges::all_of(text, [](char c) { return c == '.' || is_digit(c); });
    if (!digits || std::ranges::count(text, '.') > 1 || !std::ranges::any_of(text, is_digit) ||
        point > kMostWholeDigits || (last != std::string::npos && last > point + kDecimals)) {
        return std::nullopt;
    }
    return frequency_of(text);
}

// What stands on both sides of the only hyphen.
std::optional<std::pair<std::string_view, std::string_view>> pair_in(std::string_view query) {
    const auto hyphen = query.find('-');
    if (hyphen == std::string_view::npos || query.find('-', hyphen + 1) != std::string_view::npos) {
        return std::nullopt;
    }
    return std::pair(without_blanks_around(query.substr(0, hyphen)),
                     without_blanks_around(query.substr(hyphen + 1)));
}

std::optional<int> number_below(int limit, std::string_view digits) {
    if (digits.size() > 2 || !std::ranges::all_of(digits, is_digit)) return std::nullopt;
    const auto number = whole_number(digits);
    return number && *number < limit ? number : std::nullopt;
}

std::optional<int> row_of(std::string_view bank_digits, std::string_view number_digits) {
    const auto bank = number_below(layout::kBanks, bank_digits);
    const auto number = number_below(layout::kMemoriesPerBank, number_digits);
    if (!bank || !number) return std::nullopt;
    return *bank * layout::kMemoriesPerBank + *number + 1;
}

// Takes a word, in either case, off the beginning.
bool take_word(std::string_view word, std::string_view& text) {
    if (text.size() < word.size() ||
        !std::ranges::equal(text.substr(0, word.size()), word, same_letter)) {
        return false;
    }
    text = without_blanks_around(text.substr(word.size()));
    return true;
}

// The distance of the occupied memories that are nearest to a frequency.
Frequency smallest_distance(const MSFlexGrid& grid, Frequency to) {
    auto smallest = std::numeric_limits<Frequency>::max();
    for (int row = 1; row < grid.Rows(); ++row) {
        const Frequency frequency = frequency_of(grid.TextMatrix(row, kFreq));
        if (frequency != 0) smallest = std::min(smallest, std::abs(frequency - to));
    }
    return smallest;
}

// All that a query can mean.
class Query {
  public:
    Query(const MSFlexGrid& grid, std::string_view query)
        : text_(query), word_(without_blanks_around(query)) {
        if (const auto one = frequency_in(word_)) {
            between_ = {*one, *one};
        } else if (word_.starts_with('~')) {
            near_ = frequency_in(word_.substr(1));
            if (near_) distance_ = smallest_distance(grid, *near_);
        } else if (const auto pair = pair_in(word_)) {
            memory_ = row_of(pair->first, pair->second);
            const auto one_end = frequency_in(pair->first);
            const auto other_end = frequency_in(pair->second);
            if (!memory_ && one_end && other_end) {
                between_ = {std::min(*one_end, *other_end), std::max(*one_end, *other_end)};
            }
        }
    }

    // The column of what it finds in a row.
    std::optional<int> found_in(const MSFlexGrid& grid, int row) const {
        if (has_text(grid.TextMatrix(row, kTag), text_) || memory_ == row) return kTag;
        if ((between_ || near_) && is_found(frequency_of(grid.TextMatrix(row, kFreq)))) {
            return kFreq;
        }
        const std::string& mode = grid.TextMatrix(row, kMode);
        const bool of_mode = !mode.empty() && std::ranges::equal(mode, word_, same_letter);
        return of_mode ? std::optional(kMode) : std::nullopt;
    }

  private:
    bool is_found(Frequency frequency) const {
        if (frequency == 0) return false;  // no memory
        if (near_) return std::abs(frequency - *near_) == distance_;
        return frequency >= between_->lowest && frequency <= between_->highest;
    }

    std::string_view text_;
    std::string_view word_;
    std::optional<int> memory_;  // its row
    std::optional<Frequencies> between_;
    std::optional<Frequency> near_;
    Frequency distance_ = 0;
};

// What of a text can be typed into a tag.
std::string typed_into_tag(std::string_view text) {
    constexpr char kBackspace = 8;
    std::string typed;
    for (char character : text) {
        if (character != kBackspace && cell_rules::takes(kTag, typed, character)) {
            typed += character;
        }
    }
    return typed;
}

std::optional<Step> first_or_round(const Finds& finds, Finds::const_iterator found) {
    if (finds.empty()) return std::nullopt;
    if (found == finds.end()) return Step{0, true};
    return Step{static_cast<std::size_t>(found - finds.begin()), false};
}

}  // namespace

Finds finds_of(const MSFlexGrid& grid, std::string_view query) {
    Finds finds;
    if (query.empty()) return finds;
    const Query wanted(grid, query);
    for (int row = 1; row < grid.Rows(); ++row) {
        if (const auto col = wanted.found_in(grid, row)) finds.push_back({row, *col});
    }
    return finds;
}

std::optional<Step> from(const Finds& finds, int row) {
    return first_or_round(finds, std::ranges::lower_bound(finds, row, {}, &Find::row));
}

std::optional<Step> after(const Finds& finds, int row) {
    return first_or_round(finds, std::ranges::upper_bound(finds, row, {}, &Find::row));
}

std::optional<Step> before(const Finds& finds, int row) {
    if (finds.empty()) return std::nullopt;
    const auto found = std::ranges::lower_bound(finds, row, {}, &Find::row);
    if (found == finds.begin()) return Step{finds.size() - 1, true};
    return Step{static_cast<std::size_t>(found - finds.begin()) - 1, false};
}

std::optional<RowRange> block_of(const Finds& finds) {
    if (finds.empty()) return std::nullopt;
    const RowRange rows{finds.front().row, finds.back().row};
    const bool together = static_cast<std::size_t>(rows.last - rows.first) + 1 == finds.size();
    return together ? std::optional(rows) : std::nullopt;
}

bool has_text(std::string_view tag, std::string_view text) {
    return !text.empty() && position_of(text, tag) != std::string_view::npos;
}

std::string with_text_replaced(std::string_view tag, std::string_view text, std::string_view by) {
    if (!has_text(tag, text)) return std::string(tag);
    const std::string put = typed_into_tag(by);
    std::string result;
    std::size_t start = 0;
    for (auto at = position_of(text, tag); at != std::string_view::npos;
         at = position_of(text, tag, start)) {
        result += tag.substr(start, at - start);
        result += put;
        start = at + text.size();
    }
    result += tag.substr(start);
    return cell_rules::kept_text(kTag, std::move(result));
}

std::optional<int> row_of_memory(std::string_view name) {
    std::string_view rest = without_blanks_around(name);
    const bool row_named = take_word("row", rest);
    const bool bank_named = !row_named && take_word("bank", rest);
    if (!row_named) {
        if (const auto pair = pair_in(rest)) return row_of(pair->first, pair->second);
        const auto gap = rest.find(' ');
        if (gap != std::string_view::npos) {
            return row_of(rest.substr(0, gap), without_blanks_around(rest.substr(gap)));
        }
    }
    const auto row = std::ranges::all_of(rest, is_digit) ? whole_number(rest) : std::nullopt;
    return !bank_named && row && *row > 0 && *row < kRows ? row : std::nullopt;
}

}  // namespace memwright::finding
