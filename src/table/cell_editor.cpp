#include "table/cell_editor.h"

#include <algorithm>

#include "table/cell_rules.h"
#include "table/choice_lists.h"
#include "table/columns.h"
#include "table/mask_colour.h"

namespace memwright {
namespace {

using namespace columns;

constexpr double kTextInset = 40;
constexpr double kListInset = 10;

// A cell's size less an inset; a cell that is smaller leaves the size as it is.
void shrink_to(Property<double>& length, double cell, double inset) {
    if (cell >= inset) length = cell - inset;
}

}  // namespace

CellEditor::CellEditor(MSFlexGrid& grid, TextBox& TxtGrid, ComboBox& CboGrid, CellPlaces& places,
                       std::function<void()> show_pop_up_menu)
    : grid_(grid),
      TxtGrid_(TxtGrid),
      CboGrid_(CboGrid),
      places_(places),
      show_pop_up_menu_(std::move(show_pop_up_menu)) {}

void CellEditor::MSFlexGrid1_DblClick() {
    const int col = grid_.Col();
    if (col == kLabel || grid_.Row() == 0) return;
    places_.show_cell();
    if (cell_rules::is_edited_as_text(col)) {
        open_text();
    } else {
        open_list();
    }
}

void CellEditor::open_text() {
    TxtGrid_.max_length = cell_rules::most_characters(grid_.Col());
    EditRow_ = grid_.Row();
    CboGrid_.visible = false;
    LoadingEditor_ = true;
    TxtGrid_.text = grid_.Text();
    LoadingEditor_ = false;
    TxtGrid_.visible = true;
    lay_over_cell();
    TxtGrid_.focus_wanted();
}

void CellEditor::open_list() {
    TxtGrid_.visible = false;
    LoadingEditor_ = true;
    CboGrid_.text = "";
    CboGrid_.items = choices_of(grid_.Col());
    CboGrid_.text = grid_.Text();
    LoadingEditor_ = false;
    CboGrid_.visible = true;
    lay_over_cell();
    CboGrid_.focus_wanted();
}

void CellEditor::place_overlays() {
    if (!TxtGrid_.visible && !CboGrid_.visible) return;
    if (places_.show_cell()) {
        lay_over_cell();
    } else {
        hide_overlays();
    }
}

void CellEditor::lay_over_cell() {
    const CellPlaces::Place cell = places_.current_cell();
    if (TxtGrid_.visible) {
        shrink_to(TxtGrid_.height, cell.height, kTextInset);
        shrink_to(TxtGrid_.width, cell.width, kTextInset);
        TxtGrid_.left = grid_.left + cell.left + kTextInset;
        TxtGrid_.top = grid_.top + cell.top + kTextInset;
    }
    if (CboGrid_.visible) {
        shrink_to(CboGrid_.height, cell.height, kListInset);
        shrink_to(CboGrid_.width, cell.width, kListInset);
        CboGrid_.left = grid_.left + cell.left;
        CboGrid_.top = grid_.top + cell.top;
    }
}

void CellEditor::hide_overlays() {
    CboGrid_.visible = false;
    TxtGrid_.visible = false;
}

void CellEditor::TxtGrid_Change() {
    if (LoadingEditor_) return;
    const MSFlexGrid::Batch batch(grid_);
    const int row = grid_.Row();
    const int col = grid_.Col();
    if (col == kFreq) cell_rules::add_defaults_of_typed_frequency(grid_, row);
    const std::string text = cell_rules::kept_text(col, TxtGrid_.text);
    if (text != TxtGrid_.text.get()) {
        const std::size_t caret = TxtGrid_.caret;
        TxtGrid_.text = text;
        TxtGrid_.caret = std::min(caret, text.size());
    }
    grid_.set_text(row, col, cell_rules::cell_text(col, text));
}

bool CellEditor::TxtGrid_KeyPress(char& KeyAscii) {
    const int col = grid_.Col();
    if (const auto most = cell_rules::most_characters(col); most > 0) TxtGrid_.max_length = most;
    return cell_rules::takes(col, TxtGrid_.text.get(), KeyAscii);
}

bool CellEditor::TxtGrid_KeyDown(Key key, bool shift) {
    switch (key) {
        case Key::tab:
            move_by_tab(shift);
            return true;
        case Key::up:
            if (grid_.Row() < 2) return true;
            grid_.set_row(grid_.Row() - 1);
            MSFlexGrid1_DblClick();
            return true;
        case Key::enter:
        case Key::down:
            move_down_or_stay();
            return true;
        case Key::left:
        case Key::right:
            return move_by_arrow(key);
        case Key::other:
            break;
    }
    return false;
}

void CellEditor::move_by_tab(bool back) {
    // Deliberate: from here on Tab at the end of a row stays in it.
    constexpr int kLastRowToLeave = 500;
    const int col = grid_.Col();
    const int row = grid_.Row();
    if (!back && col < kPref) {
        grid_.set_col(col + 1);
    } else if (!back) {
        grid_.set_col(kTag);
        if (row < kLastRowToLeave) grid_.set_row(row + 1);
    } else if (col >= kFreq) {
        grid_.set_col(col - 1);
    } else {
        grid_.set_col(kPref);
        if (row >= 2) grid_.set_row(row - 1);
    }
    MSFlexGrid1_DblClick();
}

void CellEditor::move_down_or_stay() {
    LoadingEditor_ = true;
    TxtGrid_.text = "";
    LoadingEditor_ = false;
    if (grid_.Row() >= grid_.Rows() - 1) return;
    grid_.set_row(grid_.Row() + 1);
    MSFlexGrid1_DblClick();
}

bool CellEditor::move_by_arrow(Key key) {
    const bool at_start = TxtGrid_.caret == std::size_t{0};
    const bool at_end = TxtGrid_.caret.get() >= TxtGrid_.text.get().size();
    const int col = grid_.Col();
    if (key == Key::right && at_end && col < kFreq) {
        grid_.set_col(col + 1);
    } else if (key == Key::left && at_start && col >= kFreq) {
        grid_.set_col(col - 1);
    } else {
        return false;
    }
    MSFlexGrid1_DblClick();
    return true;
}

void CellEditor::CboGrid_Change() {
    if (!LoadingEditor_) grid_.set_text(grid_.Row(), grid_.Col(), CboGrid_.text);
}

void CellEditor::CboGrid_Click() {
    if (LoadingEditor_) return;
    const MSFlexGrid::Batch batch(grid_);
    grid_.set_text(grid_.Row(), grid_.Col(), CboGrid_.text);
    if (grid_.Col() != kMasked) return;
    colour_row_by_mask();
    grid_.set_col(kMasked);
}

bool CellEditor::CboGrid_KeyDown(Key key, bool shift) {
    if (key != Key::tab) return false;
    move_by_tab(shift);
    return true;
}

void CellEditor::MSFlexGrid1_MouseDown(MouseButton button, MouseCell under_mouse) {
    if (button == MouseButton::right && grid_.Col() == kLabel) {
        show_pop_up_menu_();
        return;
    }
    grid_.set_col(under_mouse.col);
    grid_.set_row(under_mouse.row);
    if (button != MouseButton::right || under_mouse.row == 0 || under_mouse.col == 0) return;
    if (grid_.Col() != PickedCol) return;
    copy_picked_value(under_mouse.row);
}

void CellEditor::copy_picked_value(int row) {
    const MSFlexGrid::Batch batch(grid_);
    // Deliberate: an empty pick never blanks a label.
    if (!PickedText.empty() || grid_.Col() != kTag) grid_.set_text(row, grid_.Col(), PickedText);
    if (grid_.Col() == kFreq) cell_rules::add_defaults_of_copied_frequency(grid_, row);
    colour_row_by_mask();
}

void CellEditor::colour_row_by_mask() {
    const MSFlexGrid::Batch batch(grid_);
    colour_by_mask(grid_, grid_.Row());
}

}  // namespace memwright
