// The keys that move between cells, and those that open and close the overlays.

#include <gmock/gmock.h>

#include <QScrollBar>

#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

constexpr int kLast = 640;
constexpr int kLastLeft = 500;  // from here on Tab stays in its row

class EditingKeys : public EditingTest {
  protected:
    // The overlay that is open is the right one, lies over the current cell, which is in sight, and
    // has the focus.
    void expect_editing(int row, int col) {
        SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(col));
        EXPECT_THAT(current(), Pair(row, col));
        const std::string overlay = col <= 2 ? "TxtGrid" : "CboGrid";
        EXPECT_EQ(open_overlay(), overlay);
        EXPECT_EQ(focused(), overlay);
        EXPECT_TRUE(is_in_sight(row, col));
        auto& shown = widget<QWidget>(overlay.c_str());
        EXPECT_TRUE(place_of_cell(row, col).contains(place_of(shown, shown.rect()).center()));
        // A frequency is shown as it was typed.
        if (col == 2) return;
        EXPECT_EQ(col == 1 ? qt::to_utf8(box().text()) : list_text(), cell(row, col));
    }
    void expect_after(Qt::Key pressed, Qt::KeyboardModifiers modifiers, std::pair<int, int> from,
                      std::pair<int, int> to) {
        open(from.first, from.second);
        expect_editing(from.first, from.second);
        key(pressed, modifiers);
        expect_editing(to.first, to.second);
    }
};

TEST_F(EditingKeys, tab_goes_along_the_row_and_on_to_the_next) {
    for (const int row : {1, kLastLeft}) {
        for (const int col : {1, 2, 3}) {
            expect_after(Qt::Key_Tab, {}, {row, col}, {row, col + 1});
        }
        const int next = row < kLastLeft ? row + 1 : row;
        expect_after(Qt::Key_Tab, {}, {row, 4}, {next, 1});
    }
}

TEST_F(EditingKeys, shift_tab_goes_back_to_the_first_row_and_no_further) {
    for (const int row : {1, kLast}) {
        for (const int col : {2, 3, 4}) {
            expect_after(Qt::Key_Backtab, Qt::ShiftModifier, {row, col}, {row, col - 1});
        }
        expect_after(Qt::Key_Backtab, Qt::ShiftModifier, {row, 1}, {row >= 2 ? row - 1 : row, 4});
    }
}

TEST_F(EditingKeys, a_tab_with_shift_that_is_not_called_backtab_goes_back_too) {
    expect_after(Qt::Key_Tab, Qt::ShiftModifier, {5, 2}, {5, 1});
    expect_after(Qt::Key_Tab, Qt::ShiftModifier, {5, 4}, {5, 3});
}

TEST_F(EditingKeys, tab_never_leaves_the_grid_even_when_it_is_held_down) {
    open(490, 1);
    for (int presses = 0; presses < 60; ++presses) {
        key(Qt::Key_Tab);
        ASSERT_NE(open_overlay(), "none");
        ASSERT_EQ(focused(), open_overlay());
    }
    expect_editing(kLastLeft, 1);
    for (int presses = 0; presses < 30; ++presses) key(Qt::Key_Backtab, Qt::ShiftModifier);
    expect_editing(492, 3);
    // With Control too, which changes windows elsewhere.
    key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(focused(), "CboGrid");
    key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(focused(), "CboGrid");
}

TEST_F(EditingKeys, up_enter_and_down_go_from_row_to_row) {
    for (const int col : {1, 2}) {
        for (const int row : {1, kLast}) {
            expect_after(Qt::Key_Up, {}, {row, col}, {row >= 2 ? row - 1 : 1, col});
        }
        for (const Qt::Key down : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
            for (const int row : {1, kLast - 1}) {
                expect_after(down, {}, {row, col}, {row + 1, col});
            }
        }
    }
}

TEST_F(EditingKeys, the_arrows_leave_the_text_only_at_its_ends) {
    set_cell(5, 1, "AB");
    set_cell(5, 2, "145.50000");
    open(5, 1);
    key(Qt::Key_Home);
    key(Qt::Key_Left);
    expect_editing(5, 1);
    key(Qt::Key_Right);
    EXPECT_EQ(box().cursorPosition(), 1);
    key(Qt::Key_Right);
    EXPECT_EQ(box().cursorPosition(), 2);
    expect_editing(5, 1);
    key(Qt::Key_Right);
    expect_editing(5, 2);

    key(Qt::Key_End);
    key(Qt::Key_Right);
    expect_editing(5, 2);
    key(Qt::Key_Left);
    expect_editing(5, 2);
    EXPECT_EQ(box().cursorPosition(), 8);
    key(Qt::Key_Home);
    key(Qt::Key_Left);
    expect_editing(5, 1);
}

TEST_F(EditingKeys, right_goes_on_at_once_from_a_tag_that_was_just_opened) {
    set_cell(5, 1, "AB");
    open(5, 1);
    EXPECT_EQ(box().selectedText(), "AB");
    key(Qt::Key_Right);
    expect_editing(5, 2);
    // From a frequency there is no going on.
    set_cell(5, 2, "145.50000");
    open(5, 2);
    key(Qt::Key_Right);
    expect_editing(5, 2);
    EXPECT_FALSE(box().hasSelectedText());
    EXPECT_EQ(box().cursorPosition(), 9);
}

TEST_F(EditingKeys, an_arrow_unselects_a_part_of_the_text_first) {
    set_cell(5, 1, "ABC");
    open(5, 1);
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(box().selectedText(), "BC");
    key(Qt::Key_Right);
    expect_editing(5, 1);
    EXPECT_FALSE(box().hasSelectedText());
    EXPECT_EQ(box().cursorPosition(), 3);
    key(Qt::Key_Right);
    expect_editing(5, 2);
}

TEST_F(EditingKeys, f2_puts_the_caret_behind_the_text_and_whatever_else_opens_it_selects_it) {
    set_cell(7, 1, "AB");
    set_cell(7, 2, "145.50000");
    for (const int col : {1, 2}) {
        const auto length = static_cast<int>(cell(7, col).size());
        set_current(7, col);
        key(Qt::Key_F2);
        EXPECT_FALSE(box().hasSelectedText());
        EXPECT_EQ(box().cursorPosition(), length);
        key(Qt::Key_Escape);
        key(Qt::Key_Return);
        EXPECT_EQ(box().selectedText().size(), length);
        key(Qt::Key_Escape);
    }
    set_current(7, 1);
    key(Qt::Key_F2);
    type("c");
    EXPECT_EQ(cell(7, 1), "ABC");
    key(Qt::Key_Tab);
    EXPECT_EQ(box().selectedText(), "145.50000");
}

TEST_F(EditingKeys, home_end_and_arrows_with_modifiers_act_in_the_text) {
    set_cell(5, 1, "AB CD");
    open(5, 1);
    key(Qt::Key_Home);
    EXPECT_EQ(box().cursorPosition(), 0);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(box().cursorPosition(), 3);
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(box().selectedText(), "C");
    key(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(box().selectedText(), "CD");
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_End);
    EXPECT_EQ(box().cursorPosition(), 5);
    EXPECT_FALSE(box().hasSelectedText());
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier}) {
        for (const Qt::Key arrow : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) key(arrow, modifier);
        key(Qt::Key_Home);
        key(Qt::Key_Left, modifier);
        key(Qt::Key_End);
        expect_editing(5, 1);
    }
}

TEST_F(EditingKeys, keys_of_the_number_pad_count_too) {
    expect_after(Qt::Key_Down, Qt::KeypadModifier, {5, 1}, {6, 1});
    expect_after(Qt::Key_Enter, Qt::KeypadModifier, {5, 1}, {6, 1});
}

TEST_F(EditingKeys, f2_and_enter_open_what_the_cell_is_edited_with) {
    for (const Qt::Key opening : {Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter}) {
        for (const int col : {1, 2, 3, 4}) {
            set_current(7, col);
            grid().setFocus();
            key(opening);
            expect_editing(7, col);
            key(Qt::Key_Escape);
        }
    }
}

TEST_F(EditingKeys, typing_on_a_cell_opens_its_text_box_with_what_is_typed) {
    set_current(7, 1);
    type("new");
    expect_editing(7, 1);
    EXPECT_EQ(cell(7, 1), "NEW");
    key(Qt::Key_Escape);
    set_current(7, 2);
    type("146");
    EXPECT_EQ(focused(), "TxtGrid");
    EXPECT_EQ(box().text(), "146");
    EXPECT_EQ(cell(7, 2), "146.00000");
}

TEST_F(EditingKeys, typing_on_a_cell_with_choices_loses_nothing) {
    set_current(7, 3);
    type("WFM");
    expect_editing(7, 3);
    EXPECT_EQ(cell(7, 3), "WFM");
}

TEST_F(EditingKeys, a_character_that_is_no_tag_leaves_the_tag_as_it_is) {
    set_cell(7, 1, "OLD");
    set_current(7, 1);
    type("#");
    EXPECT_EQ(cell(7, 1), "OLD");
}

TEST_F(EditingKeys, escape_takes_back_what_was_typed_and_goes_to_the_grid) {
    for (const int col : {1, 2, 3, 4}) {
        const std::string text = cell(7, col);
        open(7, col);
        if (col <= 2) type("12");
        if (col > 2) key(Qt::Key_Down);
        key(Qt::Key_Escape);
        EXPECT_EQ(open_overlay(), "none");
        EXPECT_EQ(focused(), "MSFlexGrid1");
        EXPECT_EQ(cell(7, col), text);
        key(Qt::Key_Down);
        EXPECT_THAT(current(), Pair(8, col));
    }
}

TEST_F(EditingKeys, a_cell_that_is_partly_in_sight_is_scrolled_into_it_when_it_is_opened) {
    // The row that the lower edge cuts.
    const int height = grid().viewport()->height(), row_height = grid().rowHeight(0);
    if (height % row_height == 0) grid().resize(grid().width(), grid().height() + row_height / 2);
    const int row = 1 + grid().viewport()->height() / row_height;
    ASSERT_FALSE(is_in_sight(row, 2));
    const QRect place = place_of_cell(row, 2);
    double_click(place.topLeft() + QPoint(place.width() / 2, 2));
    expect_editing(row, 2);
}

TEST_F(EditingKeys, a_cell_out_of_sight_is_scrolled_into_it_when_it_is_opened) {
    set_current(7, 2);
    grid().verticalScrollBar()->setValue(300);
    ASSERT_FALSE(is_in_sight(7, 2));
    key(Qt::Key_F2);
    expect_editing(7, 2);
}

TEST_F(EditingKeys, a_list_of_channels_is_typed_with_keys_alone) {
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 4; ++col) set_cell(row, col, "");
    }
    set_current(1, 1);
    type("one\t145.5\tAM\tOn\ttwo\t146\t\t\t");
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(1, 1) + cell(1, 2) + cell(1, 3) + cell(1, 4), "ONE145.50000AMOn");
    EXPECT_EQ(cell(2, 1) + cell(2, 2) + cell(2, 3) + cell(2, 4), "TWO146.00000NFMOff");
    expect_editing(3, 2);
}

}  // namespace
}  // namespace memwright::gui
