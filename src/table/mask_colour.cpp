#include "table/mask_colour.h"

#include "table/columns.h"

namespace memwright {

void colour_by_mask(MSFlexGrid& grid, int row) {
    constexpr Colour kMaskedColour = 0xC0C0C0;
    const Colour colour = grid.TextMatrix(row, columns::kMasked) == "True" ? kMaskedColour : 0;
    for (int col = columns::kTag; col < grid.Cols(); ++col) grid.set_colour(row, col, colour);
}

}  // namespace memwright
