#pragma once

// The rules of a cell, whatever brings a text into it: which characters a column takes, what
// becomes of a text, and which defaults a row gets along with it. Texts are in the radio's
// character set.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "table/ms_flex_grid.h"

namespace memwright::cell_rules {

// Columns with a list of choices (table/choice_lists.h) are edited in it, the others as text; the
// labels are not edited.
bool is_edited_as_text(int col);

// The most characters that are typed into a text; 0 if that has no limit.
std::size_t most_characters(int col);

// Whether a character may be typed where `text` stands; letters of a tag become capitals. Backspace
// counts as a character.
bool takes(int col, std::string_view text, char& character);

// What of a text that is not typed but inserted as a whole (pasted, dropped) goes into a cell,
// where `around` stands around it: its first line up to a tab, without the blanks at its ends, as
// far as the column takes it. In numbers a decimal comma is a point.
std::string pasted_text(int col, std::string_view text, std::string_view around = {});

// What of a text stays in the box that it is typed into.
std::string kept_text(int col, std::string text);

// What the cell then holds: of "Freq" the frequency in its usual form, out of the blocked ranges.
std::string cell_text(int col, std::string text);

// Gives a row without a mode what a memory has that gets its frequency: typed in, or copied from
// another memory.
void add_defaults_of_typed_frequency(MSFlexGrid& grid, int row);
void add_defaults_of_copied_frequency(MSFlexGrid& grid, int row);

}  // namespace memwright::cell_rules
