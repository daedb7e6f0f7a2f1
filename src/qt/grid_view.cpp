#include "qt/grid_view.h"

#include <QEvent>
#include <QHeaderView>
#include <algorithm>

#include "qt/text.h"
#include "qt/twips.h"

namespace memwright::qt {
namespace {

constexpr int kCellMargin = 4;

}  // namespace

GridView::GridView(QWidget* parent) : QTableView(parent), corner_(new CornerHeading(this)) {
    setVerticalHeader(new RowLabels(this));
    corner_->setObjectName("CornerHeading");
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->setHighlightSections(true);
    }
}

void GridView::show_grid(MSFlexGrid& grid) {
    grid_ = &grid;
    setModel(new GridModel(grid));
    model()->setParent(this);
    connect(model(), &QAbstractItemModel::modelReset, this, [this] { apply_sizes(); });
    connections_.push_back(grid.current_changed.connect([this] { show_current(); }));
    apply_sizes();
}

void GridView::apply_sizes() {
    const double tallest = grid_->Rows() > 0 ? grid_->RowHeight(0) : 0;
    const int row_height = std::max(pixels(*this, tallest), fontMetrics().height() + kCellMargin);
    verticalHeader()->setMinimumSectionSize(row_height);
    verticalHeader()->setDefaultSectionSize(row_height);
    verticalHeader()->setFixedWidth(pixels(*this, grid_->ColWidth(0)));
    horizontalHeader()->setFixedHeight(row_height);
    for (int col = 0; col < grid_->Cols(); ++col) {
        // The label column is the vertical header.
        setColumnHidden(col, col == 0 || grid_->ColWidth(col) == 0);
        setColumnWidth(col, pixels(*this, grid_->ColWidth(col)));
    }
    corner_->set_text(grid_->Rows() > 0 ? from_radio(grid_->TextMatrix(0, 0)) : QString());
    show_current();
}

void GridView::show_current() {
    const QModelIndex current = model()->index(grid_->Row() - 1, grid_->Col());
    if (current == currentIndex()) return;
    setCurrentIndex(grid_->Row() == 0 || grid_->Col() == 0 ? QModelIndex() : current);
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!current.isValid() || grid_ == nullptr) return;
    grid_->set_row(current.row() + 1);
    grid_->set_col(current.column());
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && grid_ != nullptr) apply_sizes();
}

void GridView::updateGeometries() {
    QTableView::updateGeometries();
    corner_->setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(),
                         horizontalHeader()->height());
    corner_->raise();
}

// A table that cannot be used does not draw the eye to its current cell.
void GridView::initViewItemOption(QStyleOptionViewItem* option) const {
    QTableView::initViewItemOption(option);
    const auto of_disabled = [&](QPalette::ColorRole role) {
        return palette().color(QPalette::Disabled, role);
    };
    option->palette.setColor(QPalette::Disabled, QPalette::Highlight, of_disabled(QPalette::Base));
    option->palette.setColor(QPalette::Disabled, QPalette::HighlightedText,
                             of_disabled(QPalette::Text));
}

}  // namespace memwright::qt
