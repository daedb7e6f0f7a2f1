#pragma once

// Editing in the real window: mouse and keys go through the window system, so that they meet
// whatever lies under the mouse and whatever has the focus.

#include <QMimeData>

#include "gui/support/window_test.h"
#include "qt/overlays.h"

namespace memwright::gui {

class EditingTest : public StartedWindowTest {
  protected:
    void SetUp() override;

    QModelIndex index(int row, int col) { return grid().model()->index(row - 1, col); }
    // What a cell shows.
    std::string cell(int row, int col) { return qt::to_utf8(index(row, col).data().toString()); }
    QColor colour(int row, int col) {
        return index(row, col).data(Qt::ForegroundRole).value<QColor>();
    }
    void set_cell(int row, int col, const std::string& text) {
        form().MSFlexGrid1.set_text(row, col, text);
    }
    void set_current(int row, int col);
    std::pair<int, int> current();  // row and column
    // Rows SelTop to SelBottom.
    std::pair<int, int> marked();

    qt::CellTextBox& box() { return dynamic_cast<qt::CellTextBox&>(widget<QLineEdit>("TxtGrid")); }
    qt::CellComboBox& list() {
        return dynamic_cast<qt::CellComboBox&>(widget<QComboBox>("CboGrid"));
    }
    std::string list_text() { return qt::to_utf8(list().lineEdit()->text()); }
    // "TxtGrid", "CboGrid", or "none".
    std::string open_overlay();
    std::string focused();

    // Places in the window.
    QRect place_of(QWidget& part, const QRect& inside);
    QRect place_of_cell(int row, int col);
    QRect place_of_label(int row);
    bool is_in_sight(int row, int col);

    void press_at(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = {});
    void release_at(const QPoint& at, Qt::MouseButton button = Qt::LeftButton);
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {});
    void drag_to(const QPoint& at);
    void double_click(const QPoint& at);
    void click_button(const char* name);
    void turn_wheel(const QPoint& at, int steps);

    // Makes a cell the current one and double-clicks it, as a user does.
    void open(int row, int col);

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);
    void paste(const QString& text);
    void drop(QWidget& on, const QString& text);
    void commit(const QString& text);  // as an input method does
};

}  // namespace memwright::gui
