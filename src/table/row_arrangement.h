#pragma once

// What becomes of whole rows of the channel table that are inserted, closed up, sorted, set or
// moved. Rows are values with all that goes along with a memory: the texts and colours of columns 1
// to 14. An empty one is a row without a frequency, as channel_table.h has it. Texts of cells are
// in the radio's character set, problems in UTF-8.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "table/columns.h"
#include "table/ms_flex_grid.h"

namespace memwright {

struct TableRow {
    std::array<GridCell, columns::kCount - columns::kTag> cells;

    // `col` as in the table: 1 to 14.
    GridCell& at(int col) { return cells.at(static_cast<std::size_t>(col - columns::kTag)); }
    const GridCell& at(int col) const {
        return cells.at(static_cast<std::size_t>(col - columns::kTag));
    }
    const std::string& text(int col) const { return at(col).text; }
    bool is_empty() const;

    friend bool operator==(const TableRow&, const TableRow&) = default;
};

using TableRows = std::vector<TableRow>;

// The first empty one's place; none if all are occupied.
std::optional<int> first_empty(const TableRows& rows);

// All go one down: the first becomes empty, and the last, which is an empty one, drops out.
TableRows with_first_inserted(TableRows rows);

// The occupied ones without gaps, in their order, and then the empty ones in theirs.
TableRows closed_up(TableRows rows);

enum class SortKey {
    frequency,  // as numbers
    tag,        // by the codes of the characters; no tag comes last, blanks at the end do not count
    mode        // in the order of the mode's list of choices; any other comes last
};

// The occupied ones by their keys, those with equal keys in their order; then the empty ones.
TableRows sorted(TableRows rows, SortKey key);

// The occupied ones have this text in a column, the others stay as they are.
TableRows with_text(TableRows rows, int col, const std::string& text);

// A block of rows goes to another place of the table.
struct RowMove {
    enum class Kind {
        swap,      // what is there comes to where the block was
        overwrite  // what is there is lost, and empty rows are left where the block was
    };

    RowRange block;
    int to = 0;  // the row that the first one comes to
    Kind kind = Kind::swap;

    RowRange target() const { return {to, to + block.last - block.first}; }

    // Overlapping places cannot be swapped. If the block is to overwrite, the rows between slide
    // over to its other side, and nothing is lost.
    bool overlaps() const { return to <= block.last && block.first <= target().last; }

    // All that it may change.
    RowRange extent() const;

    // Why it cannot be done; "" if it can.
    std::string problem() const;
};

// The rows of the move's extent after it.
TableRows moved(TableRows extent, const RowMove& move);

}  // namespace memwright
