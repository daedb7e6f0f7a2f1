#include "qt/grid_model.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

#include "qt/core/text.h"

namespace memwright::qt {
namespace {

constexpr int kHeadings = 1;
constexpr int kAlignLeft = 1;

// The highlight's colour, thinned so that texts stay readable in every palette.
QColor marked_background() {
    QColor colour = QGuiApplication::palette().color(QPalette::Highlight);
    colour.setAlphaF(0.3F);
    return colour;
}

}  // namespace

GridModel::GridModel(MSFlexGrid& grid)
    : grid_(grid),
      changed_(grid.changed.connect([this](const GridChange& change) { show(change); })) {}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(grid_.Rows() - kHeadings, 0);
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : grid_.Cols();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!is_cell(index)) return {};
    const int row = index.row() + kHeadings;
    switch (role) {
        case Qt::DisplayRole:
            return from_radio(grid_.TextMatrix(row, index.column()));
        case Qt::ForegroundRole: {
            const Colour colour = grid_.colour(row, index.column());
            return colour == 0 ? QVariant() : QColor(QRgb(colour));
        }
        case Qt::BackgroundRole:
            return grid_.is_marked(row) ? QVariant(marked_background()) : QVariant();
        case Qt::TextAlignmentRole:
            return grid_.ColAlignment(index.column()) == kAlignLeft
                       ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                       : QVariant();
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const int sections = orientation == Qt::Horizontal ? columnCount() : rowCount();
    if (section < 0 || section >= sections) return {};
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    return from_radio(orientation == Qt::Horizontal ? grid_.TextMatrix(0, section)
                                                    : grid_.TextMatrix(section + kHeadings, 0));
}

bool GridModel::is_cell(const QModelIndex& index) const {
    return index.isValid() && index.row() < rowCount() && index.column() < columnCount();
}

void GridModel::show(const GridChange& change) {
    if (change.layout) {
        beginResetModel();
        endResetModel();
        return;
    }
    if (change.first_row == 0) {
        Q_EMIT headerDataChanged(Qt::Horizontal, change.first_col, change.last_col);
    }
    if (change.last_row < kHeadings) return;
    const int first = std::max(change.first_row - kHeadings, 0);
    const int last = change.last_row - kHeadings;
    if (change.first_col == 0) Q_EMIT headerDataChanged(Qt::Vertical, first, last);
    Q_EMIT dataChanged(index(first, change.first_col), index(last, change.last_col));
}

}  // namespace memwright::qt
