// Blocks of rows: selecting them in the label column, the buttons, the menu, and copying a picked
// value with the right button.

#include <gmock/gmock.h>

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>

#include "gui/support/appearance.h"
#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class EditingRows : public EditingTest {
  protected:
    void select(int first, int last) {
        press_at(place_of_label(first).center());
        drag_to(place_of_label(last).center());
        release_at(place_of_label(last).center());
    }
    // The whole table, through labels that are not in sight together.
    void select_all() {
        grid().verticalScrollBar()->setValue(0);
        press_at(place_of_label(1).center());
        grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
        release_at(place_of_label(640).center());
        ASSERT_THAT(marked(), Pair(1, 640));
    }
    QColor background_of_cell(int row, int col) {
        return background_of(picture_of(window(), place_of_cell(row, col).adjusted(2, 2, -2, -2)));
    }
    QColor background_of_label(int row) {
        return background_of(picture_of(window(), place_of_label(row).adjusted(2, 2, -2, -2)));
    }
    // The rows from 1 to 8 that look marked, by their labels and by their cells.
    std::vector<int> looking_marked() {
        std::vector<int> rows;
        const QColor highlight = grid().palette().color(QPalette::Highlight);
        for (int row = 1; row <= 8; ++row) {
            const bool label = background_of_label(row) == highlight;
            const bool cells =
                background_of_cell(row, 4) != background_of_cell(9 + (row + 1) % 2, 4);
            EXPECT_EQ(label, cells) << row;
            if (label) rows.push_back(row);
        }
        return rows;
    }
    std::string row_text(int row) {
        return cell(row, 1) + "," + cell(row, 2) + "," + cell(row, 3) + "," + cell(row, 4);
    }
    // Opens the menu with the right button on a label; does something with it.
    void with_pop_up(int row, const std::function<void(QMenu&)>& act) {
        Robot robot;
        robot.when([] { return QApplication::activePopupWidget() != nullptr; },
                   [&] {
                       auto& menu = dynamic_cast<QMenu&>(*QApplication::activePopupWidget());
                       // The menu has the mouse by the time the button is released.
                       QTest::mouseRelease(menu.windowHandle(), Qt::RightButton, {}, {-9, -9});
                       act(menu);
                   });
        robot.during([&] { press_at(place_of_label(row).center(), Qt::RightButton); });
        window().activateWindow();
    }
};

TEST_F(EditingRows, a_click_on_a_label_selects_its_row) {
    click(place_of_label(4).center());
    EXPECT_THAT(marked(), Pair(4, 4));
    EXPECT_THAT(current(), Pair(4, 0));
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_THAT(looking_marked(), ElementsAre(4));
    click(place_of_label(7).center());
    EXPECT_THAT(marked(), Pair(7, 7));
    EXPECT_THAT(looking_marked(), ElementsAre(7));
}

TEST_F(EditingRows, a_drag_over_labels_selects_them_all_down_or_up) {
    select(3, 6);
    EXPECT_THAT(marked(), Pair(3, 6));
    EXPECT_THAT(looking_marked(), ElementsAre(3, 4, 5, 6));
    select(8, 5);
    EXPECT_THAT(marked(), Pair(5, 8));
    EXPECT_THAT(looking_marked(), ElementsAre(5, 6, 7, 8));
}

TEST_F(EditingRows, a_drag_that_ends_beside_the_labels_counts_by_its_row) {
    press_at(place_of_label(3).center());
    release_at(place_of_cell(7, 3).center());
    EXPECT_THAT(marked(), Pair(3, 7));
    press_at(place_of_label(3).center());
    release_at(QPoint(1, place_of_label(5).center().y()));
    EXPECT_THAT(marked(), Pair(3, 5));
}

TEST_F(EditingRows, a_drag_that_leaves_the_view_ends_at_the_last_row_in_sight) {
    grid().verticalScrollBar()->setValue(100);
    const int height = grid().viewport()->height();
    const int last = grid().rowAt(height - 1) + 1;
    press_at(place_of_label(105).center());
    release_at(QPoint(place_of_label(105).center().x(), window().size().height() - 2));
    EXPECT_THAT(marked(), Pair(105, last));
    press_at(place_of_label(105).center());
    release_at(QPoint(place_of_label(105).center().x(), 1));
    EXPECT_THAT(marked(), Pair(101, 105));
}

TEST_F(EditingRows, a_click_on_a_cell_leaves_the_block_selected) {
    select(3, 6);
    click(place_of_cell(9, 2).center());
    EXPECT_THAT(marked(), Pair(3, 6));
    EXPECT_THAT(current(), Pair(9, 2));
}

TEST_F(EditingRows, a_drag_over_cells_selects_no_rows) {
    press_at(place_of_cell(3, 2).center());
    drag_to(place_of_cell(6, 3).center());
    release_at(place_of_cell(6, 3).center());
    EXPECT_THAT(looking_marked(), IsEmpty());
    EXPECT_THAT(current(), Pair(6, 3));
}

TEST_F(EditingRows, the_block_moves_with_the_buttons_and_stays_marked) {
    for (int row = 2; row <= 9; ++row) set_cell(row, 1, "R" + std::to_string(row));
    select(5, 7);
    click_button("Command1");
    EXPECT_EQ(cell(5, 1), "R8");
    EXPECT_EQ(cell(6, 1) + cell(7, 1) + cell(8, 1), "R5R6R7");
    EXPECT_THAT(marked(), Pair(6, 8));
    EXPECT_THAT(looking_marked(), ElementsAre(6, 7, 8));
    for (int times = 0; times < 3; ++times) click_button("Command2");
    EXPECT_EQ(cell(3, 1) + cell(4, 1) + cell(5, 1), "R5R6R7");
    EXPECT_EQ(cell(6, 1) + cell(7, 1) + cell(8, 1), "R3R4R8");
    EXPECT_THAT(looking_marked(), ElementsAre(3, 4, 5));
}

TEST_F(EditingRows, the_buttons_stop_at_the_ends_of_the_table) {
    select(1, 2);
    const std::string first = row_text(1);
    click_button("Command2");
    EXPECT_THAT(marked(), Pair(1, 2));
    EXPECT_EQ(row_text(1), first);
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    select(639, 640);
    const std::string last = row_text(640);
    click_button("Command1");
    EXPECT_THAT(marked(), Pair(639, 640));
    EXPECT_EQ(row_text(640), last);
}

TEST_F(EditingRows, the_label_columns_menu_offers_what_the_edit_menu_offers) {
    set_current(4, 0);
    const auto enabled = [&](QMenu& menu) {
        std::vector<std::string> names;
        for (const QAction* const action : menu.actions()) {
            const std::string name = qt::to_utf8(action->objectName());
            if (action->isEnabled() && name.starts_with("mnu")) names.push_back(name);
        }
        return names;
    };
    std::vector<std::string> offered{"not asked"};
    const auto look_and_leave = [&](QMenu& menu) {
        EXPECT_EQ(menu.objectName(), "mnuEdit");
        offered = enabled(menu);
        QTest::keyClick(&menu, Qt::Key_Escape);
    };
    with_pop_up(4, look_and_leave);
    EXPECT_THAT(offered, IsEmpty());
    select(3, 6);
    with_pop_up(4, look_and_leave);
    EXPECT_THAT(offered, ElementsAre("mnuCut", "mnuCopy", "mnuPaste"));
    EXPECT_THAT(marked(), Pair(3, 6));
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(EditingRows, cut_in_the_label_columns_menu_cuts_the_block) {
    const std::string outside = row_text(7);
    select(3, 6);
    with_pop_up(4, [&](QMenu& menu) {
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
        menu.close();
    });
    for (int row = 3; row <= 6; ++row) EXPECT_EQ(row_text(row), ",,,") << row;
    EXPECT_EQ(row_text(7), outside);
}

TEST_F(EditingRows, copy_and_paste_with_the_menu_ask_before_they_overwrite) {
    const std::string copied = row_text(1) + row_text(2);
    select(1, 2);
    choose("mnuEdit", "mnuCopy");
    for (const int row : {10, 11}) {
        for (int col = 1; col <= 4; ++col) set_cell(row, col, "");
    }
    click(place_of_cell(10, 1).center());
    EXPECT_TRUE(answering({}, [&] { choose("mnuEdit", "mnuPaste"); }).empty());
    EXPECT_EQ(row_text(10) + row_text(11), copied);
    EXPECT_THAT(marked(), Pair(10, 11));

    const std::string there = row_text(4);
    click(place_of_cell(4, 1).center());
    const auto seen =
        answering({press_key(Qt::Key_Escape)}, [&] { choose("mnuEdit", "mnuPaste"); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].text, "There is already data in the cells to be pasted to. Overwrite?");
    EXPECT_EQ(seen[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(seen[0].icon, QMessageBox::Question);
    EXPECT_EQ(row_text(4), there);
    window().activateWindow();
    answering({press(QMessageBox::Yes)}, [&] { choose("mnuEdit", "mnuPaste"); });
    EXPECT_EQ(row_text(4) + row_text(5), copied);
}

TEST_F(EditingRows, a_right_click_copies_the_picked_value_in_its_column) {
    for (int col = 1; col <= 14; ++col) set_cell(6, col, "");
    set_cell(3, 2, "145.50000");
    click(place_of_cell(3, 2).center());
    click(place_of_cell(6, 2).center(), Qt::RightButton);
    EXPECT_EQ(cell(6, 2), "145.50000");
    const std::vector<std::string> defaults = {"NFM",    "Off", "5 KHz", "False", "SIMP",
                                               "000000", "OFF", "100.0", "023",   "MAX"};
    for (int col = 3; col <= 12; ++col) {
        EXPECT_EQ(cell(6, col), defaults[static_cast<std::size_t>(col - 3)]) << col;
    }
    EXPECT_EQ(cell(6, 1), "");
    EXPECT_EQ(cell(6, 13), "");
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    // In another column nothing is copied.
    click(place_of_cell(6, 1).center(), Qt::RightButton);
    EXPECT_EQ(cell(6, 1), "");
    EXPECT_THAT(current(), Pair(6, 1));
}

TEST_F(EditingRows, an_empty_picked_value_blanks_all_but_tags) {
    for (const int col : {1, 3}) {
        set_cell(3, col, "");
        set_cell(6, col, "KEPT");
        click(place_of_cell(3, col).center());
        click(place_of_cell(6, col).center(), Qt::RightButton);
        EXPECT_EQ(cell(6, col), col == 1 ? "KEPT" : "") << col;
    }
}

TEST_F(EditingRows, a_right_click_while_a_cell_is_edited_closes_it_and_loses_nothing) {
    open(3, 1);
    type("typed");
    click(place_of_cell(6, 2).center(), Qt::RightButton);
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(cell(3, 1), "TYPED");
}

TEST_F(EditingRows, work_on_all_rows_is_one_change_of_the_model) {
    const std::string first = row_text(1);
    set_current(1, 1);
    select_all();
    const QSignalSpy changes(grid().model(), &QAbstractItemModel::dataChanged);
    auto changed = [&, before = 0]() mutable {
        const int more = static_cast<int>(changes.size()) - before;
        before = static_cast<int>(changes.size());
        return more;
    };
    choose("mnuEdit", "mnuCut");
    EXPECT_EQ(changed(), 1);
    EXPECT_EQ(row_text(1), ",,,");
    set_current(1, 1);
    choose("mnuEdit", "mnuPaste");
    EXPECT_EQ(changed(), 1);
    EXPECT_EQ(row_text(1), first);
    click_button("Command3");
    EXPECT_EQ(changed(), 1);
    EXPECT_EQ(row_text(1), ",,,");
    // A move of all but one.
    click_button("Command5");
    changed();
    grid().verticalScrollBar()->setValue(0);
    press_at(place_of_label(1).center());
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    release_at(place_of_label(639).center());
    click_button("Command1");
    EXPECT_EQ(changed(), 1);
    click_button("Command2");
    EXPECT_EQ(changed(), 1);
}

TEST_F(EditingRows, a_deleted_row_that_was_grey_stays_grey_and_a_cut_one_does_not) {
    for (const int row : {3, 4}) {
        set_cell(row, 6, "True");
        for (int col = 1; col <= 14; ++col) form().MSFlexGrid1.set_colour(row, col, 0xC0C0C0);
    }
    select(3, 3);
    click_button("Command3");
    EXPECT_EQ(colour(3, 2), QColor(0xC0, 0xC0, 0xC0));
    select(4, 4);
    choose("mnuEdit", "mnuCut");
    EXPECT_FALSE(index(4, 2).data(Qt::ForegroundRole).isValid());
}

}  // namespace
}  // namespace memwright::gui
