// What takes away what was there is named by a notice with Undo, and the row commands say
// beforehand which rows they take.

#include <gmock/gmock.h>

#include "app/runs_test.h"

namespace memwright {
namespace {

using namespace columns;

class ToldChangesTest : public RunsTest {
  protected:
    void SetUp() override {
        run = start_with_a_file();
        type_into(5, "A");
        type_into(6, "B");
    }

    Form1& form() { return run->form; }
    MSFlexGrid& grid() { return form().MSFlexGrid1; }
    void click(int row, int col, MouseButton button = MouseButton::left) {
        grid().mouse_down(button, {row, col});
        grid().mouse_up(button, {row, col});
        grid().clicked();
    }
    void type_into(int row, const std::string& tag) {
        click(row, kTag);
        grid().double_clicked();
        form().TxtGrid.text = tag;
        form().TxtGrid.focus_lost();
    }
    void select(int first, int last) {
        grid().mouse_down(MouseButton::left, {first, kLabel});
        grid().mouse_up(MouseButton::left, {last, kLabel});
    }
    // The notice that waits, and whether it offers something; "" if none does.
    std::string told() {
        const Notices& notices = run->program.notices;
        const auto current = notices.current();
        if (!current) return "";
        return notices.of_this_run()[*current].notice.text +
               (notices.can_act(*current) ? " [Undo]" : "");
    }

    std::unique_ptr<Running> run;
};

TEST_F(ToldChangesTest, the_row_commands_say_which_rows_they_take) {
    EXPECT_EQ(form().Command3.tip.get(), "Empty the selected rows");
    select(5, 7);
    EXPECT_EQ(form().Command3.tip.get(), "Empty rows 5-7");
    EXPECT_EQ(form().Command2.tip.get(), "Move rows 5-7 up");
    EXPECT_EQ(form().Command1.tip.get(), "Move rows 5-7 down");
    EXPECT_EQ(form().mnuCut.tip.get(), "Cut rows 5-7");
}

TEST_F(ToldChangesTest, rows_that_were_emptied_moved_or_cut_are_named_with_Undo) {
    select(5, 6);
    form().Command3.clicked();
    EXPECT_EQ(told(), "Delete rows 5-6 (Bank 0 - 4 to Bank 0 - 5). [Undo]");
    run->program.act_on_notice(*run->program.notices.current());
    EXPECT_EQ(grid().TextMatrix(5, kTag), "A");
    EXPECT_EQ(told(), "");
    form().Command1.clicked();
    EXPECT_EQ(told(), "Move rows 5-6 down (Bank 0 - 5 to Bank 0 - 6). [Undo]");
    form().Command1.clicked();
    EXPECT_EQ(told(), "Move rows 5-6 down (Bank 0 - 6 to Bank 0 - 7). [Undo]");
    form().mnuCut.clicked();
    EXPECT_EQ(told(), "Cut rows 7-8 (Bank 0 - 6 to Bank 0 - 7). [Undo]");
}

TEST_F(ToldChangesTest, so_is_what_took_the_place_of_something_else) {
    click(5, kTag);
    click(6, kTag, MouseButton::right);
    EXPECT_EQ(told(), "Copy Tag to row 6 (Bank 0 - 5). [Undo]");
    form().Command5.clicked();
    EXPECT_EQ(told(), "Load (Bank 0 - 4 to Bank 0 - 5). [Undo]");
}

TEST_F(ToldChangesTest, what_took_nothing_away_is_not_told) {
    click(5, kTag);
    click(20, kTag, MouseButton::right);
    select(20, 20);
    form().mnuCopy.clicked();
    click(30, kTag);
    form().mnuPaste.clicked();
    select(40, 50);
    form().Command3.clicked();
    EXPECT_EQ(told(), "");
}

TEST_F(ToldChangesTest, a_change_that_follows_leaves_the_notice_without_its_Undo) {
    select(5, 5);
    form().Command3.clicked();
    type_into(9, "X");
    EXPECT_EQ(told(), "Delete row 5 (Bank 0 - 4).");
    run->program.notices.dismiss();
    type_into(10, "Y");
    EXPECT_EQ(told(), "");
}

TEST_F(ToldChangesTest, emptied_rows_come_into_sight) {
    select(5, 6);
    std::vector<int> shown;
    const auto watching =
        grid().rows_wanted.connect([&](int /*first*/, int last) { shown.push_back(last); });
    form().Command3.clicked();
    EXPECT_THAT(shown, testing::ElementsAre(5));
}

}  // namespace
}  // namespace memwright
