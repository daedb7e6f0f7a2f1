#include "qt/row_drag.h"

#include <QScrollBar>
#include <utility>

namespace memwright::qt {
namespace {

constexpr int kInterval = 50;         // milliseconds
constexpr int kPixelsForOneMore = 8;  // rows at a time

}  // namespace

RowDrag::RowDrag(QAbstractScrollArea& view, std::function<void(const QPoint&)> reached)
    : view_(view), reached_(std::move(reached)) {
    timer_.setInterval(kInterval);
    QObject::connect(&timer_, &QTimer::timeout, &view, [this] { scroll(); });
}

void RowDrag::move_to(const QPoint& position) {
    if (!running_) return;
    position_ = position;
    if (rows_beyond() == 0) {
        timer_.stop();
    } else if (!timer_.isActive()) {
        timer_.start();
    }
    reached_(position_);
}

void RowDrag::end() {
    running_ = false;
    timer_.stop();
}

// How many rows to go on at a time: less than 0 for up, 0 while the mouse is beside the rows.
int RowDrag::rows_beyond() const {
    const QRect rows = view_.viewport()->geometry();
    const int above = rows.top() - position_.y(), below = position_.y() - rows.bottom();
    if (above > 0) return -1 - above / kPixelsForOneMore;
    return below > 0 ? 1 + below / kPixelsForOneMore : 0;
}

void RowDrag::scroll() {
    // Locked in the meantime, or gone.
    if (!view_.isEnabled() || !view_.isVisible()) return end();
    QScrollBar& bar = *view_.verticalScrollBar();
    bar.setValue(bar.value() + rows_beyond());
    reached_(position_);
}

}  // namespace memwright::qt
