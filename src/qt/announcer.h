#pragma once

// Tells screen readers what others see by themselves. Qt 6.4 has no announcements: a dot that nobody
// sees carries the text as its name, and is said to be shown anew with each.

#include <QWidget>

namespace memwright::qt {

class Announcer final : public QWidget {
  public:
    explicit Announcer(QWidget* parent);

    void say(const QString& text);
};

// Tells assistive programs that a widget, whose name says something new, is shown.
void announce(QWidget& widget);

}  // namespace memwright::qt
