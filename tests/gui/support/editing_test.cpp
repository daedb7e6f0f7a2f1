#include "gui/support/editing_test.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QWheelEvent>
#include <QWindow>

namespace memwright::gui {

void EditingTest::SetUp() {
    start();
    open_some_image();
}

void EditingTest::set_current(int row, int col) {
    form().MSFlexGrid1.set_row(row);
    form().MSFlexGrid1.set_col(col);
}

std::pair<int, int> EditingTest::current() {
    return {form().MSFlexGrid1.Row(), form().MSFlexGrid1.Col()};
}

std::pair<int, int> EditingTest::marked() {
    const RowRange& rows = form().MSFlexGrid1.marked_rows;
    return {rows.first, rows.last};
}

std::string EditingTest::open_overlay() {
    EXPECT_FALSE(box().isVisible() && list().isVisible());
    if (box().isVisible()) return "TxtGrid";
    return list().isVisible() ? "CboGrid" : "none";
}

std::string EditingTest::focused() {
    QWidget* const focus = QApplication::focusWidget();
    return focus == nullptr ? "nothing" : qt::to_utf8(focus->objectName());
}

QRect EditingTest::place_of(QWidget& part, const QRect& inside) {
    return {part.mapTo(&window(), inside.topLeft()), inside.size()};
}

QRect EditingTest::place_of_cell(int row, int col) {
    return place_of(*grid().viewport(), grid().visualRect(index(row, col)));
}

QRect EditingTest::place_of_label(int row) {
    QHeaderView& labels = *grid().verticalHeader();
    return place_of(*labels.viewport(), QRect(0, labels.sectionViewportPosition(row - 1),
                                              labels.width(), labels.sectionSize(row - 1)));
}

bool EditingTest::is_in_sight(int row, int col) {
    const QRect place = grid().visualRect(index(row, col));
    return place.isValid() && grid().viewport()->rect().contains(place);
}

void EditingTest::press_at(const QPoint& at, Qt::MouseButton button,
                           Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(window().windowHandle(), button, modifiers, at);
}

void EditingTest::release_at(const QPoint& at, Qt::MouseButton button) {
    QTest::mouseRelease(window().windowHandle(), button, {}, at);
}

void EditingTest::click(const QPoint& at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(window().windowHandle(), button, modifiers, at);
}

void EditingTest::drag_to(const QPoint& at) { QTest::mouseMove(window().windowHandle(), at); }

void EditingTest::double_click(const QPoint& at) {
    QTest::mouseDClick(window().windowHandle(), Qt::LeftButton, {}, at);
}

void EditingTest::click_button(const char* name) {
    auto& button = widget<QPushButton>(name);
    click(place_of(button, button.rect()).center());
}

void EditingTest::turn_wheel(const QPoint& at, int steps) {
    constexpr int kStep = 120;
    constexpr QPointF kAnywhere(3, 3);
    QWidget* under = window().childAt(at);
    ASSERT_NE(under, nullptr);
    // Only what comes from the window system goes on to the parent by itself.
    for (bool taken = false; !taken && under != &window(); under = under->parentWidget()) {
        QWheelEvent turn(kAnywhere, under->mapToGlobal(kAnywhere), QPoint(),
                         QPoint(0, -kStep * steps), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                         false);
        QCoreApplication::sendEvent(under, &turn);
        taken = turn.isAccepted();
    }
}

void EditingTest::open(int row, int col) {
    set_current(row, col);
    grid().scrollTo(index(row, col));
    double_click(place_of_cell(row, col).center());
}

void EditingTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window().windowHandle(), key, modifiers);
}

void EditingTest::type(const QString& text) {
    for (const QChar character : text) {
        if (character.unicode() < 0x80) {
            QTest::keyClick(window().windowHandle(), character.toLatin1());
        } else {
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                                QString(character), Qt::NoModifier);
        }
    }
}

void EditingTest::paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    key(Qt::Key_V, Qt::ControlModifier);
}

void EditingTest::drop(QWidget& on, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint place = on.rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&on, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&on, &drop);
}

void EditingTest::commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
}

}  // namespace memwright::gui
