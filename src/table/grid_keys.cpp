#include "table/grid_keys.h"

#include <algorithm>

#include "image/layout.h"
#include "table/columns.h"

namespace memwright {

using columns::kLabel;
using columns::kPref;
using columns::kTag;

GridKeys::GridKeys(MSFlexGrid& grid, Buttons buttons) : grid_(grid), buttons_(buttons) {
    grid_.key_down = [this](GridKey key, bool shift, int page) {
        return key_down(key, shift, page);
    };
    connections_ = {grid_.current_changed.connect([this] { other_end_ = 0; }),
                    grid_.mouse_up.connect([this](MouseButton, MouseCell cell) {
                        if (in_labels()) other_end_ = cell.row;
                    }),
                    buttons_.move_up.clicked.connect([this] { show_block(false); }),
                    buttons_.move_down.clicked.connect([this] { show_block(true); })};
}

bool GridKeys::in_labels() const { return grid_.Col() == kLabel; }

bool GridKeys::key_down(GridKey key, bool shift, int page) {
    switch (key) {
        case GridKey::left:
        case GridKey::right:
        case GridKey::home:
        case GridKey::end:
            return go_sideways(key);
        case GridKey::mark:
            if (in_labels() && grid_.Row() > 0) mark_to(grid_.Row());
            return in_labels();
        case GridKey::erase:
            if (in_labels() && buttons_.erase.enabled) buttons_.erase.clicked();
            return in_labels();
        case GridKey::move_up:
            return move_block(buttons_.move_up);
        case GridKey::move_down:
            return move_block(buttons_.move_down);
        default:
            return go_along(key, shift, page);
    }
}

bool GridKeys::go_sideways(GridKey key) {
    if (!in_labels()) {
        if (key != GridKey::left || grid_.Col() != kTag || grid_.Row() == 0) return false;
        grid_.set_col(kLabel);
        return true;
    }
    if (grid_.Row() == 0) grid_.set_row(1);
    if (key == GridKey::right) grid_.set_col(kTag);
    if (key == GridKey::end) grid_.set_col(kPref);
    return true;
}

bool GridKeys::go_along(GridKey key, bool shift, int page) {
    const bool between_banks = key == GridKey::previous_bank || key == GridKey::next_bank;
    if (!in_labels() && !between_banks) return false;
    if (shift && in_labels() && grid_.Row() > 0) {
        mark_to(row_after(key, other_end_ > 0 ? other_end_ : grid_.Row(), page));
    } else {
        grid_.set_row(row_after(key, grid_.Row(), page));
    }
    return true;
}

int GridKeys::row_after(GridKey key, int row, int page) const {
    const int last = grid_.Rows() - 1;
    const auto from = [&] {
        switch (key) {
            case GridKey::up:
                return row - 1;
            case GridKey::down:
                return row + 1;
            case GridKey::page_up:
                return row - page;
            case GridKey::page_down:
                return row + page;
            case GridKey::first:
                return 1;
            case GridKey::last:
                return last;
            case GridKey::previous_bank:
                return row_in_bank(row, -1);
            case GridKey::next_bank:
                return row_in_bank(row, 1);
            default:
                return row;
        }
    };
    return std::clamp(from(), std::min(1, last), last);
}

// The memory of the same number some banks further on, or the row itself if there is no such bank.
int GridKeys::row_in_bank(int row, int banks) const {
    const int there = row + banks * layout::kMemoriesPerBank;
    return there >= 1 && there < grid_.Rows() ? there : row;
}

void GridKeys::mark_to(int row) {
    grid_.mouse_up(MouseButton::left, {row, kLabel});
    grid_.rows_wanted(grid_.Row(), row);
}

// Where the keys are goes along with its block, so that they go on there.
bool GridKeys::move_block(const CommandButton& button) {
    const int top = grid_.marked_rows.get().first;
    if (!in_labels() && top == 0) return false;
    if (!button.enabled) return true;
    const int other_end = other_end_;
    const bool along = in_labels() && grid_.is_marked(grid_.Row());
    button.clicked();
    const int by = grid_.marked_rows.get().first - top;
    if (along && by != 0) {
        grid_.set_row(grid_.Row() + by);
        if (other_end > 0) other_end_ = other_end + by;
        show_block(by > 0);
    }
    return true;
}

// The end that goes first is to be seen in any case.
void GridKeys::show_block(bool goes_down) {
    const auto [first, last] = grid_.marked_rows.get();
    if (first == 0) return;
    grid_.rows_wanted(goes_down ? first : last, goes_down ? last : first);
}

}  // namespace memwright
