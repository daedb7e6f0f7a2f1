#pragma once

// What a command has changed: of the cells of the grid, of the bytes of the memory image, and of
// the current cell and the marked rows. An edit says what was there before and what is there now,
// and nothing of what stayed as it was, so its size is that of the change. Numbers of rows and
// columns, widths and heights are no part of it: the channel table's are always the same.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "table/ms_flex_grid.h"

namespace memwright {

struct Edit {
    struct Cell {
        int row;
        int col;
        GridCell before;
        GridCell after;

        friend bool operator==(const Cell&, const Cell&) = default;
    };
    struct Byte {
        std::uint16_t offset;  // in the image
        std::uint8_t before;
        std::uint8_t after;

        friend bool operator==(const Byte&, const Byte&) = default;
    };
    struct Selection {
        int row;  // of the current cell
        int col;
        RowRange marked;

        friend bool operator==(const Selection&, const Selection&) = default;
    };

    std::string command;      // what changed it; "" if it was no command
    std::vector<Cell> cells;  // by row and column
    std::vector<Byte> bytes;  // by offset
    Selection selected_before;
    Selection selected_after;

    bool changes_content() const { return !cells.empty() || !bytes.empty(); }
    bool is_empty() const { return !changes_content() && selected_before == selected_after; }

    // The edit that takes this one back.
    Edit inverse() const;

    // The edit that does what this one and then what the next one does, under this one's name.
    Edit then(const Edit& next) const;

    friend bool operator==(const Edit&, const Edit&) = default;
};

}  // namespace memwright
