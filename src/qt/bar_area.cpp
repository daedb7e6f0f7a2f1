#include "qt/bar_area.h"

#include <QBoxLayout>
#include <QEvent>
#include <QPainter>
#include <algorithm>

namespace memwright::qt {

BarArea::BarArea(QWidget* parent) : QWidget(parent) {
    setObjectName("BarArea");
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 1, 0, 0);  // for the line
    rows->setSpacing(0);
    hide();
}

void BarArea::add_row(QWidget& row) {
    row.hide();
    row.installEventFilter(this);
    layout()->addWidget(&row);
}

void BarArea::show_rows() {
    const auto rows = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    setVisible(std::ranges::any_of(rows, [](const QWidget* row) { return !row->isHidden(); }));
    tell_height();
}

void BarArea::tell_height() {
    const int height = wanted_height();
    if (height == told_height_) return;
    told_height_ = height;
    if (height_changed) height_changed();
}

bool BarArea::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) tell_height();
    return handled;
}

bool BarArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        show_rows();
    }
    return QWidget::eventFilter(watched, event);
}

// A line parts the bars from what is above.
void BarArea::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(0, 0, width(), 1, palette().color(QPalette::Mid));
}

}  // namespace memwright::qt
