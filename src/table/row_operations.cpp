#include "table/row_operations.h"

#include <algorithm>

#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;

std::size_t field_of(int col) { return static_cast<std::size_t>(col - kTag); }

}  // namespace

void RowOperations::MSFlexGrid1_MouseUp(MouseButton button, MouseCell under_mouse) {
    if (grid_.Col() == kLabel) {
        select(std::min(grid_.Row(), under_mouse.row), std::max(grid_.Row(), under_mouse.row));
        return;
    }
    if (button != MouseButton::left) return;
    grid_.set_col(under_mouse.col);
    grid_.set_row(under_mouse.row);
    editor_.PickedText = grid_.Text();
    editor_.PickedCol = static_cast<std::int16_t>(grid_.Col());
}

void RowOperations::select(int top, int bottom) { grid_.marked_rows = RowRange{top, bottom}; }

void RowOperations::CutCopy() {
    RowBuffer_.clear();
    for (int row = std::max<int>(SelTop(), 1); row <= SelBottom(); ++row) {
        Record record;
        // Deliberate: the hidden columns are not copied.
        for (int col = kTag; col <= kPref; ++col)
            record[field_of(col)] = grid_.TextMatrix(row, col);
        RowBuffer_.push_back(record);
    }
}

void RowOperations::mnuEdit_Click() {
    const bool selected = SelTop() != 0;
    for (MenuEntry* entry : {&menu_.mnuCut, &menu_.mnuCopy, &menu_.mnuPaste}) {
        entry->enabled = selected;
    }
}

void RowOperations::mnuCut_Click() {
    const MSFlexGrid::Batch batch(grid_);
    CutCopy();
    clear_rows();
    table_.MaskColor();
    grid_.set_col(kTag);
}

bool RowOperations::may_overwrite(int first, int last) {
    bool occupied = false;
    for (int row = first; row <= last; ++row) {
        occupied = occupied || !grid_.TextMatrix(row, kTag).empty() ||
                   !grid_.TextMatrix(row, kFreq).empty();
    }
    if (!occupied) return true;
    return messages_.show({.text = "There is already data in the cells to be pasted to. Overwrite?",
                           .title = "Memwright",
                           .buttons = Buttons::yes_no,
                           .icon = Icon::question}) == Answer::yes;
}

void RowOperations::mnuPaste_Click() {
    const int first = grid_.Row();
    if (first == 0) return;  // the headings are no memory
    const int rows = static_cast<int>(RowBuffer_.size());
    const int last = std::min(first + rows - 1, grid_.Rows() - 1);
    if (!may_overwrite(first, last)) return;
    const MSFlexGrid::Batch batch(grid_);
    write_buffer(first);
    table_.MaskColor();
    if (last >= first) select(first, last);
}

void RowOperations::Command1_Click() {
    if (SelTop() == 0) return;
    CutCopy();
    if (SelBottom() > grid_.Rows() - 2) return;
    const MSFlexGrid::Batch batch(grid_);
    copy_visible_fields(SelBottom() + 1, SelTop());
    write_buffer(SelTop() + 1);
    select(SelTop() + 1, SelBottom() + 1);
}

void RowOperations::Command2_Click() {
    CutCopy();
    if (SelTop() < 2) return;
    const MSFlexGrid::Batch batch(grid_);
    copy_visible_fields(SelTop() - 1, SelBottom());
    write_buffer(SelTop() - 1);
    select(SelTop() - 1, SelBottom() - 1);
}

void RowOperations::Command3_Click() {
    const MSFlexGrid::Batch batch(grid_);
    clear_rows();
    // Deliberate: the buffer takes the number of the cleared rows, and nothing of their texts. A
    // greyed row stays grey.
    const int first = std::max<int>(SelTop(), 1);
    RowBuffer_.resize(static_cast<std::size_t>(std::max(SelBottom() - first + 1, 0)));
}

void RowOperations::clear_rows() {
    for (int row = std::max<int>(SelTop(), 1); row <= SelBottom(); ++row) {
        for (int col = kTag; col < grid_.Cols(); ++col) grid_.set_text(row, col, "");
    }
}

void RowOperations::copy_visible_fields(int from_row, int to_row) {
    for (int col = kTag; col <= kPref; ++col) {
        grid_.set_text(to_row, col, grid_.TextMatrix(from_row, col));
    }
}

// Rows past the end of the table are dropped.
void RowOperations::write_buffer(int first_row) {
    int row = first_row;
    for (const Record& record : RowBuffer_) {
        if (row >= grid_.Rows()) return;
        for (int col = kTag; col < grid_.Cols(); ++col) {
            grid_.set_text(row, col, record[field_of(col)]);
        }
        ++row;
    }
}

}  // namespace memwright
