// Keys in the label column: rows are chosen, marked, moved and emptied without a mouse.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QScrollBar>

#include "gui/support/appearance.h"
#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

class LabelKeys : public EditingTest {
  protected:
    void press(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) { key(pressed, modifiers); }
    std::string texts(int row) {
        return cell(row, 1) + "," + cell(row, 2) + "," + cell(row, 3) + "," + cell(row, 4);
    }
    // The outermost pixels of a label that are its frame's.
    QColor frame_of_label(int row) {
        const QRect place = place_of_label(row).adjusted(0, 1, -1, -2);
        return background_of(
            picture_of(window(), QRect(place.left(), place.top(), 1, place.height())));
    }
    QColor inside_of_label(int row) {
        return background_of(picture_of(window(), place_of_label(row).adjusted(4, 4, -4, -4)));
    }
};

TEST_F(LabelKeys, left_leads_from_the_tag_to_the_label_and_right_back) {
    set_current(5, 2);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_THAT(current(), Pair(5, 0));
    press(Qt::Key_Left);
    EXPECT_THAT(current(), Pair(5, 0));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_THAT(current(), Pair(6, 0));
    press(Qt::Key_Right);
    EXPECT_THAT(current(), Pair(6, 1));
    EXPECT_EQ(grid().currentIndex(), index(6, 1));
    // From a label that was clicked, too.
    click(place_of_label(8).center());
    press(Qt::Key_Right);
    EXPECT_THAT(current(), Pair(8, 1));
}

TEST_F(LabelKeys, in_a_table_that_is_read_from_the_right_the_arrows_change_places) {
    window().setLayoutDirection(Qt::RightToLeft);
    set_current(5, 1);
    press(Qt::Key_Right);
    EXPECT_THAT(current(), Pair(5, 0));
    press(Qt::Key_Left);
    EXPECT_THAT(current(), Pair(5, 1));
}

TEST_F(LabelKeys, pages_ends_and_banks_are_reached_and_come_into_sight) {
    const int page = grid().viewport()->height() / grid().rowHeight(0);
    set_current(5, 0);
    const std::vector<std::pair<std::pair<Qt::Key, Qt::KeyboardModifier>, int>> steps = {
        {{Qt::Key_PageDown, Qt::NoModifier}, 5 + page},
        {{Qt::Key_PageUp, Qt::NoModifier}, 5},
        {{Qt::Key_PageDown, Qt::ControlModifier}, 69},
        {{Qt::Key_PageDown, Qt::ControlModifier}, 133},
        {{Qt::Key_PageUp, Qt::ControlModifier}, 69},
        {{Qt::Key_End, Qt::ControlModifier}, 640},
        {{Qt::Key_Home, Qt::ControlModifier}, 1}};
    for (const auto& [pressed, row] : steps) {
        press(pressed.first, pressed.second);
        EXPECT_THAT(current(), Pair(row, 0));
        EXPECT_TRUE(is_in_sight(row, 1)) << row;
    }
    // Banks on the cells too.
    set_current(600, 3);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_THAT(current(), Pair(536, 3));
    EXPECT_TRUE(is_in_sight(536, 3));
}

TEST_F(LabelKeys, a_block_is_marked_moved_and_emptied_without_the_mouse) {
    for (int row = 5; row <= 9; ++row) set_cell(row, 1, "R" + std::to_string(row));
    set_current(5, 1);
    press(Qt::Key_Left);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(5, 7));
    EXPECT_THAT(current(), Pair(5, 0));
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(5, 6));
    press(Qt::Key_Down, Qt::AltModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(marked(), Pair(7, 8));
    EXPECT_EQ(cell(5, 1) + cell(6, 1) + cell(7, 1) + cell(8, 1), "R7R8R5R6");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(marked(), Pair(6, 7));
    EXPECT_THAT(current(), Pair(6, 0));
    press(Qt::Key_Delete);
    EXPECT_EQ(texts(6) + texts(7), ",,,,,,");
    EXPECT_EQ(cell(5, 1) + cell(8, 1), "R7R8");
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(LabelKeys, space_marks_the_row_of_the_label) {
    set_current(5, 0);
    press(Qt::Key_Space);
    EXPECT_THAT(marked(), Pair(5, 5));
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(5, 6));
}

TEST_F(LabelKeys, the_view_follows_the_end_that_is_marked_and_the_block_that_is_moved) {
    const int in_sight = grid().viewport()->height() / grid().rowHeight(0);
    set_current(in_sight - 1, 0);
    for (int times = 0; times < 5; ++times) press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(is_in_sight(in_sight + 4, 1));
    grid().verticalScrollBar()->setValue(300);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(is_in_sight(in_sight, 1));
    EXPECT_TRUE(is_in_sight(in_sight + 5, 1));
    grid().verticalScrollBar()->setValue(300);
    click_button("Command2");
    EXPECT_TRUE(is_in_sight(in_sight - 1, 1));
    // What has no room is followed by the end that goes first.
    grid().setFocus();
    for (int times = 0; times < in_sight; ++times) press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(is_in_sight(marked().second, 1));
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_TRUE(is_in_sight(marked().first, 1));
}

TEST_F(LabelKeys, rows_that_are_marked_are_moved_by_keys_from_a_cell_too_but_not_from_an_editor) {
    click(place_of_label(5).center());
    click(place_of_cell(3, 2).center());
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(marked(), Pair(6, 6));
    EXPECT_THAT(current(), Pair(3, 2));
    open(3, 2);
    press(Qt::Key_Down, Qt::AltModifier);
    EXPECT_THAT(marked(), Pair(6, 6));
    EXPECT_EQ(open_overlay(), "TxtGrid");
}

TEST_F(LabelKeys, the_current_label_is_framed_in_light_and_dark_whether_it_is_marked_or_not) {
    for (const bool dark : {false, true}) {
        SCOPED_TRACE(dark ? "dark" : "light");
        const WithPalette palette(dark ? dark_palette() : QApplication::palette());
        set_current(6, 1);
        form().MSFlexGrid1.marked_rows = RowRange{0, 0};
        EXPECT_LT(contrast(frame_of_label(4), inside_of_label(4)), 2);
        set_current(4, 0);
        EXPECT_GE(contrast(frame_of_label(4), inside_of_label(4)), 2);
        EXPECT_LT(contrast(frame_of_label(5), inside_of_label(5)), 2);
        press(Qt::Key_Space);
        EXPECT_GE(contrast(frame_of_label(4), inside_of_label(4)), 2);
        press(Qt::Key_Right);
        EXPECT_LT(contrast(frame_of_label(4), inside_of_label(4)), 2);
    }
}

TEST_F(LabelKeys, a_locked_table_frames_no_label) {
    set_current(4, 0);
    form().DisableGui();
    EXPECT_LT(contrast(frame_of_label(4), inside_of_label(4)), 2);
}

TEST_F(LabelKeys, space_on_a_cell_with_choices_opens_them) {
    set_cell(5, 3, "WFM");
    set_current(5, 3);
    press(Qt::Key_Space);
    EXPECT_EQ(open_overlay(), "CboGrid");
    EXPECT_TRUE(wait_until([&] { return list().view()->isVisible(); }));
    EXPECT_EQ(cell(5, 3), "WFM");
    list().hidePopup();
}

}  // namespace
}  // namespace memwright::gui
