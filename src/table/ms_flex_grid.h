#pragma once

// A grid of texts with a colour for each cell's text, widths, heights and a current
// cell. Widths and heights in twips; a column of width 0
// is not seen. Cell texts are in the radio's character set. Row and column numbers outside of the
// grid are IndexErrors.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "platform/picture.h"

namespace memwright {

// What changed of a grid, as one signal for a whole batch.
struct GridChange {
    int first_row = 0;
    int last_row = -1;
    int first_col = 0;
    int last_col = -1;
    bool layout = false;  // numbers of rows and columns, widths, heights

    bool none() const { return last_row < first_row && !layout; }
    void add_cells(int from_row, int to_row, int from_col, int to_col);
};

// A cell under the mouse.
struct MouseCell {
    int row = 0;
    int col = 0;
};

// Rows of the grid, first to last; none if last is less.
struct RowRange {
    int first = 0;
    int last = -1;

    friend bool operator==(const RowRange&, const RowRange&) = default;
};

// What a cell holds.
struct GridCell {
    std::string text;
    Colour colour = 0;

    friend bool operator==(const GridCell&, const GridCell&) = default;
};

class MSFlexGrid : public PlacedControl {
  public:
    using PlacedControl::PlacedControl;

    int Rows() const { return static_cast<int>(row_heights_.size()); }
    int Cols() const { return static_cast<int>(col_widths_.size()); }
    void set_rows(int rows);
    void set_cols(int cols);

    // Every cell's text becomes empty and its colour 0.
    void Clear();

    const std::string& TextMatrix(int row, int col) const { return cell(row, col).text; }
    void set_text(int row, int col, std::string text);

    const GridCell& cell(int row, int col) const;

    // The colour of a cell's text: 0 is the user's own.
    Colour colour(int row, int col) const { return cell(row, col).colour; }
    void set_colour(int row, int col, Colour colour);

    double ColWidth(int col) const { return col_widths_[checked_col(col)]; }
    double RowHeight(int row) const { return row_heights_[checked_row(row)]; }
    int ColAlignment(int col) const { return col_alignments_[checked_col(col)]; }
    void set_col_width(int col, double twips);
    void set_row_height(int row, double twips);
    void set_col_alignment(int col, int code);  // 1: left and vertically centred

    // The current cell.
    int Row() const { return row_; }
    int Col() const { return col_; }
    void set_row(int row);
    void set_col(int col);
    const std::string& Text() const { return TextMatrix(row_, col_); }

    // While false, changes are gathered; setting it back to true signals them at once.
    bool Redraw() const { return redraw_; }
    void set_redraw(bool on);

    // Rows that are shown as selected, and their labels with them. The headings, row 0, are never
    // shown so, even if the range begins with them.
    Property<RowRange> marked_rows{RowRange{0, 0}};
    bool is_marked(int row) const;

    // What the user does with the mouse and by scrolling.
    Signal<MouseButton, MouseCell> mouse_down;
    Signal<MouseButton, MouseCell> mouse_up;
    Signal<> clicked;
    Signal<> double_clicked;
    Signal<> scrolled;

    // True if the key was used; else the view goes on with it. Empty for none. `page` is the number
    // of rows in sight.
    std::function<bool(GridKey key, bool shift, int page)> key_down;

    Signal<int, int> cell_changing;  // row and column of a cell, just before it changes
    Signal<const GridChange&> changed;
    Signal<> current_changed;
    Signal<> focus_wanted;
    Signal<int, int> rows_wanted;  // both are to be in sight, or else the second

    // Gathers the changes of a scope into one signal. Scopes nest.
    class Batch {
      public:
        explicit Batch(MSFlexGrid& grid) : grid_(grid) { ++grid_.batches_; }
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        ~Batch();

      private:
        MSFlexGrid& grid_;
    };

  private:
    std::size_t checked_row(int row) const;
    std::size_t checked_col(int col) const;
    GridCell& changeable(int row, int col);
    void note_cells(int from_row, int to_row, int from_col, int to_col);
    void note_layout();
    void signal_if_due();

    std::vector<std::vector<GridCell>> cells_;  // by row
    std::vector<double> row_heights_;
    std::vector<double> col_widths_;
    std::vector<int> col_alignments_;
    int row_ = 0;
    int col_ = 0;
    bool redraw_ = true;
    int batches_ = 0;
    GridChange gathered_;
};

}  // namespace memwright
