// The grid: its columns and rows, what stays in sight, and the current cell.

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QSignalSpy>
#include <climits>

#include "gui/support/window_test.h"

namespace memwright::gui {
namespace {

using ::testing::Eq;
using ::testing::Pair;

class Grid : public StartedWindowTest {
  protected:
    void SetUp() override {
        start();
        open_some_image();
    }

    std::pair<int, int> current_in_view() {
        return {grid().currentIndex().row() + 1, grid().currentIndex().column()};
    }
    std::pair<int, int> current_in_core() {
        return {form().MSFlexGrid1.Row(), form().MSFlexGrid1.Col()};
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&grid(), key, modifiers);
        EXPECT_EQ(current_in_view(), current_in_core());
    }

    void set_current(int row, int col) {
        form().MSFlexGrid1.set_row(row);
        form().MSFlexGrid1.set_col(col);
    }

    QModelIndex index(int row, int col) { return grid().model()->index(row - 1, col); }

    const qt::CornerHeading& corner() {
        return dynamic_cast<qt::CornerHeading&>(widget<QWidget>("CornerHeading"));
    }

    // The text at the top of the label column.
    QString top_label() {
        const int row = grid().verticalHeader()->logicalIndexAt(0);
        return grid().model()->headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
    }

    bool is_in_sight(int row, int col) {
        const QRect place = grid().visualRect(index(row, col));
        return place.isValid() && grid().viewport()->rect().contains(place);
    }
};

TEST_F(Grid, shows_five_columns_with_their_headings_at_their_widths) {
    QHeaderView& headings = *grid().horizontalHeader();
    const std::map<int, std::pair<int, QString>> shown = {
        {1, {80, "Tag"}}, {2, {100, "Freq"}}, {3, {60, "Mode"}}, {4, {53, "Pref"}}};
    ASSERT_EQ(grid().model()->columnCount(), 15);
    for (int col = 0; col < 15; ++col) {
        EXPECT_EQ(headings.isSectionHidden(col), !shown.contains(col)) << col;
    }
    for (const auto& [col, column] : shown) {
        EXPECT_EQ(headings.sectionSize(col), column.first) << col;
        EXPECT_EQ(grid().model()->headerData(col, Qt::Horizontal, Qt::DisplayRole), column.second);
    }
    EXPECT_EQ(grid().verticalHeader()->width(), 113);
    EXPECT_EQ(corner().text(), "#");
    EXPECT_EQ(corner().size(), QSize(113, 21));
}

TEST_F(Grid, questions_about_rows_and_columns_that_are_not_there_are_answered_with_nothing) {
    const QAbstractItemModel& model = *grid().model();
    for (const int role :
         {static_cast<int>(Qt::DisplayRole), static_cast<int>(Qt::TextAlignmentRole),
          static_cast<int>(Qt::AccessibleTextRole)}) {
        for (const int section : {INT_MIN, -1, 15, 640, 641, INT_MAX}) {
            EXPECT_FALSE(model.headerData(section, Qt::Horizontal, role).isValid()) << section;
        }
        for (const int section : {INT_MIN, -1, 640, 641, INT_MAX}) {
            EXPECT_FALSE(model.headerData(section, Qt::Vertical, role).isValid()) << section;
        }
    }
    EXPECT_EQ(model.headerData(639, Qt::Vertical, Qt::DisplayRole), "Bank 9 - 63");
    EXPECT_EQ(model.headerData(14, Qt::Horizontal, Qt::DisplayRole), "");
}

TEST_F(Grid, a_cell_of_a_table_that_has_become_smaller_is_answered_with_nothing) {
    const QModelIndex last = index(640, 14);
    ASSERT_TRUE(last.data().isValid());
    form().MSFlexGrid1.set_rows(10);
    EXPECT_FALSE(last.data().isValid());
    EXPECT_FALSE(last.data(Qt::TextAlignmentRole).isValid());
}

TEST_F(Grid, columns_and_rows_cannot_be_resized_by_hand) {
    for (const QHeaderView* const header : {grid().horizontalHeader(), grid().verticalHeader()}) {
        EXPECT_EQ(header->sectionResizeMode(1), QHeaderView::Fixed);
    }
}

TEST_F(Grid, has_a_label_for_every_memory) {
    ASSERT_EQ(grid().model()->rowCount(), 640);
    const auto label = [&](int row) {
        return qt::to_utf8(
            grid().model()->headerData(row - 1, Qt::Vertical, Qt::DisplayRole).toString());
    };
    for (int row = 1; row <= 640; ++row) {
        const std::string bank = std::to_string((row - 1) / 64);
        ASSERT_EQ(label(row), "Bank " + bank + " - " + std::to_string((row - 1) % 64));
    }
}

TEST_F(Grid, rows_are_as_high_as_the_table_says_unless_the_font_needs_more) {
    EXPECT_EQ(grid().rowHeight(0), 21);
    EXPECT_EQ(grid().rowHeight(639), 21);
    EXPECT_EQ(grid().horizontalHeader()->height(), 21);

    QFont font = grid().font();
    font.setPixelSize(40);
    grid().setFont(font);
    EXPECT_GT(grid().rowHeight(0), 40);
    EXPECT_EQ(grid().horizontalHeader()->height(), grid().rowHeight(0));
}

TEST_F(Grid, the_headings_and_the_labels_stay_in_sight_when_the_table_is_scrolled) {
    const QRect headings = grid().horizontalHeader()->geometry();
    EXPECT_EQ(top_label(), "Bank 0 - 0");
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    EXPECT_EQ(grid().horizontalHeader()->geometry(), headings);
    EXPECT_TRUE(grid().horizontalHeader()->isVisible());
    EXPECT_TRUE(top_label().startsWith("Bank 9 - "));
    EXPECT_TRUE(is_in_sight(640, 1));

    // Far too narrow for the columns.
    grid().resize(250, grid().height());
    const QRect labels = grid().verticalHeader()->geometry();
    grid().horizontalScrollBar()->setValue(grid().horizontalScrollBar()->maximum());
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    ASSERT_GT(grid().horizontalScrollBar()->value(), 0);
    EXPECT_TRUE(is_in_sight(640, 4));
    EXPECT_FALSE(is_in_sight(640, 1));
    EXPECT_EQ(grid().verticalHeader()->geometry(), labels);
    EXPECT_TRUE(grid().verticalHeader()->isVisible());
}

TEST_F(Grid, the_mouse_wheel_scrolls_without_changing_the_current_cell) {
    const auto before = current_in_core();
    const QPointF inside(grid().viewport()->rect().center());
    QWheelEvent turn(inside, grid().viewport()->mapToGlobal(inside), QPoint(), QPoint(0, -1200),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(grid().viewport(), &turn);
    EXPECT_GT(grid().verticalScrollBar()->value(), 0);
    EXPECT_EQ(current_in_core(), before);
}

TEST_F(Grid, the_current_cell_follows_the_arrow_keys) {
    EXPECT_THAT(current_in_view(), Pair(1, 1));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_THAT(current_in_core(), Pair(3, 1));
    press(Qt::Key_Right);
    EXPECT_THAT(current_in_core(), Pair(3, 2));
    press(Qt::Key_Up);
    EXPECT_THAT(current_in_core(), Pair(2, 2));
    press(Qt::Key_Left);
    EXPECT_THAT(current_in_core(), Pair(2, 1));
}

TEST_F(Grid, the_current_cell_stops_at_the_edges_of_what_is_shown) {
    press(Qt::Key_Up);
    EXPECT_THAT(current_in_core(), Pair(1, 1));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_THAT(current_in_core(), Pair(640, 4));
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    EXPECT_THAT(current_in_core(), Pair(640, 4));
    EXPECT_TRUE(is_in_sight(640, 4));
}

TEST_F(Grid, home_and_end_go_along_the_row_and_with_control_through_the_table) {
    set_current(100, 2);
    press(Qt::Key_End);
    EXPECT_THAT(current_in_core(), Pair(100, 4));
    press(Qt::Key_Home);
    EXPECT_THAT(current_in_core(), Pair(100, 1));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_THAT(current_in_core(), Pair(640, 4));
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_THAT(current_in_core(), Pair(1, 1));
}

TEST_F(Grid, page_keys_go_on_by_what_is_in_sight) {
    const int rows_in_sight = grid().viewport()->height() / grid().rowHeight(0);
    ASSERT_GT(rows_in_sight, 3);
    press(Qt::Key_PageDown);
    EXPECT_GE(current_in_core().first, rows_in_sight);
    EXPECT_LE(current_in_core().first, rows_in_sight + 2);
    EXPECT_EQ(current_in_core().second, 1);
    EXPECT_TRUE(is_in_sight(current_in_core().first, 1));
    press(Qt::Key_PageUp);
    EXPECT_THAT(current_in_core(), Pair(1, 1));
}

TEST_F(Grid, every_row_is_reached_with_the_keyboard) {
    for (int row = 2; row <= 640; ++row) {
        QTest::keyClick(&grid(), Qt::Key_Down);
        ASSERT_EQ(form().MSFlexGrid1.Row(), row);
    }
    EXPECT_TRUE(is_in_sight(640, 1));
}

TEST_F(Grid, a_click_makes_a_cell_the_current_one) {
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {},
                      grid().visualRect(index(5, 3)).center());
    EXPECT_THAT(current_in_core(), Pair(5, 3));
    EXPECT_EQ(current_in_view(), current_in_core());
}

TEST_F(Grid, a_click_after_scrolling_meets_the_row_that_is_seen) {
    grid().scrollTo(index(300, 1), QAbstractItemView::PositionAtTop);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {},
                      grid().visualRect(index(303, 2)).center());
    EXPECT_THAT(current_in_core(), Pair(303, 2));
}

TEST_F(Grid, the_core_moves_the_current_cell_and_it_comes_into_sight) {
    set_current(500, 3);
    EXPECT_THAT(current_in_view(), Pair(500, 3));
    EXPECT_TRUE(is_in_sight(500, 3));
    set_current(2, 4);
    EXPECT_THAT(current_in_view(), Pair(2, 4));
    EXPECT_TRUE(is_in_sight(2, 4));
}

TEST_F(Grid, one_cell_at_a_time_is_marked) {
    set_current(7, 2);
    EXPECT_THAT(grid().selectionModel()->selectedIndexes(), ::testing::ElementsAre(index(7, 2)));
}

TEST_F(Grid, no_cell_is_marked_while_the_label_column_is_current) {
    set_current(7, 2);
    set_current(7, 0);
    EXPECT_FALSE(grid().currentIndex().isValid());
    EXPECT_FALSE(grid().selectionModel()->hasSelection());
    set_current(500, 0);
    EXPECT_TRUE(is_in_sight(500, 1));
}

TEST_F(Grid, space_and_select_search_nothing_and_hide_no_cell) {
    const auto expect_current = [&](int row, int col) {
        EXPECT_THAT(current_in_view(), Pair(row, col));
        EXPECT_EQ(current_in_core(), current_in_view());
        EXPECT_TRUE(grid().selectionModel()->isSelected(index(row, col)));
    };
    form().MSFlexGrid1.set_text(9, 1, " B");
    set_current(7, 1);
    for (const Qt::KeyboardModifier modifier :
         {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        for (const int key : {Qt::Key_Space, Qt::Key_Select}) {
            QTest::sendKeyEvent(QTest::Click, &grid(), static_cast<Qt::Key>(key), " ", modifier);
            expect_current(7, 1);
        }
    }
    // Nor does what is typed in two parts.
    form().MSFlexGrid1.set_text(9, 1, "?? B");
    QTest::sendKeyEvent(QTest::Click, &grid(), Qt::Key_unknown,
                        QString::fromUtf8("\xF0\x9F\x98\x80"), Qt::NoModifier);
    expect_current(7, 1);
    set_current(7, 3);
    QTest::keyClick(&grid(), Qt::Key_Space, Qt::ControlModifier);
    expect_current(7, 3);
}

TEST_F(Grid, a_text_that_changes_in_the_core_changes_on_the_screen) {
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    form().MSFlexGrid1.set_text(3, 1, "NEW");
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex(), index(3, 1));
    EXPECT_EQ(changes[0][1].toModelIndex(), index(3, 1));
    EXPECT_EQ(index(3, 1).data().toString(), "NEW");
}

TEST_F(Grid, a_table_that_is_rebuilt_is_repainted_once_and_stays_where_it_was_scrolled_to) {
    set_current(310, 2);
    grid().scrollTo(index(305, 1), QAbstractItemView::PositionAtTop);
    const int scrolled_to = grid().verticalScrollBar()->value();
    ASSERT_EQ(scrolled_to, 304);
    const QString frequency = index(310, 2).data().toString();
    form().MSFlexGrid1.set_text(310, 2, "1.00000");

    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    const QSignalSpy resets(grid().model(), &QAbstractItemModel::modelReset);
    QTest::mouseClick(&widget<QPushButton>("Command5"), Qt::LeftButton);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(resets.size(), 0);
    EXPECT_EQ(index(310, 2).data().toString(), frequency);
    EXPECT_EQ(grid().verticalScrollBar()->value(), scrolled_to);
    EXPECT_THAT(current_in_view(), Pair(310, 2));
    EXPECT_THAT(current_in_core(), Pair(310, 2));
}

TEST_F(Grid, another_image_keeps_the_place_too) {
    set_current(310, 2);
    const int scrolled_to = grid().verticalScrollBar()->value();
    ASSERT_GT(scrolled_to, 0);
    open_some_image("other.120");
    EXPECT_EQ(grid().verticalScrollBar()->value(), scrolled_to);
    EXPECT_THAT(current_in_view(), Pair(310, 2));
}

TEST_F(Grid, is_locked_as_a_whole) {
    EXPECT_TRUE(grid().isEnabled());
    form().DisableGui();
    EXPECT_FALSE(grid().isEnabled());
    const auto before = current_in_core();
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {},
                      grid().visualRect(index(5, 3)).center());
    EXPECT_EQ(current_in_core(), before);
    form().unlock_gui();
    EXPECT_TRUE(grid().isEnabled());
}

using GridAtStart = StartedWindowTest;

TEST_F(GridAtStart, is_disabled_and_shows_empty_memories) {
    EXPECT_FALSE(grid().isEnabled());
    ASSERT_EQ(grid().model()->rowCount(), 640);
    for (int row = 0; row < 640; ++row) {
        for (int col = 1; col < 15; ++col) {
            ASSERT_EQ(grid().model()->index(row, col).data().toString(), "");
        }
    }
}

}  // namespace
}  // namespace memwright::gui
