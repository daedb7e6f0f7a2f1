#pragma once

// A moment of the program's work as bytes: the file that is open, the memory image, every cell of
// the table, and the steps that can be taken back. Files of the first version have no steps.

#include <string>

#include "files/kept_steps.h"
#include "image/memory_image.h"
#include "platform/file_system.h"
#include "table/ms_flex_grid.h"

namespace memwright {

struct Snapshot {
    std::string path;  // of the open file; "" if it has none yet
    std::string when;  // as the user's desktop writes it
    MemoryImage image;
    // Row by row, column by column, without the labels.
    std::vector<std::string> cells;
    KeptSteps history{};

    friend bool operator==(const Snapshot&, const Snapshot&) = default;
};

std::vector<std::string> cells_of(const MSFlexGrid& grid);

// Puts the cells back. The grid has to have the channel table's rows and columns.
void fill_cells(MSFlexGrid& grid, const std::vector<std::string>& cells);

Bytes bytes_of(const Snapshot& snapshot);

// InputError if the bytes are no whole snapshot.
Snapshot snapshot_from(const Bytes& bytes);

}  // namespace memwright
