#pragma once

// Finding memories in the channel table. A query may mean several things, and all that it can mean
// counts together, a row once: "AM" is a mode and a text in tags, "12" a frequency and a text in
// tags. An empty query finds nothing. Queries and tags are in the radio's character set.
//
//   abc        text in tags, in either case
//   nfm        the mode, in either case
//   145.5      the frequency 145.50000; with a decimal comma, too
//   145.5-146  frequencies from the one to the other, both included
//   ~145.5     the occupied memories that are nearest to the frequency
//   3-17       memory 17 of bank 3; a pair that is no memory is a range of frequencies

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "table/ms_flex_grid.h"

namespace memwright::finding {

// A row that was found, and the column of what was found in it.
struct Find {
    int row;
    int col;

    friend bool operator==(const Find&, const Find&) = default;
};

// In the order of the rows.
using Finds = std::vector<Find>;

Finds finds_of(const MSFlexGrid& grid, std::string_view query);

// One of the finds, and whether it was reached past the end of the table.
struct Step {
    std::size_t number;
    bool round;

    friend bool operator==(const Step&, const Step&) = default;
};

// The first find from a row on, after it, or before it, going round; none without a find.
std::optional<Step> from(const Finds& finds, int row);
std::optional<Step> after(const Finds& finds, int row);
std::optional<Step> before(const Finds& finds, int row);

// The rows of the finds, if there are any and they follow one another.
std::optional<RowRange> block_of(const Finds& finds);

// Whether the text is in a tag, in either case. No tag has an empty text.
bool has_text(std::string_view tag, std::string_view text);

// The tag with each occurrence of the text replaced by another one, of which it takes what can be
// typed into a tag; cut at the end to what a tag holds. What is not replaced stays as it was.
std::string with_text_replaced(std::string_view tag, std::string_view text, std::string_view by);

// The row of a memory that is named by its bank and number, "3-17", "3 17" or "Bank 3 - 17", or by
// its row, "210" or "row 210".
std::optional<int> row_of_memory(std::string_view name);

}  // namespace memwright::finding
