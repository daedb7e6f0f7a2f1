#pragma once

// A drag over the labels of a grid. As long as the mouse is held above or below the rows that are
// seen, these are scrolled, the faster the farther away it is. Positions are those of the view.

#include <QAbstractScrollArea>
#include <QPoint>
#include <QTimer>
#include <functional>

namespace memwright::qt {

class RowDrag {
  public:
    // `reached` is called for each place that the mouse comes to, and when rows have moved under
    // it.
    RowDrag(QAbstractScrollArea& view, std::function<void(const QPoint&)> reached);

    void begin() { running_ = true; }
    void move_to(const QPoint& position);
    void end();

  private:
    int rows_beyond() const;
    void scroll();

    QAbstractScrollArea& view_;
    std::function<void(const QPoint&)> reached_;
    QTimer timer_;
    QPoint position_;
    bool running_ = false;
};

}  // namespace memwright::qt
