#pragma once

#include <QStyledItemDelegate>

namespace memwright::qt {

// Paints the grid's cells; the one that is edited with a frame around the control that is laid over
// it.
class CellDelegate final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool editing = false;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace memwright::qt
