// Steps that are taken back and done again: what one step is, and what it brings back.

#include "table/edit_history.h"

#include <gmock/gmock.h>

#include "table/edit_names.h"
#include "table/editing_test.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class EditHistoryTest : public EditingTest {
  protected:
    EditHistoryTest() {
        mnuSaveOnly.enabled = true;
        put(5, {"145.50000", "A"});
        put(6, {"146.00000", "B"});
        put(7, {"147.00000", "C"});
        put(8, {"148.00000", "D"});
        run("Save", [&] { table.SaveVR120Data(); });
        history.begin();
    }

    template <class Procedure>
    void run(const std::string& command, Procedure procedure) {
        const EditScope scope(recorder, command);
        procedure();
    }
    // A character at a time, each an event of its own.
    void type_into(int row, int col, const std::string& text) {
        run("Open Editor", [&] { open(row, col); });
        history.close_step();
        for (const char c : text) run("Type", [&] { type_on(std::string(1, c)); });
    }
    void type_on(const std::string& piece) {
        insert(piece);
        editor.TxtGrid_Change();
    }
    void set_tag(int row, const std::string& tag) {
        run("Paste", [&] { grid.set_text(row, kTag, tag); });
    }
    void move_down() {
        run("Move Down", [&] { rows.Command1_Click(); });
    }
    void move_up() {
        run("Move Up", [&] { rows.Command2_Click(); });
    }
    void select_rows(int first, int last) {
        run("Select", [&] { grid.marked_rows = RowRange{first, last}; });
    }
    std::string tags(int first, int last) const {
        std::string all;
        for (int row = first; row <= last; ++row) all += grid.TextMatrix(row, kTag) + ",";
        return all;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const Edit& step : history.steps()) all.push_back(name_of(step));
        return all;
    }

    EditRecorder recorder{grid, store};
    EditHistory history{recorder};
};

TEST_F(EditHistoryTest,
       the_typing_in_one_opened_editor_is_one_step_with_the_defaults_it_filled_in) {
    type_into(20, kFreq, "93.5");
    EXPECT_THAT(names(), ElementsAre("Change Freq of row 20"));
    EXPECT_EQ(grid.TextMatrix(20, kMode), "NFM");
    history.undo();
    for (const int col : {kFreq, kMode, kPref}) EXPECT_EQ(grid.TextMatrix(20, col), "");
    history.redo();
    EXPECT_EQ(grid.TextMatrix(20, kFreq), "93.50000");
    EXPECT_EQ(grid.TextMatrix(20, kPref), "Off");
}

TEST_F(EditHistoryTest, an_editor_that_is_opened_again_makes_another_step) {
    type_into(20, kTag, "AB");
    history.close_step();
    run("Type", [&] { type_on("C"); });
    EXPECT_THAT(names(), ElementsAre("Change Tag of row 20", "Change Tag of row 20"));
    history.undo();
    EXPECT_EQ(grid.TextMatrix(20, kTag), "AB");
}

TEST_F(EditHistoryTest, another_cell_makes_another_step) {
    type_into(20, kTag, "A");
    run("Move", [&] { press(Key::tab); });
    run("Move", [&] { press(Key::tab, true); });
    run("Type", [&] { type_on("B"); });
    EXPECT_THAT(history.steps(), SizeIs(2));
}

TEST_F(EditHistoryTest, picks_in_one_opened_list_are_one_step) {
    run("Open Editor", [&] { open(5, kMode); });
    run("Choose", [&] { pick("WFM"); });
    run("Choose", [&] { pick("AM"); });
    EXPECT_THAT(names(), ElementsAre("Change Mode of row 5"));
    history.undo();
    EXPECT_EQ(grid.TextMatrix(5, kMode), "NFM");
}

TEST_F(EditHistoryTest, moves_of_one_block_that_follow_each_other_are_one_step) {
    select_rows(5, 6);
    move_down();
    move_down();
    EXPECT_EQ(tags(5, 8), "C,D,A,B,");
    EXPECT_THAT(names(), ElementsAre("Move rows 5-6 down"));
    history.undo();
    EXPECT_EQ(tags(5, 8), "A,B,C,D,");
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{5, 6}));
    history.redo();
    EXPECT_EQ(tags(5, 8), "C,D,A,B,");
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{7, 8}));
}

TEST_F(EditHistoryTest, a_block_that_is_moved_back_has_not_been_moved) {
    select_rows(5, 5);
    move_down();
    EXPECT_THAT(names(), ElementsAre("Move row 5 down"));
    move_up();
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(history.next_to_undo(), nullptr);
}

TEST_F(EditHistoryTest, moves_of_another_block_or_after_something_else_are_another_step) {
    select_rows(5, 5);
    move_down();
    select_rows(8, 8);
    move_up();
    set_tag(30, "X");
    move_up();
    EXPECT_THAT(names(),
                ElementsAre("Move row 5 down", "Move row 8 up", testing::_, "Move row 7 up"));
}

TEST_F(EditHistoryTest, a_step_brings_back_hidden_columns_colours_marks_and_the_current_cell) {
    grid.set_text(6, kMasked, "True");
    table.MaskColor();
    go_to(9, kFreq);
    select_rows(5, 7);
    run("Cut", [&] { rows.mnuCut_Click(); });
    select_rows(1, 2);
    run("Select", [&] { go_to(100, kPref); });
    history.undo();
    EXPECT_EQ(tags(5, 7), "A,B,C,");
    EXPECT_EQ(grid.TextMatrix(6, kMasked), "True");
    EXPECT_EQ(grid.colour(6, kTag), kGrey);
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{5, 7}));
    EXPECT_EQ(grid.Row(), 9);
    EXPECT_EQ(grid.Col(), kFreq);
}

TEST_F(EditHistoryTest, what_only_selects_is_no_step) {
    select_rows(5, 7);
    run("Select", [&] { go_to(3, kTag); });
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(EditHistoryTest, that_the_table_is_encoded_is_no_step_and_goes_with_the_one_before_it) {
    const MemoryImage before = store.MemoryImage;
    set_tag(5, "X");
    run("Save", [&] { table.SaveVR120Data(); });
    ASSERT_NE(store.MemoryImage, before);
    EXPECT_THAT(history.steps(), SizeIs(1));
    history.undo();
    EXPECT_EQ(tags(5, 5), "A,");
    EXPECT_EQ(store.MemoryImage, before);
}

TEST_F(EditHistoryTest, what_is_encoded_before_the_first_step_goes_with_it) {
    store.set_byte(2560, 'x');  // as no table would encode it
    history.begin();
    const MemoryImage before = store.MemoryImage;
    run("Save", [&] { table.SaveVR120Data(); });
    ASSERT_NE(store.MemoryImage, before);
    EXPECT_EQ(history.next_to_undo(), nullptr);
    set_tag(5, "X");
    history.undo();
    EXPECT_EQ(store.MemoryImage, before);
}

TEST_F(EditHistoryTest, a_new_step_forgets_those_that_were_taken_back) {
    for (const char* tag : {"X", "Y", "Z"}) set_tag(5, tag);
    history.undo();
    history.undo();
    EXPECT_NE(history.next_to_redo(), nullptr);
    set_tag(5, "W");
    EXPECT_EQ(history.next_to_redo(), nullptr);
    history.undo();
    EXPECT_EQ(tags(5, 5), "X,");
}

TEST_F(EditHistoryTest, saving_after_steps_were_taken_back_keeps_them_for_redo) {
    set_tag(5, "X");
    set_tag(6, "Y");
    history.undo();
    run("Save", [&] { table.SaveVR120Data(); });
    history.redo();
    EXPECT_EQ(tags(5, 6), "X,Y,");
}

TEST_F(EditHistoryTest, one_that_begins_in_a_command_begins_behind_it) {
    set_tag(5, "X");
    run("Open", [&] {
        grid.set_text(5, kTag, "1");
        history.begin();
        grid.set_text(5, kTag, "2");
    });
    EXPECT_THAT(names(), IsEmpty());
    set_tag(5, "3");
    history.undo();
    EXPECT_EQ(tags(5, 5), "2,");
}

TEST_F(EditHistoryTest, nothing_to_take_back_or_do_again_changes_nothing) {
    history.undo();
    history.redo();
    EXPECT_EQ(tags(5, 5), "A,");
}

TEST_F(EditHistoryTest, forgets_the_oldest_steps_and_no_others) {
    const int steps = static_cast<int>(EditHistory::kMostSteps) + 3;
    for (int n = 1; n <= steps; ++n) set_tag(5, std::to_string(n));
    ASSERT_EQ(history.done(), EditHistory::kMostSteps);
    while (history.next_to_undo() != nullptr) history.undo();
    EXPECT_EQ(tags(5, 5), "3,");
}

TEST_F(EditHistoryTest, steps_have_names) {
    const auto name = [](const std::string& command, RowRange before, RowRange after) {
        return name_of({command, {}, {}, {5, kTag, before}, {6, kFreq, after}});
    };
    EXPECT_EQ(name("Delete", {0, 7}, {0, 7}), "Delete rows 1-7");
    EXPECT_EQ(name("Cut", {5, 5}, {5, 5}), "Cut row 5");
    EXPECT_EQ(name("Paste", {5, 5}, {9, 11}), "Paste rows 9-11");
    EXPECT_EQ(name("Copy Value", {}, {}), "Copy Freq to row 6");
    EXPECT_EQ(name("Load", {}, {}), "Load");
}

}  // namespace
}  // namespace memwright
