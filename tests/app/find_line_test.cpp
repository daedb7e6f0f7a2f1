// Finding memories, replacing in tags and going to a memory, without a window.

#include <gmock/gmock.h>

#include "app/program_under_test.h"

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FindLineTest : public ProgramTest {
  protected:
    void SetUp() override {
        start_with_a_file();
        const char* const tags[] = {"AIR 1", "AIR 2", "AIR 3"};
        for (int i = 0; i < 3; ++i) put(10 + i, tags[i], "12" + std::to_string(i) + ".00000", "AM");
        put(300, "FAIR", "433.50000", "NFM");
        edits.clear();
        go_to(1, kTag);
    }

    void put(int row, const std::string& tag, const std::string& freq, const std::string& mode) {
        grid.set_text(row, kTag, tag);
        grid.set_text(row, kFreq, freq);
        grid.set_text(row, kMode, mode);
    }
    void go_to(int row, int col) {
        grid.set_row(row);
        grid.set_col(col);
    }
    std::pair<int, int> current() const { return {grid.Row(), grid.Col()}; }
    std::string tag(int row) const { return grid.TextMatrix(row, kTag); }
    std::string count() const { return line.count.caption; }

    void type(const std::string& text) {
        line.query.text = text;
        line.query.edited();
    }
    void open_with(const std::string& text) {
        form.added.find.clicked();
        type(text);
    }

    MSFlexGrid& grid = form.MSFlexGrid1;
    FindLine& line = program.find_line();
    GoToLine& go_to_line = program.go_to_line();
    std::vector<Edit> edits;
    Connection watch = program.edits().edited.connect([this](const Edit& edit) {
        if (edit.changes_content()) edits.push_back(edit);
    });
    std::vector<std::string> said;
    Connection hear =
        program.notices.said.connect([this](const std::string& text) { said.push_back(text); });
};

TEST_F(FindLineTest, is_opened_by_its_entry_which_asks_for_the_keys) {
    int wanted = 0;
    const auto asked = line.query.focus_wanted.connect([&] { ++wanted; });
    EXPECT_FALSE(line.shown);
    form.added.find.clicked();
    EXPECT_TRUE(line.shown);
    form.added.find.clicked();
    EXPECT_EQ(wanted, 2);
    EXPECT_EQ(count(), "");
    EXPECT_EQ(current(), std::pair(1, kTag));
}

TEST_F(FindLineTest, finds_as_it_is_typed_from_the_row_where_the_keys_were) {
    go_to(11, kPref);
    open_with("A");
    EXPECT_EQ(current(), std::pair(11, kTag));
    EXPECT_EQ(count(), "3 of 5");
    type("AI");
    EXPECT_EQ(count(), "2 of 4");
    type("AIR 3");
    EXPECT_EQ(current(), std::pair(12, kTag));
    EXPECT_EQ(count(), "1 of 1");
    type("AIR");
    EXPECT_EQ(current(), std::pair(11, kTag)) << "what was found for more is not where it begins";
    type("AIR 1");
    EXPECT_EQ(current(), std::pair(10, kTag));
    EXPECT_EQ(count(), "1 of 1, from the top");
    type("AIRX");
    EXPECT_EQ(count(), "No memory found.");
    EXPECT_EQ(current(), std::pair(10, kTag));
    type("");
    EXPECT_EQ(count(), "");
    EXPECT_THAT(edits, IsEmpty());
}

TEST_F(FindLineTest, goes_to_the_column_of_what_was_found) {
    for (const auto& [text, row, col] :
         {std::tuple("air 2", 11, kTag), std::tuple("121", 11, kFreq), std::tuple("am", 10, kMode),
          std::tuple("3-17", 210, kTag), std::tuple("~500", 300, kFreq)}) {
        go_to(1, kPref);
        open_with(text);
        EXPECT_EQ(current(), std::pair(row, col)) << text;
        EXPECT_EQ(cells.shown.back().row, row) << "scrolled into sight";
    }
    EXPECT_FALSE(form.TxtGrid.visible);
}

TEST_F(FindLineTest, going_on_goes_round_both_ways_and_says_so) {
    open_with("AIR");
    const auto on = [this](MenuEntry& entry) {
        entry.clicked();
        return std::pair(grid.Row(), count());
    };
    MenuEntry& next = form.added.find_next;
    MenuEntry& previous = form.added.find_previous;
    EXPECT_EQ(on(next), std::pair(11, std::string("2 of 4")));
    EXPECT_EQ(on(next), std::pair(12, std::string("3 of 4")));
    EXPECT_EQ(on(next), std::pair(300, std::string("4 of 4")));
    EXPECT_EQ(on(next), std::pair(10, std::string("1 of 4, from the top")));
    EXPECT_EQ(on(previous), std::pair(300, std::string("4 of 4, from the bottom")));
    EXPECT_EQ(on(previous), std::pair(12, std::string("3 of 4")));
    line.next.clicked();
    EXPECT_EQ(grid.Row(), 300);
    line.previous.clicked();
    EXPECT_EQ(grid.Row(), 12);
    EXPECT_EQ(said.back(), "3 of 4: Bank 0 - 11");
}

TEST_F(FindLineTest, going_on_without_the_line_opens_it_and_takes_no_keys_if_there_is_a_query) {
    int wanted = 0;
    const auto asked = line.query.focus_wanted.connect([&] { ++wanted; });
    form.added.find_next.clicked();
    EXPECT_TRUE(line.shown);
    EXPECT_EQ(wanted, 1);
    type("AIR");
    line.close.clicked();
    form.added.find_next.clicked();
    EXPECT_TRUE(line.shown);
    EXPECT_EQ(grid.Row(), 11);
    EXPECT_EQ(wanted, 1);
}

TEST_F(FindLineTest, an_open_editor_is_closed_first) {
    go_to(10, kTag);
    grid.double_clicked();
    ASSERT_TRUE(form.TxtGrid.visible);
    form.added.find.clicked();
    EXPECT_FALSE(form.TxtGrid.visible);
}

TEST_F(FindLineTest, the_count_and_the_marks_follow_the_table_and_the_current_cell) {
    open_with("AIR");
    EXPECT_THAT(line.found_rows.get(), ElementsAre(10, 11, 12, 300));
    grid.set_text(20, kTag, "AIRY");
    EXPECT_THAT(line.found_rows.get(), ElementsAre(10, 11, 12, 20, 300));
    EXPECT_EQ(count(), "1 of 5");
    go_to(15, kTag);
    EXPECT_EQ(count(), "5 found");
    form.added.find_next.clicked();
    EXPECT_EQ(grid.Row(), 20);
    form.Command5.clicked();  // Load
    EXPECT_THAT(line.found_rows.get(), IsEmpty());
    EXPECT_EQ(count(), "No memory found.");
}

TEST_F(FindLineTest, without_the_line_there_are_no_marks) {
    open_with("AIR");
    line.close.clicked();
    EXPECT_FALSE(line.shown);
    EXPECT_THAT(line.found_rows.get(), IsEmpty());
    grid.set_text(20, kTag, "AIRY");
    EXPECT_THAT(line.found_rows.get(), IsEmpty());
    form.added.find.clicked();
    EXPECT_THAT(line.found_rows.get(), SizeIs(5));
}

TEST_F(FindLineTest, replace_changes_the_current_finds_tag_and_goes_on) {
    open_with("AIR");
    line.replacement.text = "gnd";
    line.replace.clicked();
    EXPECT_EQ(tag(10), "GND 1");
    EXPECT_EQ(grid.Row(), 11);
    EXPECT_EQ(count(), "1 of 3");
    ASSERT_THAT(edits, SizeIs(1));
    EXPECT_EQ(edits[0].command, "Replace");
    EXPECT_THAT(edits[0].cells, SizeIs(1));
    go_to(5, kTag);
    line.replace.clicked();
    EXPECT_THAT(edits, SizeIs(1)) << "only goes on from a row that is no find";
    EXPECT_EQ(grid.Row(), 11);
    for (int i = 0; i < 3; ++i) line.replace.clicked();
    EXPECT_EQ(tag(300), "FGND");
    EXPECT_EQ(count(), "1 tag changed.");
    line.replace.clicked();
    EXPECT_EQ(count(), "No memory found.");
}

TEST_F(FindLineTest, replace_leaves_what_was_found_by_frequency_or_mode_alone) {
    open_with("AM");
    line.replacement.text = "X";
    line.replace.clicked();
    line.replace_all.clicked();
    EXPECT_THAT(edits, IsEmpty());
    EXPECT_EQ(count(), "No tag changed.");
}

TEST_F(FindLineTest, replace_all_is_one_edit) {
    open_with("air");
    line.replacement.text = "ABCDEF";
    line.replace_all.clicked();
    EXPECT_EQ(tag(10), "ABCDEF");
    EXPECT_EQ(tag(300), "FABCDE");
    EXPECT_EQ(count(), "4 tags changed.");
    EXPECT_EQ(said.back(), "4 tags changed.");
    ASSERT_THAT(edits, SizeIs(1));
    EXPECT_EQ(edits[0].command, "Replace");
    EXPECT_THAT(edits[0].cells, SizeIs(4));
    EXPECT_EQ(grid.TextMatrix(10, kFreq), "120.00000");
}

TEST_F(FindLineTest, the_replacement_takes_what_a_tag_takes) {
    for (char c : {'a', 'Z', '7', ' ', '/'}) EXPECT_TRUE(line.replacement.key_press(c)) << c;
    for (char c : {'#', '\xE9', '.'}) EXPECT_FALSE(line.replacement.key_press(c)) << c;
}

TEST_F(FindLineTest, mark_all_marks_a_block_that_the_row_commands_work_on) {
    open_with("AIR ");
    line.mark_all.clicked();
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{10, 12}));
    EXPECT_EQ(count(), "3 rows marked.");
    EXPECT_EQ(current(), std::pair(10, kLabel));
    form.Command3.clicked();  // Delete
    EXPECT_EQ(tag(10) + tag(11) + tag(12), "");
    EXPECT_EQ(tag(300), "FAIR");
    EXPECT_EQ(count(), "No memory found.");
}

TEST_F(FindLineTest, mark_all_leaves_finds_that_lie_apart) {
    open_with("AIR");
    grid.marked_rows = RowRange{2, 3};
    line.mark_all.clicked();
    EXPECT_EQ(grid.marked_rows.get(), (RowRange{2, 3}));
    EXPECT_EQ(count(), "Not marked: rows lie apart.");
    EXPECT_EQ(current(), std::pair(10, kTag));
    type("nothing");
    line.mark_all.clicked();
    EXPECT_EQ(count(), "No memory found.");
}

TEST_F(FindLineTest, nothing_can_be_used_while_the_table_cannot) {
    open_with("AIR");
    const std::vector<Control*> controls = {
        &line.query,        &line.replacement,     &line.previous,           &line.next,
        &line.replace,      &line.replace_all,     &line.mark_all,           &line.close,
        &go_to_line.memory, &go_to_line.go,        &go_to_line.close,        &form.added.find,
        &form.added.go_to,  &form.added.find_next, &form.added.find_previous};
    form.DisableGui();
    for (const Control* control : controls) EXPECT_FALSE(control->enabled) << control->name;
    form.unlock_gui();
    for (const Control* control : controls) EXPECT_TRUE(control->enabled) << control->name;
}

TEST_F(FindLineTest, going_to_a_memory_makes_it_the_current_one_and_closes_the_line) {
    int focused = 0;
    const auto focus = grid.focus_wanted.connect([&] { ++focused; });
    form.added.go_to.clicked();
    EXPECT_TRUE(go_to_line.shown);
    go_to_line.memory.text = "bank 3 17";
    go_to_line.go.clicked();
    EXPECT_EQ(current(), std::pair(210, kTag));
    EXPECT_EQ(cells.shown.back().row, 210);
    EXPECT_FALSE(go_to_line.shown);
    EXPECT_EQ(focused, 1);
    EXPECT_THAT(edits, IsEmpty());
}

TEST_F(FindLineTest, going_to_what_is_no_memory_says_what_is_wanted) {
    form.added.go_to.clicked();
    go_to_line.memory.text = "10-0";
    std::string heard;
    const auto hearing =
        program.notices.said.connect([&](const std::string& text) { heard = text; });
    go_to_line.go.clicked();
    EXPECT_TRUE(go_to_line.shown);
    EXPECT_EQ(go_to_line.message.caption.get(), "Bank 0 to 9 and number 0 to 63 wanted, as 3-17.");
    EXPECT_EQ(heard, go_to_line.message.caption.get());
    EXPECT_EQ(current(), std::pair(1, kTag));
    go_to_line.memory.edited();
    EXPECT_EQ(go_to_line.message.caption.get(), "");
    go_to_line.close.clicked();
    EXPECT_FALSE(go_to_line.shown);
}

class FindLineAtStart : public ProgramTest {};

TEST_F(FindLineAtStart, there_is_nothing_to_be_found) {
    program.start();
    for (const MenuEntry* entry :
         {&form.added.find, &form.added.find_next, &form.added.find_previous, &form.added.go_to}) {
        EXPECT_FALSE(entry->enabled) << entry->name;
    }
}

}  // namespace
}  // namespace memwright
