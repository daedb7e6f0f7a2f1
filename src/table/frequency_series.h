#pragma once

// Rows that go on from the first one in steps of frequency, with tags that are numbered on or stay
// the same. A step is counted in hundredths of hertz, so that steps such as 8.33333 kHz add up;
// frequencies are rounded to 10 Hz and then take the form that typed ones take. Problems are told
// in UTF-8.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "table/row_arrangement.h"

namespace memwright {

struct FrequencySeries {
    std::int64_t step = 0;  // hundredths of hertz
    bool number_tags = false;
};

// A step typed in kHz: with or without "-", with at most five decimals behind a point or a comma.
// None for any other text. What leads out of every range is counted as 10 GHz.
std::optional<std::int64_t> step_from_text(std::string_view text);

// The tag that is `n` further than this one: the number at its end counted on, at least as wide as
// it was, and before it as much of the text as a tag has room for. A tag without a number stays as
// it is. None if the number alone is longer than a tag.
std::optional<std::string> numbered_on(std::string tag, int n);

struct FilledRows {
    TableRows rows;
    int blocked = 0;      // frequencies that were in a blocked range and are now at its upper edge
    std::string problem;  // why nothing is filled; "" if all is well
};

// Each row after the first gets the frequency that many steps on, the first one's mode and
// preference, and a tag; the other columns stay as they are. `first_row` is the first one's number.
FilledRows filled(TableRows rows, const FrequencySeries& series, int first_row);

}  // namespace memwright
