#include "qt/grid_headers.h"

#include <QPainter>
#include <QStyleOptionHeader>
#include <algorithm>
#include <utility>

namespace memwright::qt {
namespace {

constexpr auto kAlignment = Qt::AlignLeft | Qt::AlignVCenter;

// A diamond in the colour of the text. The labels begin at the left, whatever the window's
// direction, and none reaches the right end.
void paint_found_mark(QPainter& painter, const QRect& rect, const QColor& colour) {
    const int half = rect.height() / 5;
    const QPoint middle(rect.right() - 2 * half, rect.center().y());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygon({middle - QPoint(half, 0), middle - QPoint(0, half),
                                  middle + QPoint(half, 0), middle + QPoint(0, half)}));
}

}  // namespace

RowLabels::RowLabels(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
    setSectionsClickable(true);
    setHighlightSections(true);
}

void RowLabels::mark(int first, int last) {
    first_marked_ = first;
    last_marked_ = last;
    viewport()->update();
}

void RowLabels::set_current(int section) {
    if (section == current_) return;
    current_ = section;
    viewport()->update();
}

void RowLabels::paintSection(QPainter* painter, const QRect& rect, int section) const {
    constexpr int kRule = 1;
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    initStyleOptionForIndex(&option, section);
    option.rect = rect;
    painter->save();
    painter->setClipRect(rect);
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
    if (is_marked(section)) {
        painter->fillRect(rect.adjusted(0, 0, -kRule, -kRule), palette().highlight());
        option.palette.setBrush(QPalette::ButtonText, palette().highlightedText());
        option.palette.setBrush(QPalette::WindowText, palette().highlightedText());
    }
    option.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
    option.rect.adjust(0, 0, 0, -kRule);
    style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
    // A table that cannot be used does not draw the eye to its current label.
    if (section == current_ && isEnabled()) {
        constexpr int kFrame = 2;
        const QPalette::ColorRole role =
            is_marked(section) ? QPalette::HighlightedText : QPalette::Highlight;
        QPen pen(palette().color(role), kFrame);
        pen.setJoinStyle(Qt::MiterJoin);
        painter->setPen(pen);
        painter->drawRect(rect.adjusted(1, 1, -kFrame, -kFrame));
    }
    if (std::ranges::binary_search(found_rows_, section + 1)) {
        paint_found_mark(*painter, rect, option.palette.color(QPalette::ButtonText));
    }
    painter->restore();
}

void RowLabels::show_found(std::vector<int> rows) {
    found_rows_ = std::move(rows);
    viewport()->update();
}

CornerHeading::CornerHeading(QWidget* parent) : QWidget(parent) {}

void CornerHeading::set_text(const QString& text) {
    text_ = text;
    update();
}

void CornerHeading::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionHeader option;
    option.initFrom(this);
    option.state |= QStyle::State_Raised | QStyle::State_Horizontal;
    option.orientation = Qt::Horizontal;
    option.position = QStyleOptionHeader::Beginning;
    option.section = 0;
    option.text = text_;
    option.textAlignment = kAlignment;
    style()->drawControl(QStyle::CE_Header, &option, &painter, this);
}

}  // namespace memwright::qt
