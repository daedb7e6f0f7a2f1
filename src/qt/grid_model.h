#pragma once

// The grid as an item model. The heading row and the label column are the model's headers; the
// model's row r is the grid's row r + 1, and columns have the same numbers. Assistive programs ask
// for any row and column: those that are not there are answered with nothing.

#include <QAbstractTableModel>

#include "table/ms_flex_grid.h"

namespace memwright::qt {

class GridModel final : public QAbstractTableModel {
  public:
    explicit GridModel(MSFlexGrid& grid);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool is_cell(const QModelIndex& index) const;
    void show(const GridChange& change);

    MSFlexGrid& grid_;
    Connection changed_;
};

}  // namespace memwright::qt
