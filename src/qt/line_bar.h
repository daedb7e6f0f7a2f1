#pragma once

// What the bars that are typed into have in common. In one, Enter does what the bar is for, on a
// button what that button does, and Escape closes the bar; then the keys go back to the grid. The
// mouse leaves the keys where they are. A bar's parts are named after their controls.

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "qt/binder.h"
#include "qt/line_box.h"
#include "qt/notice_bar.h"

namespace memwright::qt {

class LineBar : public QWidget {
  public:
    // `home` is where the keys go when the bar is closed.
    LineBar(const char* name, QWidget& home);

  protected:
    // Shows the bar while the property holds. To be called when its parts are made.
    void follow(Property<bool>& shown);

    // Parts of the bar, bound to their controls. A box takes what the radio's character set has.
    QLabel* add_caption(const QString& caption, QWidget& of);
    LineBox* add_box(TextBox& box, const QString& accessible_name);
    OneLineLabel* add_line(Label& label);
    QPushButton* add_button(CommandButton& button);
    QPushButton* add_close_button(CommandButton& button);

    virtual void enter_pressed(bool shift) = 0;
    virtual CommandButton& close_control() = 0;

    int gap() const { return fontMetrics().height() / 3; }

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    std::vector<Connection> connections_;

  private:
    bool has_keys() const;

    QWidget& home_;
    Binder binder_{*this};
};

}  // namespace memwright::qt
