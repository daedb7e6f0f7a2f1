#pragma once

// Keys on the grid while no editor is open: into the label column and along it, from bank to bank,
// and work on rows. Rows are marked from the current one on, through the same signal as with the
// mouse, and moved and emptied through the buttons.

#include <vector>

#include "controls/controls.h"
#include "table/ms_flex_grid.h"

namespace memwright {

class GridKeys {
  public:
    struct Buttons {
        CommandButton& move_up;
        CommandButton& move_down;
        CommandButton& erase;
    };

    GridKeys(MSFlexGrid& grid, Buttons buttons);
    GridKeys(const GridKeys&) = delete;
    GridKeys& operator=(const GridKeys&) = delete;

  private:
    bool key_down(GridKey key, bool shift, int page);
    bool go_sideways(GridKey key);
    bool go_along(GridKey key, bool shift, int page);
    int row_after(GridKey key, int row, int page) const;
    int row_in_bank(int row, int banks) const;
    void mark_to(int row);
    bool move_block(const CommandButton& button);
    void show_block(bool goes_down);
    bool in_labels() const;

    MSFlexGrid& grid_;
    Buttons buttons_;
    int other_end_ = 0;  // of the rows that are marked from the current one on; 0 for none
    std::vector<Connection> connections_;
};

}  // namespace memwright
