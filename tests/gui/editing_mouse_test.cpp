// The mouse over labels, on the headings and beside the cells.

#include <gmock/gmock.h>

#include <QApplication>
#include <QScrollBar>

#include "gui/support/appearance.h"
#include "gui/support/editing_test.h"

namespace memwright::gui {
namespace {

using ::testing::Pair;

class EditingMouse : public EditingTest {
  protected:
    // In the middle of the headings.
    int heading_y() {
        const QWidget& headings = *grid().horizontalHeader();
        return place_of(grid(), headings.geometry()).center().y();
    }
    bool looks_marked(int row) {
        const QRect inside = place_of_label(row).adjusted(3, 3, -3, -3);
        return background_of(picture_of(window(), inside)) ==
               grid().palette().color(QPalette::Highlight);
    }
};

TEST_F(EditingMouse, a_drag_over_labels_onto_the_headings_ends_at_the_first_row_in_sight) {
    for (const int row : {1, 295, 296, 299}) set_cell(row, 1, "KEPT");
    grid().verticalScrollBar()->setValue(295);
    const QPoint heading(place_of_label(299).center().x(), heading_y());
    press_at(place_of_label(299).center());
    release_at(heading);
    EXPECT_THAT(marked(), Pair(296, 299));
    click_button("Command3");
    EXPECT_EQ(cell(1, 1) + cell(295, 1), "KEPTKEPT");
    EXPECT_EQ(cell(296, 1) + cell(299, 1), "");
}

TEST_F(EditingMouse, a_click_on_the_heading_of_the_labels_selects_nothing) {
    click(place_of_label(4).center());
    const QPoint heading(place_of_label(4).center().x(), heading_y());
    click(heading);
    EXPECT_THAT(current(), Pair(0, 0));
    EXPECT_THAT(marked(), Pair(0, 0));
}

TEST_F(EditingMouse, rows_are_marked_while_the_drag_goes_on) {
    press_at(place_of_label(3).center());
    drag_to(place_of_label(5).center());
    EXPECT_THAT(marked(), Pair(3, 5));
    for (const int row : {2, 3, 4, 5, 6}) EXPECT_EQ(looks_marked(row), row >= 3 && row <= 5) << row;
    drag_to(place_of_cell(2, 3).center());
    EXPECT_THAT(marked(), Pair(2, 3));
    release_at(place_of_cell(2, 3).center());
    EXPECT_THAT(marked(), Pair(2, 3));
    EXPECT_THAT(current(), Pair(3, 0));
    drag_to(place_of_label(7).center());
    EXPECT_THAT(marked(), Pair(2, 3));
}

TEST_F(EditingMouse, a_drag_held_beyond_the_edges_scrolls_and_marks_on) {
    QScrollBar& bar = *grid().verticalScrollBar();
    const QPoint start = place_of_label(2).center();
    const QPoint below(start.x(), place_of(grid(), grid().rect()).bottom() + 3);
    press_at(start);
    drag_to(below);
    EXPECT_TRUE(wait_until([&] { return bar.value() >= 5; }));
    EXPECT_EQ(marked().first, 2);
    EXPECT_GE(marked().second, bar.value() + 3);
    // Inside again it stands still.
    drag_to(place_of_label(bar.value() + 3).center());
    const int stood = bar.value();
    EXPECT_THAT(marked(), Pair(2, stood + 3));
    bar.setValue(bar.maximum() - 20);
    drag_to(QPoint(start.x(), window().size().height() - 1));
    EXPECT_TRUE(wait_until([&] { return bar.value() == bar.maximum(); }));
    EXPECT_THAT(marked(), Pair(2, 640));
    bar.setValue(20);
    drag_to(QPoint(start.x(), 1));
    EXPECT_TRUE(wait_until([&] { return bar.value() == 0; }));
    EXPECT_THAT(marked(), Pair(1, 2));
    release_at(QPoint(start.x(), 1));
    EXPECT_THAT(marked(), Pair(1, 2));
    EXPECT_THAT(current(), Pair(2, 0));
}

TEST_F(EditingMouse, a_click_with_shift_selects_from_the_current_row) {
    click(place_of_label(4).center());
    click(place_of_label(7).center(), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(4, 7));
    EXPECT_THAT(current(), Pair(4, 0));
    click(place_of_label(2).center(), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(2, 4));
    EXPECT_THAT(current(), Pair(4, 0));
    click(place_of_cell(6, 2).center());
    click(place_of_label(8).center(), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(6, 8)) << "from the row of the current cell";
    EXPECT_THAT(current(), Pair(6, 0));
    // As does a drag that begins with it.
    press_at(place_of_label(3).center(), Qt::LeftButton, Qt::ShiftModifier);
    drag_to(place_of_label(2).center());
    EXPECT_THAT(marked(), Pair(2, 6));
    release_at(place_of_label(1).center());
    EXPECT_THAT(marked(), Pair(1, 6));
}

TEST_F(EditingMouse, a_click_with_shift_after_the_headings_is_as_any_other) {
    click(QPoint(place_of_label(4).center().x(), heading_y()));
    ASSERT_THAT(current(), Pair(0, 0));
    click(place_of_label(4).center(), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_THAT(marked(), Pair(4, 4));
}

TEST_F(EditingMouse, the_area_beside_the_last_column_belongs_to_no_cell) {
    const QRect last = place_of_cell(3, 4);
    const QPoint beside(last.right() + 20, last.center().y());
    ASSERT_TRUE(place_of(*grid().viewport(), grid().viewport()->rect()).contains(beside));
    set_cell(2, 4, "On");
    set_cell(3, 4, "Off");
    click(place_of_cell(2, 4).center());
    click(beside, Qt::RightButton);
    EXPECT_EQ(cell(3, 4), "Off");
    EXPECT_THAT(current(), Pair(2, 4));
    click(beside);
    double_click(beside);
    EXPECT_THAT(current(), Pair(2, 4));
    EXPECT_EQ(open_overlay(), "none");
    // What was picked last is still that.
    click(place_of_cell(3, 4).center(), Qt::RightButton);
    EXPECT_EQ(cell(3, 4), "On");
    // Beside the headings too, and with the label column current no menu opens.
    click(place_of_label(2).center());
    const QPoint beside_headings(beside.x(), heading_y());
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        for (const QPoint& place : {beside, beside_headings}) {
            press_at(place, button);
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
            release_at(place_of_cell(5, 2).center(), button);
            EXPECT_THAT(current(), Pair(2, 0));
            EXPECT_THAT(marked(), Pair(2, 2));
        }
    }
}

TEST_F(EditingMouse, a_click_beside_the_last_column_closes_an_open_editor) {
    open(3, 1);
    type("typed");
    const QRect last = place_of_cell(5, 4);
    click(QPoint(last.right() + 20, last.center().y()));
    EXPECT_EQ(open_overlay(), "none");
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_EQ(cell(3, 1), "TYPED");
    EXPECT_THAT(current(), Pair(3, 1));
}

TEST_F(EditingMouse, a_drag_over_cells_that_ends_beside_the_last_column_counts_by_the_nearest) {
    press_at(place_of_cell(3, 2).center());
    const QRect last = place_of_cell(5, 4);
    release_at(QPoint(last.right() + 20, last.center().y()));
    EXPECT_THAT(current(), Pair(5, 4));
    press_at(place_of_label(3).center());
    release_at(QPoint(last.right() + 20, last.center().y()));
    EXPECT_THAT(marked(), Pair(3, 5));
}

}  // namespace
}  // namespace memwright::gui
