#pragma once

// What a step of the history is called where the user reads it, as "Move rows 5-7 down".

#include <string>

#include "table/edit.h"

namespace memwright {

// Rows of the table as "row 5" or "rows 5-7". The headings, row 0, do not count.
std::string rows_text(const RowRange& rows);

std::string name_of(const Edit& step);

}  // namespace memwright
