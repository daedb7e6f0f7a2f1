#pragma once

// A grid as it is printed: all of its rows, and the columns that are seen, as a drawing.

#include "platform/picture.h"
#include "table/ms_flex_grid.h"

namespace memwright {

// The headings of row 0 are shaded, and so are the cells of the first `fixed_cols` columns. No cell
// is shown as the current one.
Picture picture_of(const MSFlexGrid& grid, int fixed_cols);

}  // namespace memwright
