// The commands of the Edit Channels menu that insert, arrange and set whole rows: what they do to
// the table, that each is one step, and what they say when there is nothing to work on.

#include "app/row_commands_test.h"

#include <tuple>

namespace memwright {
namespace {

using namespace columns;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(RowCommandsTest, a_row_is_inserted_into_the_gap_above_the_next_empty_memory) {
    put_all(4, "ABC.D");
    for (int col = kTag; col < kCount; ++col) grid().set_colour(6, col, kGreyText);
    const auto before = whole_table();
    go_to(5);
    added().insert_row.clicked();
    EXPECT_EQ(tags(4, 8), "A.BCD");
    EXPECT_EQ(grid().TextMatrix(5, kNameless), "");
    EXPECT_EQ(grid().TextMatrix(7, kNameless), "C14");
    EXPECT_EQ(grid().colour(7, kNameless), kGreyText);
    EXPECT_EQ(grid().colour(6, kTag), 0U);
    EXPECT_EQ(grid().TextMatrix(7, kLabel), "Bank 0 - 6");
    EXPECT_EQ(grid().Row(), 5);
    expect_step("Insert row 5", before);
}

TEST_F(RowCommandsTest, a_bank_without_an_empty_memory_below_offers_the_next_one) {
    for (int row = 60; row <= 66; ++row)
        put(row, std::string(1, static_cast<char>('A' + row - 60)));
    const auto before = whole_table();
    go_to(62);
    added().insert_row.clicked();
    EXPECT_EQ(whole_table(), before);
    EXPECT_THAT(waiting(notices()),
                ElementsAre("No row is inserted: bank 0 has no empty memory below Bank 0 - 61. The "
                            "next one is Bank 1 - 2."));
    go_to(1);
    run->program.act_on_notice(notices().of_this_run().size() - 1);
    EXPECT_EQ(tags(60, 67), "AB.CDEFG");
    EXPECT_EQ(grid().Row(), 62);
    EXPECT_THAT(waiting(notices()), IsEmpty());
    expect_step("Insert row 62", before);
}

TEST_F(RowCommandsTest, the_offer_goes_on_through_banks_that_are_full) {
    for (int row = 64; row <= 192; ++row) put(row, "A");
    go_to(64);
    added().insert_row.clicked();
    run->program.act_on_notice(notices().of_this_run().size() - 1);
    EXPECT_EQ(tags(63, 65), "..A");
    EXPECT_EQ(tags(192, 194), "AA.");
}

TEST_F(RowCommandsTest, a_table_without_an_empty_memory_below_is_told_and_nothing_is_offered) {
    for (int row = 600; row <= 640; ++row) put(row, "A");
    const auto before = whole_table();
    for (const int row : {600, 640}) {
        go_to(row);
        added().insert_row.clicked();
        EXPECT_FALSE(notices().can_act(notices().of_this_run().size() - 1)) << row;
    }
    EXPECT_EQ(whole_table(), before);
    EXPECT_THAT(waiting(notices()),
                ElementsAre("No row is inserted: no memory below Bank 9 - 63 is empty."));
}

TEST_F(RowCommandsTest, an_offer_that_the_table_has_outdated_is_taken_back) {
    for (int row = 60; row <= 64; ++row) put(row, "A");
    go_to(62);
    added().insert_row.clicked();
    ASSERT_EQ(notices().waiting(), 1U);
    mark(64, 64);
    run->form.Command3.clicked();
    EXPECT_THAT(waiting(notices()), ElementsAre("Delete row 64 (Bank 0 - 63)."));
}

TEST_F(RowCommandsTest, the_headings_are_no_place_for_a_row) {
    put(1, "A");
    const auto before = whole_table();
    go_to(0);
    added().insert_row.clicked();
    EXPECT_EQ(whole_table(), before);
    EXPECT_EQ(notices().waiting(), 1U);
}

TEST_F(RowCommandsTest, marked_rows_are_closed_up) {
    put_all(5, ".A.BX");
    const auto before = whole_table();
    mark(8, 5);
    added().close_up.clicked();
    EXPECT_EQ(tags(5, 9), "AB..X");
    EXPECT_EQ(grid().TextMatrix(6, kDeviation), "B13");
    EXPECT_EQ(grid().marked_rows.get(), (RowRange{5, 8}));
    expect_step("Close up rows 5-8", before);
}

TEST_F(RowCommandsTest, marked_rows_are_sorted_by_what_is_chosen) {
    put(5, "C", "146.00000");
    put(7, "A", "145.00000");
    put(8, "B", "99.00000");
    grid().set_text(5, kMode, "WFM");
    grid().set_text(7, kMode, "AM");
    grid().set_text(8, kMode, "NFM");
    const auto before = whole_table();
    mark(5, 9);
    const std::vector<std::tuple<std::size_t, std::string, std::string>> kOrders = {
        {0, "BAC..", "Sort rows 5-9 by frequency"},
        {1, "ABC..", "Sort rows 5-9 by tag"},
        {2, "BCA..", "Sort rows 5-9 by mode"}};
    for (const auto& [choice, after, name] : kOrders) {
        added().sort_rows.picked(choice);
        EXPECT_EQ(tags(5, 9), after);
        expect_step(name, before);
    }
}

TEST_F(RowCommandsTest, mode_and_pref_of_marked_rows_are_set_but_not_of_empty_ones) {
    put(5, "A");
    put(7, "B");
    const auto before = whole_table();
    mark(5, 7);
    const std::vector<std::string> kModes = {"NFM", "WFM", "AM"};
    for (std::size_t choice = 0; choice < kModes.size(); ++choice) {
        added().set_mode.picked(choice);
        EXPECT_EQ(grid().TextMatrix(5, kMode), kModes[choice]);
        EXPECT_EQ(grid().TextMatrix(6, kMode), "");
        EXPECT_EQ(grid().TextMatrix(7, kMode), kModes[choice]);
        expect_step("Set mode of rows 5-7", before);
    }
    const std::vector<std::string> kPrefs = {"Off", "On"};
    for (std::size_t choice = 0; choice < kPrefs.size(); ++choice) {
        added().set_pref.picked(choice);
        EXPECT_EQ(grid().TextMatrix(7, kPref), kPrefs[choice]);
        EXPECT_EQ(grid().TextMatrix(6, kPref), "");
        expect_step("Set pref of rows 5-7", before);
    }
    EXPECT_THAT(waiting(notices()), IsEmpty());
    mark(6, 6);
    added().set_mode.picked(0);
    EXPECT_THAT(waiting(notices()),
                ElementsAre("Nothing is set: none of the marked rows has a frequency."));
}

TEST_F(RowCommandsTest, without_marked_rows_each_says_what_to_mark_and_changes_nothing) {
    put_all(1, "A.B");
    const auto before = whole_table();
    const std::vector<std::pair<std::function<void()>, std::string>> kCommands = {
        {[&] { added().close_up.clicked(); }, "to close up"},
        {[&] { added().sort_rows.picked(0); }, "to sort"},
        {[&] { added().move_to.clicked(); }, "to move"},
        {[&] { added().set_mode.picked(0); }, "to set"},
        {[&] { added().set_pref.picked(0); }, "to set"}};
    for (const auto& [command, purpose] : kCommands) {
        command();
        EXPECT_THAT(waiting(notices()),
                    ElementsAre("Mark the rows " + purpose + " in the label column first."));
    }
    added().fill_series.clicked();
    EXPECT_THAT(waiting(notices()),
                ElementsAre("Mark the row that the series begins with, and the rows to fill, in "
                            "the label column first."));
    EXPECT_EQ(run->views.shown, 0);
    EXPECT_EQ(whole_table(), before);
    mark(1, 3);
    EXPECT_THAT(waiting(notices()), IsEmpty());
}

TEST_F(RowCommandsTest, a_block_that_begins_at_the_headings_is_that_of_its_memories) {
    put_all(1, ".AB");
    grid().marked_rows = RowRange{0, 3};
    const std::string heading = grid().TextMatrix(0, kTag);
    added().close_up.clicked();
    EXPECT_EQ(tags(1, 3), "AB.");
    EXPECT_EQ(grid().TextMatrix(0, kTag), heading);
}

TEST_F(RowCommandsTest, close_the_editor_over_a_cell_whose_row_goes_elsewhere) {
    put_all(5, "AB");
    go_to(5);
    grid().double_clicked();
    ASSERT_TRUE(run->form.TxtGrid.visible);
    added().insert_row.clicked();
    EXPECT_FALSE(run->form.TxtGrid.visible);
}

TEST_F(RowCommandsTest, are_locked_along_with_the_table) {
    put_all(60, "ABCDE");
    go_to(62);
    added().insert_row.clicked();
    ASSERT_EQ(notices().waiting(), 1U);
    const auto before = whole_table();
    run->form.DisableGui();
    for (MenuEntry* entry : std::initializer_list<MenuEntry*>{
             &added().insert_row, &added().close_up, &added().sort_rows, &added().fill_series,
             &added().move_to, &added().set_mode, &added().set_pref}) {
        EXPECT_FALSE(entry->enabled) << entry->name;
    }
    run->program.act_on_notice(notices().of_this_run().size() - 1);
    EXPECT_EQ(whole_table(), before);
    run->form.EnableGui();
    EXPECT_TRUE(added().insert_row.enabled);
    EXPECT_TRUE(added().set_pref.enabled);
}

TEST_F(RowCommandsTest, need_an_image) {
    run = start();
    EXPECT_FALSE(added().insert_row.enabled);
    EXPECT_FALSE(added().sort_rows.enabled);
}

}  // namespace
}  // namespace memwright
