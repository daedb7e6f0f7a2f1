#pragma once

// The grid on the screen: headings and labels stay in sight, columns and rows have the grid's own
// sizes, and the current cell follows the keyboard and the mouse.

#include <QTableView>
#include <vector>

#include "qt/cell_delegate.h"
#include "qt/grid_headers.h"
#include "qt/grid_model.h"
#include "qt/row_drag.h"
#include "table/cell_editor.h"

namespace memwright::qt {

class GridView final : public QTableView, public CellPlaces {
  public:
    explicit GridView(QWidget* parent);

    void show_grid(MSFlexGrid& grid);

    // While its cell is edited, the current cell is framed instead of filled.
    void set_editing(bool on);

    // No key is for searching.
    void keyboardSearch(const QString& /*typed*/) override {}

    bool show_cell() override;
    Place current_cell() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

  private:
    void apply_sizes();
    void show_current();
    bool is_label_current() const;
    void show_rows(int first, int last);
    void tell_label(int row);
    void show_marks();
    MouseCell cell_at(const QPoint& position) const;
    bool is_beside_cells(const QPoint& position) const;
    void drag_to(const QMouseEvent& event, const QPoint& position);
    void mark_to(const QPoint& position);
    void press(const QMouseEvent& event, const QPoint& position);
    void release(const QMouseEvent& event, const QPoint& position);
    bool is_used(const QKeyEvent& event);
    void open_behind_text();
    void type_into_cell(QKeyEvent& event);

    MSFlexGrid* grid_ = nullptr;
    CellDelegate* delegate_;
    CornerHeading* corner_;
    RowDrag drag_;
    int dragged_to_ = 0;  // the row
    // Where the button was pressed that is down.
    enum class Pressed { nowhere, cell, label, beside_cells } pressed_ = Pressed::nowhere;
    bool double_click_ = false;  // its second release is still to come
    bool scrolls_by_itself_ = false;
    std::vector<Connection> connections_;
};

}  // namespace memwright::qt
