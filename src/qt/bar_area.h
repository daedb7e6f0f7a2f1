#pragma once

// The bars of what was added, in rows below the original controls of the main window. Each row is
// there as long as it is shown; without any, the area takes no room.

#include <QWidget>
#include <functional>

namespace memwright::qt {

class BarArea final : public QWidget {
  public:
    explicit BarArea(QWidget* parent);

    // A row that stays hidden until it is shown.
    void add_row(QWidget& row);

    // What the rows that are shown need, in pixels.
    int wanted_height() const { return isHidden() ? 0 : sizeHint().height(); }

    std::function<void()> height_changed;

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void show_rows();
    void tell_height();

    int told_height_ = 0;
};

}  // namespace memwright::qt
