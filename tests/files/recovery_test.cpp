// What lies on the disk while a table is changed, saved and given up.

#include "files/recovery_test.h"

#include "base/error.h"

namespace memwright {
namespace {

using namespace columns;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(RecoveryTest, every_change_is_on_the_disk_within_a_second) {
    const auto run = start();
    run->type("A");
    EXPECT_THAT(left(), IsEmpty());
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_TRUE(snapshot().cells == cells_of(run->grid));
    EXPECT_TRUE(snapshot().image == run->store.MemoryImage);
    EXPECT_EQ(snapshot().path, "");
    EXPECT_EQ(snapshot().when, "21.11.26 12:34");
    run->grid.set_text(640, kTag, "LAST");
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_EQ(snapshot().cells[639UL * 14], "LAST");
    EXPECT_THAT(run->notes, IsEmpty());
}

TEST_F(RecoveryTest, changes_that_never_stop_are_never_more_than_a_second_behind) {
    const auto run = start();
    std::string typed;
    for (int i = 0; i < 100; ++i) {
        typed += static_cast<char>('A' + i % 26);
        run->type(typed);
        machine.time.run_for(100ms);
        if (i < 10) continue;
        const std::string on_disk = snapshot().cells[0];
        EXPECT_THAT(typed, StartsWith(on_disk));
        EXPECT_GE(on_disk.size() + 10, typed.size()) << "older than a second";
    }
}

TEST_F(RecoveryTest, a_change_of_the_image_alone_is_kept_too) {
    const auto run = start();
    run->store.set_byte(layout::kLamp, 2);
    machine.time.run_for(1s);
    EXPECT_EQ(snapshot().image.get(layout::kLamp), 2);
}

TEST_F(RecoveryTest, a_table_that_was_rebuilt_but_not_changed_is_not_kept) {
    const auto run = start();
    run->table.ParseVR120Data();
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
    run->image_files.open_named(machine.folder.put("zeros.120", Bytes(layout::kImageSize, 0)));
    run->table.ParseVR120Data();
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, a_change_that_is_taken_back_takes_the_snapshot_with_it) {
    const auto run = start();
    run->grid.set_text(1, kTag, "A");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), SizeIs(1));
    run->grid.set_text(1, kTag, "");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_THAT(machine.locks.held, IsEmpty());
}

TEST_F(RecoveryTest, a_change_of_the_image_that_is_taken_back_takes_the_snapshot_with_it) {
    const auto run = start();
    run->store.set_byte(layout::kLamp, 2);
    machine.time.run_for(1s);
    EXPECT_THAT(left(), SizeIs(1));
    run->store.set_byte(layout::kLamp, 0);
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, what_a_command_changed_is_on_the_disk_although_it_has_not_ended) {
    const auto run = start();
    const EditScope command(run->edits, "Import");
    run->type("A");
    machine.time.run_for(1s);
    EXPECT_EQ(snapshot().cells[0], "A");
}

TEST_F(RecoveryTest, a_command_that_saves_in_its_middle_counts_from_the_save_on) {
    const auto run = start();
    const std::string path = machine.folder.file("mem.120");
    {
        const EditScope command(run->edits, "Save");
        run->type("A");
        run->save_as(path);
    }
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
    {
        const EditScope command(run->edits, "Save and go on");
        run->type("B");
        run->save_as(machine.folder.file("other.120"));
        run->type("C");
    }
    machine.time.run_for(1s);
    EXPECT_EQ(snapshot().cells[0], "C");
    run->type("B");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty()) << "as it was when it was saved";
}

TEST_F(RecoveryTest, a_cell_that_is_only_chosen_or_coloured_needs_no_snapshot) {
    const auto run = start();
    run->grid.set_row(5);
    run->grid.marked_rows = RowRange{1, 3};
    run->grid.set_colour(1, kTag, 0xC0C0C0);
    machine.time.run_for(1s);
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, saving_removes_the_snapshot_and_the_next_change_makes_one) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    const std::string path = machine.folder.file("mem.120");
    run->save_as(path);
    EXPECT_THAT(left(), IsEmpty());
    machine.time.run_for(5s);
    EXPECT_THAT(left(), IsEmpty());
    run->type("B");
    machine.time.run_for(1s);
    EXPECT_EQ(snapshot().path, path);
    EXPECT_EQ(snapshot().cells[0], "B");
    run->image_files.mnuSaveOnly_Click();
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, a_change_just_before_saving_needs_no_snapshot_after_it) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(100ms);
    run->save_as(machine.folder.file("mem.120"));
    machine.time.run_for(5s);
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_EQ(machine.files.written.size(), 1U);
}

TEST_F(RecoveryTest, a_save_that_fails_leaves_the_snapshot) {
    const auto run = start();
    run->type("A");
    run->save_as(machine.folder.file("mem.120"));
    run->type("B");
    machine.time.run_for(1s);
    machine.files.writing_fails = true;
    EXPECT_THROW(run->image_files.mnuSaveOnly_Click(), FileError);
    run->save_as(machine.folder.file("other.120"));
    EXPECT_EQ(snapshot().cells[0], "B");
}

TEST_F(RecoveryTest, a_save_as_that_wrote_nothing_leaves_the_snapshot) {
    machine.folder.put("there.120", {1});
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    // Not to be replaced, and no other name: the declined one is the current one all the same.
    run->dialogs.names = {machine.folder.file("there.120"), std::nullopt};
    run->messages.answers = {Answer::no};
    run->image_files.mnuSave_Click();
    EXPECT_EQ(run->image_files.current_path(), machine.folder.file("there.120"));
    machine.time.run_for(1s);
    ASSERT_THAT(left(), SizeIs(1));
    EXPECT_EQ(snapshot().cells[0], "A");
}

TEST_F(RecoveryTest, opening_a_file_removes_the_snapshot_of_the_table_that_was_given_up) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    run->messages.answers = {Answer::no};
    run->image_files.open_named(machine.folder.put("mem.120", Bytes(layout::kImageSize, 0)));
    EXPECT_THAT(left(), IsEmpty());
    machine.time.run_for(5s);
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, a_clean_exit_removes_the_snapshot_and_the_next_start_asks_nothing) {
    auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    run->type("B");
    run->recovery.end();
    EXPECT_THAT(left(), IsEmpty());
    run->type("C");
    run->store.set_byte(layout::kLamp, 2);
    machine.time.run_for(5s);
    EXPECT_THAT(left(), IsEmpty()) << "nothing is kept after the end";
    run.reset();
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(machine.locks.held, IsEmpty());
}

TEST_F(RecoveryTest, what_cannot_be_written_is_told_once_and_tried_until_it_can) {
    const auto run = start();
    machine.files.writing_fails = true;
    run->type("A");
    machine.time.run_for(5s);
    run->type("B");
    machine.time.run_for(5s);
    ASSERT_THAT(run->notes,
                ElementsAre(StartsWith("Changes are not kept for the case of a crash. Cannot")));
    machine.files.writing_fails = false;
    machine.time.run_for(1s);
    EXPECT_EQ(snapshot().cells[0], "B");
    EXPECT_THAT(run->notes.back(), "Changes are kept again for the case of a crash.");
    machine.time.run_for(5s);
    EXPECT_EQ(machine.files.written.size(), 1U) << "once is enough";
    run->type("C");
    machine.time.run_for(1s);
    EXPECT_THAT(run->notes, SizeIs(2)) << "all is as it should be";
    machine.files.writing_fails = true;
    run->type("D");
    machine.time.run_for(1s);
    ASSERT_THAT(run->notes, SizeIs(3)) << "it is told anew";
    EXPECT_EQ(run->notes[2], run->notes[0]);
}

TEST_F(RecoveryTest, a_snapshot_that_cannot_be_removed_is_told) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    machine.files.removing_fails = true;
    run->recovery.end();
    EXPECT_THAT(run->notes, ElementsAre(HasSubstr("Cannot remove")));
}

TEST_F(RecoveryTest, a_disk_that_fills_up_keeps_the_last_snapshot_that_it_took) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    machine.files.writing_fails = true;
    run->type("B");
    machine.time.run_for(5s);
    EXPECT_EQ(snapshot().cells[0], "A");
}

TEST_F(RecoveryTest, a_hundred_runs_find_a_name) {
    hold_first_names(99);
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), ElementsAre("2026-11-21 12.34.56 100.recovery"));
}

TEST_F(RecoveryTest, locks_that_nobody_gets_are_told) {
    hold_first_names(100);
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    ASSERT_THAT(run->notes, SizeIs(1));
    EXPECT_THAT(run->notes[0], HasSubstr("Cannot make a file in " + machine.state));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, without_a_state_folder_nothing_is_kept_nor_asked) {
    machine.state.clear();
    const auto run = start();
    run->type("A");
    machine.time.run_for(5s);
    EXPECT_FALSE(run->offered());
    run->recovery.end();
    EXPECT_THAT(run->notes, IsEmpty());
    EXPECT_THAT(machine.folder.names(), IsEmpty());
}

}  // namespace
}  // namespace memwright
