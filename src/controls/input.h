#pragma once

// Keys and mouse buttons as the controls' event procedures know them.

namespace memwright {

enum class Key { tab, enter, up, down, left, right, other };

// Keys on a grid, by what they are for there: Ctrl with Home is first, with Page Up previous_bank.
enum class GridKey {
    left,
    right,
    up,
    down,
    page_up,
    page_down,
    home,
    end,
    first,
    last,
    previous_bank,
    next_bank,
    mark,
    erase,
    move_up,
    move_down
};

enum class MouseButton { left = 1, right = 2, other = 4 };

}  // namespace memwright
