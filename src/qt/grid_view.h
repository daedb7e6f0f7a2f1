#pragma once

// The grid on the screen: headings and labels stay in sight, columns and rows have the grid's own
// sizes, and the current cell follows the keyboard and the mouse.

#include <QTableView>

#include "qt/grid_headers.h"
#include "qt/grid_model.h"

namespace memwright::qt {

class GridView final : public QTableView {
  public:
    explicit GridView(QWidget* parent);

    void show_grid(MSFlexGrid& grid);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void changeEvent(QEvent* event) override;
    void updateGeometries() override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

  private:
    void apply_sizes();
    void show_current();

    MSFlexGrid* grid_ = nullptr;
    CornerHeading* corner_;
    std::vector<Connection> connections_;
};

}  // namespace memwright::qt
