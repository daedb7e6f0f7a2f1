#pragma once

// A channel table with everything that edits it, and the keys, clicks and typing that reach it as
// the main window sends them.

#include <string>
#include <vector>

#include "fakes/fake_cell_places.h"
#include "fakes/scripted_dialogs.h"
#include "table/cell_editor.h"
#include "table/row_operations.h"
#include "table/table_test.h"

namespace memwright {

constexpr int kLastRow = 640;
constexpr Colour kGrey = 0xC0C0C0;

class EditingTest : public TableTest {
  protected:
    EditingTest() {
        table.initgrid();
        grid.left = 1600;
        grid.top = 120;
        TxtGrid.visible = false;
        CboGrid.visible = false;
        places.grid = &grid;
    }

    void go_to(int row, int col) {
        grid.set_row(row);
        grid.set_col(col);
    }
    // Opens a cell's editor, with the caret behind its text.
    void open(int row, int col) {
        go_to(row, col);
        editor.MSFlexGrid1_DblClick();
        TxtGrid.caret = TxtGrid.text.get().size();
    }

    // Each character goes through the filter and, if there is room, into the text at the caret.
    void type(const std::string& characters) {
        for (char c : characters) {
            if (editor.TxtGrid_KeyPress(c)) insert(std::string(1, c));
        }
    }
    // Text that does not come from keys passes no filter.
    void insert(const std::string& piece) {
        std::string text = TxtGrid.text;
        const std::size_t limit = TxtGrid.max_length;
        if (limit != 0 && text.size() + piece.size() > limit) return;
        const std::size_t caret = std::min(TxtGrid.caret.get(), text.size());
        TxtGrid.caret = caret + piece.size();
        TxtGrid.text = text.insert(caret, piece);
    }
    // Replaces what the list shows, by typing or by choosing.
    void type_in_list(const std::string& text) {
        CboGrid.text = text;
        editor.CboGrid_Change();
    }
    void pick(const std::string& text) {
        CboGrid.text = text;
        editor.CboGrid_Click();
    }
    // A key in the overlay that is open.
    bool press(Key key, bool shift = false) {
        return TxtGrid.visible ? editor.TxtGrid_KeyDown(key, shift)
                               : editor.CboGrid_KeyDown(key, shift);
    }

    void mouse_down(int row, int col, MouseButton button = MouseButton::left) {
        editor.MSFlexGrid1_MouseDown(button, {row, col});
    }
    void click(int row, int col, MouseButton button = MouseButton::left) {
        mouse_down(row, col, button);
        rows.MSFlexGrid1_MouseUp(button, {row, col});
        editor.MSFlexGrid1_Click();
    }
    // From label to label with the left button down.
    void select(int from, int to) {
        mouse_down(from, columns::kLabel);
        rows.MSFlexGrid1_MouseUp(MouseButton::left, {to, columns::kLabel});
    }

    std::string text(int row, int col) const { return grid.TextMatrix(row, col); }
    // Columns 1 to `last` of a row.
    std::vector<std::string> fields(int row, int last = 14) const {
        std::vector<std::string> texts;
        for (int col = 1; col <= last; ++col) texts.push_back(text(row, col));
        return texts;
    }
    // Every cell of a row gets a text of its own: "r5c3".
    void fill(int row) {
        for (int col = 1; col < 15; ++col) {
            grid.set_text(row, col, "r" + std::to_string(row) + "c" + std::to_string(col));
        }
    }
    static std::vector<std::string> filled(int row, int last = 4) {
        std::vector<std::string> texts;
        for (int col = 1; col <= last; ++col) {
            texts.push_back("r" + std::to_string(row) + "c" + std::to_string(col));
        }
        return texts;
    }
    void grey(int row) {
        for (int col = 1; col < 15; ++col) grid.set_colour(row, col, kGrey);
    }
    void expect_colour(int row, Colour colour) const {
        EXPECT_EQ(grid.colour(row, 0), 0U) << "the label of row " << row;
        for (int col = 1; col < 15; ++col) {
            EXPECT_EQ(grid.colour(row, col), colour) << row << ", " << col;
        }
    }
    void expect_cell(int row, int col) const {
        EXPECT_EQ(grid.Row(), row);
        EXPECT_EQ(grid.Col(), col);
    }
    void expect_selected(int top, int bottom) const {
        EXPECT_EQ(rows.SelTop(), top);
        EXPECT_EQ(rows.SelBottom(), bottom);
    }

    TextBox TxtGrid{"TxtGrid"};
    ComboBox CboGrid{"CboGrid"};
    MenuEntry mnuCut{"mnuCut", "Cu&t"};
    MenuEntry mnuCopy{"mnuCopy", "&Copy"};
    MenuEntry mnuPaste{"mnuPaste", "&Paste"};
    fakes::FakeCellPlaces places;
    fakes::ScriptedMessageBox messages;
    int pop_ups = 0;
    CellEditor editor{grid, TxtGrid, CboGrid, places, [this] { ++pop_ups; }};
    RowOperations rows{grid, table, editor, messages, {mnuCut, mnuCopy, mnuPaste}};
    Connection typing = TxtGrid.text.changed.connect([this] { editor.TxtGrid_Change(); });
};

// Counts a grid's signals while it lives.
class CountedSignals {
  public:
    explicit CountedSignals(MSFlexGrid& grid)
        : connection_(grid.changed.connect([this](const GridChange& change) {
              ++count;
              last = change;
          })) {}

    int count = 0;
    GridChange last;

  private:
    Connection connection_;
};

}  // namespace memwright
