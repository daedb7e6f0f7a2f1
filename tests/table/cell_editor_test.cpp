// Opening the overlays: which one a column gets, with what in it, and where it lies.

#include "table/cell_editor.h"

#include "table/choice_lists.h"
#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;

class Opening : public EditingTest {
  protected:
    void expect_text_box(int col, std::size_t max_length) {
        SCOPED_TRACE("column " + std::to_string(col));
        TxtGrid.max_length = 77;
        grid.set_text(5, col, "text");
        open(5, col);
        EXPECT_TRUE(TxtGrid.visible);
        EXPECT_FALSE(CboGrid.visible);
        EXPECT_EQ(TxtGrid.max_length.get(), max_length);
        EXPECT_EQ(TxtGrid.text.get(), "text");
    }
    void expect_list(int col, std::size_t choices, const std::string& last) {
        SCOPED_TRACE("column " + std::to_string(col));
        grid.set_text(5, col, "text");
        open(5, col);
        EXPECT_FALSE(TxtGrid.visible);
        EXPECT_TRUE(CboGrid.visible);
        EXPECT_EQ(CboGrid.items.get().size(), choices);
        EXPECT_EQ(CboGrid.items.get().back(), last);
        EXPECT_EQ(CboGrid.text.get(), "text");
    }
};

TEST_F(Opening, gives_every_column_its_editor) {
    expect_text_box(1, 0);
    expect_text_box(2, 10);
    expect_list(3, 3, "AM");
    expect_list(4, 2, "On");
    expect_list(5, 9, "9 KHz");
    expect_list(6, 2, "False");
    expect_list(7, 4, "DUP");
    expect_text_box(8, 10);
    expect_list(9, 4, "DCS");
    expect_list(10, 40, "250.3");
    expect_list(11, 104, "754");
    expect_list(12, 4, "MAX");
    expect_list(13, 2, "HALF");
    expect_text_box(14, 0);
}

TEST_F(Opening, works_in_every_visible_column_of_the_first_and_the_last_row) {
    for (const int row : {1, 640}) {
        for (const int col : {1, 2, 3, 4}) {
            open(row, col);
            EXPECT_EQ(TxtGrid.visible.get(), col < 3);
            EXPECT_EQ(CboGrid.visible.get(), col >= 3);
        }
    }
}

TEST_F(Opening, the_headings_and_the_labels_are_not_edited) {
    for (const MouseCell cell : {MouseCell{0, 0}, {0, 1}, {0, 3}, {0, 14}, {1, 0}, {640, 0}}) {
        open(cell.row, cell.col);
        EXPECT_FALSE(TxtGrid.visible) << cell.row << ", " << cell.col;
        EXPECT_FALSE(CboGrid.visible) << cell.row << ", " << cell.col;
    }
    EXPECT_TRUE(places.shown.empty());
    EXPECT_EQ(TxtGrid.text.get(), "");
    EXPECT_TRUE(CboGrid.items.get().empty());
}

TEST_F(Opening, on_a_heading_leaves_an_open_overlay_as_it_is) {
    grid.set_text(5, kTag, "HERE");
    open(5, kTag);
    open(0, kTag);
    EXPECT_TRUE(TxtGrid.visible);
    EXPECT_EQ(TxtGrid.text.get(), "HERE");
}

TEST_F(Opening, one_overlay_hides_the_other) {
    open(5, kTag);
    open(5, kMode);
    EXPECT_FALSE(TxtGrid.visible);
    EXPECT_TRUE(CboGrid.visible);
    open(5, kFreq);
    EXPECT_TRUE(TxtGrid.visible);
    EXPECT_FALSE(CboGrid.visible);
}

TEST_F(Opening, shows_the_cell_before_it_is_measured) {
    open(400, kFreq);
    ASSERT_EQ(places.shown.size(), 1U);
    EXPECT_EQ(places.shown[0].row, 400);
    EXPECT_EQ(places.shown[0].col, kFreq);
    EXPECT_EQ(places.first_row, 391);
    EXPECT_EQ(TxtGrid.top.get(), 120 + 10 * 320 + 40) << "the tenth row in sight";
}

TEST_F(Opening, the_text_box_lies_40_twips_inside_the_cell) {
    open(3, kFreq);
    EXPECT_EQ(TxtGrid.left.get(), 1600 + 1700 + 1200 + 40);
    EXPECT_EQ(TxtGrid.top.get(), 120 + 3 * 320 + 40);
    EXPECT_EQ(TxtGrid.width.get(), 1500 - 40);
    EXPECT_EQ(TxtGrid.height.get(), 320 - 40);
}

TEST_F(Opening, the_list_lies_at_the_cells_corner_and_is_10_twips_smaller) {
    open(3, kMode);
    EXPECT_EQ(CboGrid.left.get(), 1600 + 1700 + 1200 + 1500);
    EXPECT_EQ(CboGrid.top.get(), 120 + 3 * 320);
    EXPECT_EQ(CboGrid.width.get(), 900 - 10);
    EXPECT_EQ(CboGrid.height.get(), 320 - 10);
}

TEST_F(Opening, the_text_box_keeps_a_size_that_the_cell_is_too_small_for) {
    const auto size_in = [&](double width, double height) {
        TxtGrid.width = 7;
        TxtGrid.height = 8;
        places.fixed = CellPlaces::Place{100, 200, width, height};
        open(3, kTag);
        EXPECT_EQ(TxtGrid.left.get(), 1600 + 100 + 40);
        EXPECT_EQ(TxtGrid.top.get(), 120 + 200 + 40);
        return std::pair(TxtGrid.width.get(), TxtGrid.height.get());
    };
    EXPECT_EQ(size_in(40, 40), std::pair(0.0, 0.0));
    EXPECT_EQ(size_in(39, 41), std::pair(7.0, 1.0));
    EXPECT_EQ(size_in(41, 39), std::pair(1.0, 8.0));
    EXPECT_EQ(size_in(0, 0), std::pair(7.0, 8.0));
}

TEST_F(Opening, the_list_keeps_a_size_that_the_cell_is_too_small_for) {
    const auto size_in = [&](double width, double height) {
        CboGrid.width = 7;
        CboGrid.height = 8;
        places.fixed = CellPlaces::Place{100, 200, width, height};
        open(3, kMode);
        EXPECT_EQ(CboGrid.left.get(), 1600 + 100);
        EXPECT_EQ(CboGrid.top.get(), 120 + 200);
        return std::pair(CboGrid.width.get(), CboGrid.height.get());
    };
    EXPECT_EQ(size_in(10, 10), std::pair(0.0, 0.0));
    EXPECT_EQ(size_in(9, 11), std::pair(7.0, 1.0));
    EXPECT_EQ(size_in(11, 9), std::pair(1.0, 8.0));
}

TEST_F(Opening, the_open_overlay_follows_its_cell_and_the_other_stays_where_it_is) {
    open(3, kMode);
    const double list_left = CboGrid.left;
    open(3, kTag);
    grid.left = 1000;
    grid.set_col_width(kTag, 2000);
    editor.place_overlays();
    EXPECT_EQ(TxtGrid.left.get(), 1000 + 1700 + 40);
    EXPECT_EQ(TxtGrid.width.get(), 2000 - 40);
    EXPECT_EQ(CboGrid.left.get(), list_left);
    editor.TxtGrid_LostFocus();
    grid.left = 500;
    editor.place_overlays();
    EXPECT_EQ(TxtGrid.left.get(), 1000 + 1700 + 40) << "it is not open any more";
}

TEST_F(Opening, an_overlay_whose_cell_cannot_be_in_sight_any_more_is_hidden) {
    for (const int col : {kTag, kMode}) {
        open(3, col);
        const auto times = places.shown.size();
        editor.place_overlays();
        EXPECT_EQ(places.shown.size(), times + 1) << "it comes into sight before it is followed";
        EXPECT_TRUE(TxtGrid.visible || CboGrid.visible);
        places.has_room = false;
        editor.place_overlays();
        EXPECT_FALSE(TxtGrid.visible || CboGrid.visible);
        editor.place_overlays();
        EXPECT_EQ(places.shown.size(), times + 2) << "nothing is open any more";
        places.has_room = true;
    }
}

TEST_F(Opening, asks_for_the_focus_once_the_overlay_is_visible_filled_and_in_its_place) {
    int text_asked = 0;
    int list_asked = 0;
    const Connection text = TxtGrid.focus_wanted.connect([&] {
        ++text_asked;
        EXPECT_TRUE(TxtGrid.visible);
        EXPECT_EQ(TxtGrid.text.get(), "145.50000");
        EXPECT_EQ(TxtGrid.width.get(), 1460);
    });
    const Connection list = CboGrid.focus_wanted.connect([&] {
        ++list_asked;
        EXPECT_TRUE(CboGrid.visible);
        EXPECT_EQ(CboGrid.text.get(), "AM");
        EXPECT_EQ(CboGrid.items.get(), choices_of(kMode));
        EXPECT_EQ(CboGrid.width.get(), 890);
    });
    put(2, {"145.50000", "A", "AM", "On"});
    open(2, kFreq);
    EXPECT_EQ(text_asked, 1);
    EXPECT_EQ(list_asked, 0);
    open(2, kMode);
    EXPECT_EQ(text_asked, 1);
    EXPECT_EQ(list_asked, 1);
}

TEST_F(Opening, never_writes_back) {
    for (int row = 1; row <= 3; ++row) fill(row);
    grid.set_text(2, kTag, "LONGER THAN SIX");
    grid.set_text(2, kFreq, "no frequency");
    grid.set_text(3, kMode, "");
    const CountedSignals changes(grid);
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col < 15; ++col) open(row, col);
    }
    EXPECT_EQ(changes.count, 0);
    EXPECT_EQ(text(2, kTag), "LONGER THAN SIX");
    EXPECT_EQ(text(2, kFreq), "no frequency");
    EXPECT_EQ(text(3, kMode), "");
}

TEST_F(Opening, change_handlers_that_run_while_a_list_is_filled_write_nothing) {
    const Connection echo = CboGrid.text.changed.connect([&] {
        editor.CboGrid_Change();
        editor.CboGrid_Click();
    });
    fill(2);
    grid.set_text(3, kMode, "");
    const CountedSignals changes(grid);
    for (int col = 3; col < 14; ++col) open(2, col);
    open(3, kMode);
    EXPECT_EQ(changes.count, 0);
}

// A list control that gets other choices forgets its text, so it has to be told even the same one.
TEST_F(Opening, tells_the_list_its_text_after_its_choices_be_it_the_same_as_before) {
    grid.set_text(5, kMode, "Off");
    grid.set_text(5, kPref, "Off");
    open(5, kMode);
    std::vector<std::string> order;
    const Connection items = CboGrid.items.changed.connect([&] { order.emplace_back("items"); });
    const Connection texts = CboGrid.text.changed.connect([&] { order.push_back(CboGrid.text); });
    open(5, kPref);
    EXPECT_EQ(order, (std::vector<std::string>{"", "items", "Off"}));
}

TEST_F(Opening, an_empty_cell_leaves_the_lists_text_empty) {
    grid.set_text(5, kMode, "WFM");
    open(5, kMode);
    open(6, kMode);
    EXPECT_EQ(CboGrid.text.get(), "");
    EXPECT_EQ(text(6, kMode), "");
}

TEST_F(Opening, overlays_go_when_they_lose_the_focus) {
    open(5, kTag);
    editor.CboGrid_LostFocus();
    EXPECT_TRUE(TxtGrid.visible);
    editor.TxtGrid_LostFocus();
    EXPECT_FALSE(TxtGrid.visible);
    open(5, kMode);
    editor.TxtGrid_LostFocus();
    EXPECT_TRUE(CboGrid.visible);
    editor.CboGrid_LostFocus();
    EXPECT_FALSE(CboGrid.visible);
}

TEST_F(Opening, overlays_go_when_the_grid_is_clicked_or_scrolled) {
    for (const int col : {kTag, kMode}) {
        open(5, col);
        editor.MSFlexGrid1_Click();
        EXPECT_FALSE(TxtGrid.visible || CboGrid.visible);
        open(5, col);
        editor.MSFlexGrid1_Scroll();
        EXPECT_FALSE(TxtGrid.visible || CboGrid.visible);
    }
}

}  // namespace
}  // namespace memwright
