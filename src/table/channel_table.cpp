#include "table/channel_table.h"

#include <numeric>
#include <string>

#include "image/frequency_text.h"
#include "table/columns.h"
#include "table/mask_colour.h"

namespace memwright {
namespace {

using namespace columns;

constexpr int kAlignLeft = 1;

// Calls `visit` with the bank, the number and the row of every memory, in the table's order.
template <class Visit>
void for_each_memory(Visit visit) {
    int row = 0;
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        for (int number = 0; number < layout::kMemoriesPerBank; ++number) {
            visit(bank, number, ++row);
        }
    }
}

}  // namespace

void ChannelTable::initgrid() {
    const MSFlexGrid::Batch batch(grid_);
    grid_.Clear();
    grid_.set_cols(kCount);
    for (int col = 0; col < kCount; ++col) {
        grid_.set_col_width(col, kColumns[static_cast<std::size_t>(col)].width);
    }
    grid_.set_rows(kRows);
    for_each_memory([&](int bank, int number, int row) {
        grid_.set_text(row, kLabel, memory_name(bank, number));
    });
    for (int row = 0; row < grid_.Rows(); ++row) grid_.set_row_height(row, kRowHeight);
    for (int col = 0; col < kCount; ++col) {
        grid_.set_text(0, col, kColumns[static_cast<std::size_t>(col)].heading);
        grid_.set_col_alignment(col, kAlignLeft);
    }
}

void ChannelTable::ParseVR120Data() {
    const MSFlexGrid::Batch batch(grid_);
    initgrid();
    for_each_memory([&](int bank, int number, int row) {
        std::string frequency = store_.GetMemFreq(bank, number);
        if (!is_occupied(frequency)) return;
        grid_.set_text(row, kFreq, std::move(frequency));
        grid_.set_text(row, kTag, store_.GetMemTag(bank, number));
        grid_.set_text(row, kMode, store_.GetMode(bank, number));
        grid_.set_text(row, kPref, store_.GetPref(bank, number));
        grid_.set_text(row, kStep, store_.GetMemByte(bank, number));
    });
}

void ChannelTable::SaveVR120Data() {
    if (!mnuSaveOnly_.enabled) return;
    for_each_memory([&](int bank, int number, int row) {
        std::string frequency = grid_.TextMatrix(row, kFreq);
        if (!is_occupied(frequency)) {
            store_.ClearMem(bank, number);
            return;
        }
        // Deliberate: "Step" shows the flags byte, but it is rebuilt from the other fields alone.
        store_.SetMemByte(bank, number, 0);
        store_.SetMemFreq(bank, number, frequency);
        store_.SetMemTag(bank, number, grid_.TextMatrix(row, kTag));
        store_.SetMode(bank, number, grid_.TextMatrix(row, kMode));
        store_.SetPref(bank, number, grid_.TextMatrix(row, kPref));
    });
}

void ChannelTable::MaskColor() {
    // Deliberate: the rows below are never recoloured here.
    constexpr int kLastRow = 240;
    const int row = grid_.Row();
    const int col = grid_.Col();
    grid_.set_redraw(false);
    for (int r = 1; r <= kLastRow; ++r) colour_by_mask(grid_, r);
    grid_.set_row(row);
    grid_.set_col(col);
    grid_.set_redraw(true);
}

void ChannelTable::MaskColorBOLD(int tmpr) {
    grid_.set_redraw(false);
    grid_.set_row(tmpr);
    colour_by_mask(grid_, tmpr);
    // Deliberate: the current cell is not restored.
    grid_.set_col(grid_.Cols() - 1);
    grid_.set_redraw(true);
}

void ChannelTable::SetChangeCheck() { ChangeCheckSum_ = byte_sum(); }

bool ChannelTable::IsDataChanged() {
    SaveVR120Data();
    // Deliberate: a plain sum, so memories that swapped places count as unchanged.
    return byte_sum() != ChangeCheckSum_;
}

std::int32_t ChannelTable::byte_sum() const {
    const auto bytes = store_.MemoryImage.bytes();
    return std::accumulate(bytes.begin(), bytes.end(), std::int32_t{0});
}

}  // namespace memwright
