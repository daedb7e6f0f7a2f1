#include "qt/grid_view.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "qt/core/text.h"
#include "qt/grid_key_events.h"
#include "qt/twips.h"
#include "table/cell_rules.h"

namespace memwright::qt {
namespace {

constexpr int kCellMargin = 4;

// What is under the mouse is in sight already, and must not move away from it.
class WithoutScrolling {
  public:
    explicit WithoutScrolling(QAbstractItemView& view) : view_(view) { view_.setAutoScroll(false); }
    ~WithoutScrolling() { view_.setAutoScroll(true); }
    WithoutScrolling(const WithoutScrolling&) = delete;
    WithoutScrolling& operator=(const WithoutScrolling&) = delete;

  private:
    QAbstractItemView& view_;
};

MouseButton button_of(Qt::MouseButton button) {
    if (button == Qt::LeftButton) return MouseButton::left;
    return button == Qt::RightButton ? MouseButton::right : MouseButton::other;
}

}  // namespace

GridView::GridView(QWidget* parent)
    : QTableView(parent),
      delegate_(new CellDelegate(this)),
      corner_(new CornerHeading(this)),
      drag_(*this, [this](const QPoint& position) { mark_to(position); }) {
    setItemDelegate(delegate_);
    setVerticalHeader(new RowLabels(this));
    corner_->setObjectName("CornerHeading");
    corner_->installEventFilter(this);
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
        header->viewport()->installEventFilter(this);
    }
}

void GridView::show_grid(MSFlexGrid& grid) {
    grid_ = &grid;
    setModel(new GridModel(grid));
    model()->setParent(this);
    connect(model(), &QAbstractItemModel::modelReset, this, [this] { apply_sizes(); });
    connections_.push_back(grid.current_changed.connect([this] { show_current(); }));
    connections_.push_back(grid.focus_wanted.connect([this] {
        setFocus();
        show_cell();
    }));
    connections_.push_back(grid.marked_rows.changed.connect([this] { show_marks(); }));
    connections_.push_back(grid.rows_wanted.connect([this](int first, int last) {
        show_rows(first, last);
        if (is_label_current()) tell_label(last);
    }));
    for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, [this] {
            if (!scrolls_by_itself_) grid_->scrolled();
        });
    }
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

bool GridView::is_label_current() const {
    return grid_ != nullptr && grid_->Col() == 0 && grid_->Row() > 0;
}

// The label column is no column of the view: while it is current, no index is.
void GridView::show_current() {
    const bool cell = grid_->Row() > 0 && grid_->Col() > 0;
    const QModelIndex current =
        cell ? model()->index(grid_->Row() - 1, grid_->Col()) : QModelIndex();
    static_cast<RowLabels*>(verticalHeader())
        ->set_current(is_label_current() ? grid_->Row() - 1 : -1);
    if (current != currentIndex()) setCurrentIndex(current);
    if (!cell) clearSelection();
    if (is_label_current() && hasAutoScroll()) show_rows(grid_->Row(), grid_->Row());
    if (is_label_current()) tell_label(grid_->Row());
}

// What is to be seen last is seen if there is no room for both.
void GridView::show_rows(int first, int last) {
    constexpr int kAnyShownCol = 1;
    const int sideways = horizontalScrollBar()->value();
    for (const int row : {first, last}) {
        if (row > 0) scrollTo(model()->index(row - 1, kAnyShownCol));
    }
    horizontalScrollBar()->setValue(sideways);
}

// To assistive technology the label is the row's header, which is where the keys are.
void GridView::tell_label(int row) {
    if (!hasFocus() || !QAccessible::isActive()) return;
    QAccessibleEvent event(this, QAccessible::Focus);
    const int parts_of_row = model()->columnCount() + 1;
    event.setChild(row * parts_of_row);
    QAccessible::updateAccessibility(&event);
}

void GridView::show_marks() {
    const RowRange& rows = grid_->marked_rows;
    static_cast<RowLabels*>(verticalHeader())->mark(rows.first - 1, rows.last - 1);
    viewport()->update();
}

void GridView::set_editing(bool on) {
    delegate_->editing = on;
    viewport()->update();
}

bool GridView::show_cell() {
    const QScopedValueRollback by_itself(scrolls_by_itself_, true);
    scrollTo(currentIndex());
    return viewport()->rect().contains(visualRect(currentIndex()));
}

CellPlaces::Place GridView::current_cell() {
    const QRect cell = visualRect(currentIndex()).translated(viewport()->pos());
    return {twips(*this, cell.x()), twips(*this, cell.y()), twips(*this, cell.width()),
            twips(*this, cell.height())};
}

// The cell at a place in the view: outside of the cells the nearest one, as it is for a drag that
// leaves them. A drag over labels does not go on to the headings.
MouseCell GridView::cell_at(const QPoint& position) const {
    const QPoint inside = position - viewport()->pos();
    const int first = std::max(rowAt(0), 0);
    const int headings = pressed_ == Pressed::label ? 0 : horizontalHeader()->height();
    // The view knows rows below its lower edge too, which nobody sees.
    int row = inside.y() < 0 ? -1 : rowAt(std::min(inside.y(), viewport()->height() - 1));
    if (inside.y() >= 0 && row < 0) row = model()->rowCount() - 1;
    if (inside.y() < -headings) row = first;
    int col = inside.x() < 0 ? 0 : columnAt(inside.x());
    if (col < 0) col = horizontalHeader()->logicalIndexAt(horizontalHeader()->length() - 1);
    return {row + 1, col};
}

// To the right of the last column, beside cells or headings.
bool GridView::is_beside_cells(const QPoint& position) const {
    const int x = position.x() - viewport()->x();
    return x >= 0 && columnAt(x) < 0;
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    auto* const part = qobject_cast<QWidget*>(watched);
    const bool header =
        part != nullptr && (part == verticalHeader()->viewport() ||
                            part == horizontalHeader()->viewport() || part == corner_);
    if (!header || !isEnabled()) return QTableView::eventFilter(watched, event);
    const auto position = [&] {
        return part->mapTo(this, static_cast<QMouseEvent*>(event)->position().toPoint());
    };
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            press(static_cast<const QMouseEvent&>(*event), position());
            return true;
        case QEvent::MouseButtonRelease:
            release(static_cast<const QMouseEvent&>(*event), position());
            return true;
        case QEvent::MouseMove:
            drag_to(static_cast<const QMouseEvent&>(*event), position());
            return true;
        default:
            return QTableView::eventFilter(watched, event);
    }
}

void GridView::press(const QMouseEvent& event, const QPoint& position) {
    double_click_ = false;
    pressed_ = Pressed::nowhere;
    setFocus(Qt::MouseFocusReason);
    if (is_beside_cells(position)) {
        pressed_ = Pressed::beside_cells;
        return;
    }
    const WithoutScrolling still(*this);
    const MouseCell cell = cell_at(position);
    const bool label = cell.col == 0 && cell.row > 0;
    const bool left = event.button() == Qt::LeftButton;
    pressed_ = label ? Pressed::label : Pressed::cell;
    dragged_to_ = cell.row;
    if (label && left) drag_.begin();
    if (label && left && event.modifiers().testFlag(Qt::ShiftModifier) && grid_->Row() > 0) {
        grid_->set_col(0);  // the rows from the current one on are marked
    } else {
        grid_->mouse_down(button_of(event.button()), cell);
    }
}

void GridView::drag_to(const QMouseEvent& event, const QPoint& position) {
    if (event.buttons().testFlag(Qt::LeftButton) && isEnabled()) {
        drag_.move_to(position);
    } else {
        drag_.end();
    }
}

// What a drag over labels has reached is marked as if it ended there.
void GridView::mark_to(const QPoint& position) {
    const MouseCell cell = cell_at(position);
    if (cell.row == dragged_to_) return;
    dragged_to_ = cell.row;
    grid_->mouse_up(MouseButton::left, cell);
}

void GridView::release(const QMouseEvent& event, const QPoint& position) {
    const WithoutScrolling still(*this);
    const MouseCell cell = cell_at(position);
    const Pressed pressed = std::exchange(pressed_, Pressed::nowhere);
    drag_.end();
    if (pressed == Pressed::beside_cells) {
        if (event.button() == Qt::LeftButton) grid_->clicked();
        return;
    }
    // The second release of a double click is no click, which would close what it opened, and the
    // cell that was meant may have been scrolled away from the mouse.
    if (double_click_) {
        double_click_ = false;
        grid_->mouse_up(button_of(event.button()), {grid_->Row(), grid_->Col()});
        return;
    }
    grid_->mouse_up(button_of(event.button()), cell);
    grid_->clicked();
}

void GridView::mousePressEvent(QMouseEvent* event) {
    press(*event, event->position().toPoint() + viewport()->pos());
}

// The view's own selection by dragging has no part in this grid.
void GridView::mouseMoveEvent(QMouseEvent* event) {
    drag_to(*event, event->position().toPoint() + viewport()->pos());
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
    release(*event, event->position().toPoint() + viewport()->pos());
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    press(*event, event->position().toPoint() + viewport()->pos());
    if (event->button() != Qt::LeftButton || pressed_ == Pressed::beside_cells) return;
    double_click_ = true;
    grid_->double_clicked();
}

void GridView::keyPressEvent(QKeyEvent* event) {
    const auto commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const bool command = (event->modifiers() & commands) != 0;
    const QString typed = event->text();
    if (is_used(*event)) return;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            grid_->double_clicked();
            return;
        case Qt::Key_F2:
            open_behind_text();
            return;
        case Qt::Key_Space:
        case Qt::Key_Select:
            if (!command && !cell_rules::is_edited_as_text(grid_->Col())) type_into_cell(*event);
            return;
        default:
            break;
    }
    if (!command && typed.size() == 1 && typed.front().isPrint()) {
        type_into_cell(*event);
    } else {
        QTableView::keyPressEvent(event);
    }
}

bool GridView::is_used(const QKeyEvent& event) {
    const auto key = grid_key_of(event, isRightToLeft());
    const int page = viewport()->height() / std::max(rowHeight(0), 1);
    return key && grid_->key_down &&
           grid_->key_down(*key, event.modifiers().testFlag(Qt::ShiftModifier), std::max(page, 1));
}

// In the label column there is no current index to go on from.
QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (is_label_current()) return {};
    return QTableView::moveCursor(action, modifiers);
}

// To go on with a text instead of replacing it.
void GridView::open_behind_text() {
    grid_->double_clicked();
    auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (line != nullptr) line->end(false);
}

// A character that is typed on a cell opens what edits it and is the first in it.
void GridView::type_into_cell(QKeyEvent& event) {
    grid_->double_clicked();
    QWidget* const editor = QApplication::focusWidget();
    if (editor != nullptr && editor != this) QCoreApplication::sendEvent(editor, &event);
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!current.isValid() || grid_ == nullptr) return;
    grid_->set_row(current.row() + 1);
    grid_->set_col(current.column());
}

void GridView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (is_label_current()) tell_label(grid_->Row());
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && grid_ != nullptr) apply_sizes();
}

// A view that has become larger moves its last rows to its lower edge.
void GridView::resizeEvent(QResizeEvent* event) {
    const QScopedValueRollback by_itself(scrolls_by_itself_, true);
    QTableView::resizeEvent(event);
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
