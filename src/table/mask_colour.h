#pragma once

#include "table/ms_flex_grid.h"

namespace memwright {

// Colours a row's cells, its label excepted, by its "Masked" text: light grey for exactly "True",
// else the user's own text colour.
void colour_by_mask(MSFlexGrid& grid, int row);

}  // namespace memwright
