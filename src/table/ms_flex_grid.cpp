#include "table/ms_flex_grid.h"

#include <algorithm>
#include <utility>

#include "base/error.h"

namespace memwright {
namespace {

constexpr double kDesignWidth = 960;
constexpr double kDesignHeight = 240;

std::size_t checked(int index, std::size_t count, const char* what) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) {
        throw IndexError("The grid has no " + std::string(what) + " " + std::to_string(index) +
                         ": it has " + std::to_string(count) + ".");
    }
    return static_cast<std::size_t>(index);
}

}  // namespace

void GridChange::add_cells(int from_row, int to_row, int from_col, int to_col) {
    const bool first = last_row < first_row;
    first_row = first ? from_row : std::min(first_row, from_row);
    last_row = first ? to_row : std::max(last_row, to_row);
    first_col = first ? from_col : std::min(first_col, from_col);
    last_col = first ? to_col : std::max(last_col, to_col);
}

void MSFlexGrid::set_rows(int rows) {
    if (rows == Rows()) return;
    row_heights_.resize(static_cast<std::size_t>(rows), kDesignHeight);
    cells_.resize(row_heights_.size(), std::vector<GridCell>(col_widths_.size()));
    row_ = std::min(row_, std::max(rows - 1, 0));
    note_layout();
}

void MSFlexGrid::set_cols(int cols) {
    if (cols == Cols()) return;
    col_widths_.resize(static_cast<std::size_t>(cols), kDesignWidth);
    col_alignments_.resize(col_widths_.size());
    for (auto& row : cells_) row.resize(col_widths_.size());
    col_ = std::min(col_, std::max(cols - 1, 0));
    note_layout();
}

void MSFlexGrid::Clear() {
    for (int row = 0; row < Rows(); ++row) {
        auto& cells = cells_[static_cast<std::size_t>(row)];
        for (int col = 0; col < Cols(); ++col) {
            GridCell& changing = cells[static_cast<std::size_t>(col)];
            if (changing.text.empty() && changing.colour == 0) continue;
            cell_changing(row, col);
            changing.text.clear();
            changing.colour = 0;
        }
    }
    if (!cells_.empty()) note_cells(0, Rows() - 1, 0, Cols() - 1);
}

void MSFlexGrid::set_text(int row, int col, std::string text) {
    GridCell& changing = changeable(row, col);
    if (changing.text == text) return;
    cell_changing(row, col);
    changing.text = std::move(text);
    note_cells(row, row, col, col);
}

void MSFlexGrid::set_colour(int row, int col, Colour colour) {
    GridCell& changing = changeable(row, col);
    if (changing.colour == colour) return;
    cell_changing(row, col);
    changing.colour = colour;
    note_cells(row, row, col, col);
}

void MSFlexGrid::set_col_width(int col, double twips) {
    if (std::exchange(col_widths_[checked_col(col)], twips) != twips) note_layout();
}

void MSFlexGrid::set_row_height(int row, double twips) {
    if (std::exchange(row_heights_[checked_row(row)], twips) != twips) note_layout();
}

void MSFlexGrid::set_col_alignment(int col, int code) {
    if (std::exchange(col_alignments_[checked_col(col)], code) != code) note_layout();
}

void MSFlexGrid::set_row(int row) {
    checked_row(row);
    if (std::exchange(row_, row) != row) current_changed();
}

void MSFlexGrid::set_col(int col) {
    checked_col(col);
    if (std::exchange(col_, col) != col) current_changed();
}

bool MSFlexGrid::is_marked(int row) const {
    const RowRange& marked = marked_rows;
    return row > 0 && row >= marked.first && row <= marked.last;
}

void MSFlexGrid::set_redraw(bool on) {
    redraw_ = on;
    signal_if_due();
}

MSFlexGrid::Batch::~Batch() {
    --grid_.batches_;
    grid_.signal_if_due();
}

std::size_t MSFlexGrid::checked_row(int row) const {
    return checked(row, row_heights_.size(), "row");
}

std::size_t MSFlexGrid::checked_col(int col) const {
    return checked(col, col_widths_.size(), "column");
}

const GridCell& MSFlexGrid::cell(int row, int col) const {
    return cells_[checked_row(row)][checked_col(col)];
}

GridCell& MSFlexGrid::changeable(int row, int col) {
    return cells_[checked_row(row)][checked_col(col)];
}

void MSFlexGrid::note_cells(int from_row, int to_row, int from_col, int to_col) {
    gathered_.add_cells(from_row, to_row, from_col, to_col);
    signal_if_due();
}

void MSFlexGrid::note_layout() {
    gathered_.layout = true;
    signal_if_due();
}

void MSFlexGrid::signal_if_due() {
    if (!redraw_ || batches_ > 0 || gathered_.none()) return;
    changed(std::exchange(gathered_, GridChange{}));
}

}  // namespace memwright
