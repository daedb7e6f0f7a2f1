#include "qt/cell_delegate.h"

#include <QPainter>

namespace memwright::qt {

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    if (!editing || !option.state.testFlag(QStyle::State_Selected)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    painter->fillRect(option.rect, option.palette.base());
    painter->setPen(option.palette.color(QPalette::Highlight));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
}

}  // namespace memwright::qt
