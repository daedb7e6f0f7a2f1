#pragma once

// Places of cells without a screen: rows and columns stand side by side in the grid's own sizes,
// scrolled just so far that the cell which was last shown is in sight.

#include <algorithm>
#include <optional>
#include <vector>

#include "table/cell_editor.h"

namespace memwright::fakes {

class FakeCellPlaces final : public CellPlaces {
  public:
    const MSFlexGrid* grid = nullptr;
    std::optional<Place> fixed;    // if set, where every cell is
    std::vector<MouseCell> shown;  // the cells that were to be scrolled into sight
    int first_row = 1;             // the first in sight below the headings

    bool has_room = true;          // for a whole cell

    bool show_cell() override {
        constexpr int kRowsInSight = 10;
        shown.push_back({grid->Row(), grid->Col()});
        first_row = std::clamp(first_row, grid->Row() - kRowsInSight + 1, grid->Row());
        return has_room;
    }

    Place current_cell() override {
        if (fixed) return *fixed;
        Place place;
        for (int col = 0; col < grid->Col(); ++col) place.left += grid->ColWidth(col);
        place.width = grid->ColWidth(grid->Col());
        place.height = grid->RowHeight(grid->Row());
        place.top = place.height * (grid->Row() - first_row + 1);
        return place;
    }
};

}  // namespace memwright::fakes
