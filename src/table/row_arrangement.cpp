#include "table/row_arrangement.h"

#include <algorithm>

#include "base/number_text.h"
#include "image/frequency_text.h"
#include "table/choice_lists.h"

namespace memwright {
namespace {

using namespace columns;

bool is_occupied_row(const TableRow& row) { return !row.is_empty(); }

std::string without_blanks_at_end(std::string text) {
    while (text.ends_with(' ')) text.pop_back();
    return text;
}

bool tag_before(const TableRow& a, const TableRow& b) {
    const std::string first = without_blanks_at_end(a.text(kTag));
    const std::string second = without_blanks_at_end(b.text(kTag));
    if (first.empty() || second.empty()) return second.empty() && !first.empty();
    // Texts compare by the codes of their characters, as unsigned numbers.
    return first < second;
}

std::ptrdiff_t place_in_list(const std::string& mode) {
    const auto& modes = choices_of(kMode);
    return std::ranges::find(modes, mode) - modes.begin();
}

bool before(const TableRow& a, const TableRow& b, SortKey key) {
    switch (key) {
        case SortKey::frequency:
            return leading_number(a.text(kFreq)) < leading_number(b.text(kFreq));
        case SortKey::tag:
            return tag_before(a, b);
        case SortKey::mode:
            break;
    }
    return place_in_list(a.text(kMode)) < place_in_list(b.text(kMode));
}

}  // namespace

bool TableRow::is_empty() const { return !is_occupied(text(kFreq)); }

std::optional<int> first_empty(const TableRows& rows) {
    const auto found = std::ranges::find_if(rows, &TableRow::is_empty);
    if (found == rows.end()) return std::nullopt;
    return static_cast<int>(found - rows.begin());
}

TableRows with_first_inserted(TableRows rows) {
    if (rows.empty()) return rows;
    rows.pop_back();
    rows.insert(rows.begin(), TableRow{});
    return rows;
}

TableRows closed_up(TableRows rows) {
    std::stable_partition(rows.begin(), rows.end(), is_occupied_row);
    return rows;
}

TableRows sorted(TableRows rows, SortKey key) {
    const auto empty = std::stable_partition(rows.begin(), rows.end(), is_occupied_row);
    std::stable_sort(rows.begin(), empty,
                     [key](const TableRow& a, const TableRow& b) { return before(a, b, key); });
    return rows;
}

TableRows with_text(TableRows rows, int col, const std::string& text) {
    for (TableRow& row : rows) {
        if (!row.is_empty()) row.at(col).text = text;
    }
    return rows;
}

RowRange RowMove::extent() const {
    return {std::min(block.first, to), std::max(block.last, target().last)};
}

std::string RowMove::problem() const {
    if (target().last >= kRows) {
        const int most = kRows - to;
        return "Only " + std::to_string(most) + (most == 1 ? " row is" : " rows are") +
               " left from there to the end of the table.";
    }
    if (to == block.first) return "The rows are there already.";
    if (kind == Kind::swap && overlaps()) {
        return "The rows overlap with those that they would be swapped with.";
    }
    return "";
}

TableRows moved(TableRows extent, const RowMove& move) {
    const auto place_of = [&](int row) { return extent.begin() + (row - move.extent().first); };
    const auto block = place_of(move.block.first);
    const auto behind_block = place_of(move.block.last + 1);
    const auto target = place_of(move.to);
    if (move.overlaps()) {
        if (move.to < move.block.first) {
            std::rotate(target, block, behind_block);
        } else {
            std::rotate(block, behind_block, place_of(move.target().last + 1));
        }
        return extent;
    }
    std::swap_ranges(block, behind_block, target);
    if (move.kind == RowMove::Kind::overwrite) std::fill(block, behind_block, TableRow{});
    return extent;
}

}  // namespace memwright
