#pragma once

// Editing cells in two controls that are laid over the current cell: a text box for what is typed
// freely, a list for the columns with a fixed set of choices. What the user types or picks is in
// the cell at once, on every change. Lengths in twips; texts in the radio's character set.

#include <cstdint>
#include <functional>
#include <string>

#include "controls/controls.h"
#include "table/ms_flex_grid.h"

namespace memwright {

// Where the grid's current cell is on the screen.
class CellPlaces {
  public:
    struct Place {
        double left = 0;  // inside the grid
        double top = 0;
        double width = 0;
        double height = 0;
    };

    virtual ~CellPlaces() = default;

    // Scrolls the grid so that the current cell is seen whole; false if there is no room for it. It
    // is no scroll of the user's.
    virtual bool show_cell() = 0;
    virtual Place current_cell() = 0;
};

class CellEditor {
  public:
    CellEditor(MSFlexGrid& grid, TextBox& TxtGrid, ComboBox& CboGrid, CellPlaces& places,
               std::function<void()> show_pop_up_menu);

    void MSFlexGrid1_DblClick();
    void MSFlexGrid1_Click() { hide_overlays(); }
    void MSFlexGrid1_Scroll() { hide_overlays(); }
    void MSFlexGrid1_MouseDown(MouseButton button, MouseCell under_mouse);

    void TxtGrid_Change();
    // Filters a typed character and may change it. False if it is to be dropped.
    bool TxtGrid_KeyPress(char& KeyAscii);
    // True if the key was used to move; else it acts inside the text.
    bool TxtGrid_KeyDown(Key key, bool shift);
    void TxtGrid_LostFocus() { TxtGrid_.visible = false; }

    void CboGrid_Change();
    void CboGrid_Click();
    bool CboGrid_KeyDown(Key key, bool shift);
    void CboGrid_LostFocus() { CboGrid_.visible = false; }

    // Follows the current cell when the grid has moved or changed its size. What cannot lie over
    // its cell is hidden.
    void place_overlays();

    // What a right click copies: the text and the column of the last cell that was clicked.
    std::string PickedText;
    std::int16_t PickedCol = 0;

  private:
    void open_text();
    void open_list();
    void lay_over_cell();
    void hide_overlays();
    void move_by_tab(bool back);
    bool move_by_arrow(Key key);
    void move_down_or_stay();
    void copy_picked_value(int row);
    void colour_row_by_mask();

    MSFlexGrid& grid_;
    TextBox& TxtGrid_;
    ComboBox& CboGrid_;
    CellPlaces& places_;
    std::function<void()> show_pop_up_menu_;
    bool LoadingEditor_ = false;
    std::int32_t EditRow_ = 0;
};

}  // namespace memwright
