#include "qt/grid_headers.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace memwright::qt {
namespace {

constexpr auto kAlignment = Qt::AlignLeft | Qt::AlignVCenter;

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
    painter->restore();
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
