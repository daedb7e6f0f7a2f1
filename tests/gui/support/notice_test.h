#pragma once

// The window with notices, and who has the keys.

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include "gui/support/window_test.h"

namespace memwright::gui {

class NoticeTest : public StartedWindowTest {
  protected:
    Notices& notices() { return program().notices; }
    void add(const std::string& text) { notices().add({.text = text}); }

    QWidget& bar() { return widget<QWidget>("NoticeBar"); }
    QWidget& area() { return widget<QWidget>("BarArea"); }
    bool shown() { return bar().isVisible(); }
    std::string text() { return qt::to_utf8(widget<QLabel>("NoticeText").text()); }
    QPushButton& button(const char* name) { return widget<QPushButton>(name); }
    static std::string focused() {
        QWidget* const focus = QApplication::focusWidget();
        return focus == nullptr ? "(none)" : qt::to_utf8(focus->objectName());
    }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

}  // namespace memwright::gui
