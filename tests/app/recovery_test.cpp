// What the whole program keeps for the case of a crash.

#include <gmock/gmock.h>

#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "app/notice_texts.h"
#include "app/runs_test.h"

namespace memwright {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

using ProgramRecovery = RunsTest;

TEST_F(ProgramRecovery, a_start_and_a_close_leave_nothing) {
    const auto run = start();
    run->time.run_for(5s);
    EXPECT_TRUE(run->program.close_allowed());
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(ProgramRecovery, opening_a_file_is_no_change) {
    const auto run = start_with_a_file();
    run->time.run_for(5s);
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_F(ProgramRecovery, a_read_that_is_called_off_before_it_begins_is_no_change) {
    const auto run = start();
    run->messages.answers = {Answer::cancel};
    run->form.mnuRead.clicked();
    run->time.run_for(5s);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(ProgramRecovery, a_table_that_came_from_a_radio_is_kept_until_it_is_saved) {
    const auto run = start();
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().path, "");
    EXPECT_TRUE(snapshot().image == radio::demonstration_memory());
    EXPECT_TRUE(snapshot().cells == cells_of(run->form.MSFlexGrid1));
    EXPECT_EQ(snapshot().cells[0], "TOWER");
    run->dialogs.names = {folder.file("mine")};
    run->form.mnuSave.clicked();
    EXPECT_THAT(snapshots(), IsEmpty());
    run->time.run_for(5s);
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_F(ProgramRecovery, settings_and_limits_that_are_accepted_are_kept) {
    const auto run = start_with_a_file();
    run->views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Check1[9].checked = true;
        dialog.Command1.clicked();
    };
    run->form.mnuMiscSettings.clicked();
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().image.get(6689), 2);
    run->views.in_limits = [](frmLimitSearch& dialog) {
        dialog.Text1[17].text = "145.5125";
        dialog.Command1.clicked();
    };
    run->form.mnuSearchBandMem.clicked();
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().image.get(7156), 0x14);
}

TEST_F(ProgramRecovery, dialogs_that_are_cancelled_are_no_change) {
    const auto run = start_with_a_file();
    run->views.in_settings = [](frmMiscSetting& dialog) {
        dialog.Check1[9].checked = true;
        dialog.Command2.clicked();
    };
    run->form.mnuMiscSettings.clicked();
    run->time.run_for(5s);
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_F(ProgramRecovery, the_image_is_kept_as_the_save_button_made_it) {
    const auto run = start_with_a_file();
    type(*run, "A");
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().image.get(0), 0xFF);
    run->form.Command4.clicked();
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().image.get(0), 0x14);
    // Load goes back to it after a crash as well.
    const auto next = (locks.held.clear(), start());
    next->messages.answers = {Answer::yes};
    next->program.offer_recovery();
    type(*next, "B");
    next->form.Command5.clicked();
    EXPECT_EQ(next->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "A");
}

TEST_F(ProgramRecovery, changes_are_kept_while_a_question_is_open) {
    const auto run = start_with_a_file();
    run->messages.answers = {Answer::cancel};
    run->messages.while_shown = [&] {
        run->time.run_for(1s);
        EXPECT_EQ(snapshot().cells[0], "A");
    };
    type(*run, "A");
    run->form.mnuOpen.clicked();
    EXPECT_THAT(run->messages.shown, SizeIs(1));
}

TEST_F(ProgramRecovery, changes_are_kept_while_a_transfer_runs) {
    const auto run = start_with_a_file();
    type(*run, "A");
    run->time.after(2s, [&] {
        EXPECT_EQ(snapshot().cells[0], "A");
        EXPECT_FALSE(run->form.mnuFile.enabled);
        run->form.TransferButton.clicked();
    });
    run->messages.answers = {Answer::no, Answer::ok};
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 cancelled.");
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().cells[0], "A") << "given up for the read, but that did not come";
}

TEST_F(ProgramRecovery, a_close_that_is_cancelled_goes_on_keeping) {
    const auto run = start_with_a_file();
    type(*run, "A");
    run->time.run_for(1s);
    run->messages.answers = {Answer::cancel};
    EXPECT_FALSE(run->program.close_allowed());
    EXPECT_EQ(snapshot().cells[0], "A");
    type(*run, "B");
    run->time.run_for(1s);
    EXPECT_EQ(snapshot().cells[0], "B");
}

TEST_F(ProgramRecovery, a_close_with_yes_or_no_leaves_nothing_behind) {
    for (const Answer answer : {Answer::yes, Answer::no}) {
        auto run = start_with_a_file();
        type(*run, "A");
        run->time.run_for(1s);
        run->messages.answers = {answer};
        EXPECT_TRUE(run->program.close_allowed());
        run->time.run_for(5s);
        EXPECT_THAT(snapshots(), IsEmpty());
        run.reset();
        const auto next = start();
        next->program.offer_recovery();
        EXPECT_THAT(next->messages.shown, IsEmpty());
    }
}

TEST_F(ProgramRecovery, a_close_during_a_transfer_leaves_nothing_behind) {
    const auto run = start_with_a_file();
    type(*run, "A");
    run->messages.answers = {Answer::no, Answer::ok, Answer::no};
    bool closed = false;
    run->window.when_closed = [&] { closed = run->program.close_allowed(); };
    run->time.after(2s, [&] { run->program.close_allowed(); });
    run->form.mnuRead.clicked();
    run->time.run_for(5s);
    EXPECT_TRUE(closed);
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_F(ProgramRecovery, after_a_crash_the_table_comes_back_as_if_it_had_just_been_typed) {
    std::vector<std::string> cells;
    {
        const auto run = start_with_a_file();
        type(*run, "A");
        run->time.run_for(1s);
        cells = cells_of(run->form.MSFlexGrid1);
    }
    const auto next = start();
    EXPECT_FALSE(next->form.MSFlexGrid1.enabled);
    next->messages.answers = {Answer::yes};
    next->program.offer_recovery();
    EXPECT_THAT(next->messages.shown.at(0).text, HasSubstr(folder.file("mem.120")));
    EXPECT_TRUE(cells_of(next->form.MSFlexGrid1) == cells);
    EXPECT_EQ(next->form.caption.caption.get(), "Memwright v1.0 - " + folder.file("mem.120"));
    for (const Control* const usable : std::initializer_list<const Control*>{
             &next->form.MSFlexGrid1, &next->form.mnuSaveOnly, &next->form.mnuWrite,
             &next->form.mnuVR120Settings, &next->form.mnuPrint}) {
        EXPECT_TRUE(usable->enabled) << usable->name;
    }
    // It counts as unsaved: the close asks, and yes saves into the file.
    next->messages.answers = {Answer::yes};
    EXPECT_TRUE(next->program.close_allowed());
    EXPECT_THAT(next->messages.shown, SizeIs(2));
    EXPECT_EQ(folder.get("mem.120")[0], 0x14);
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_F(ProgramRecovery, a_full_disk_is_told_in_a_notice_alone) {
    const auto run = start_with_a_file();
    files.writing_fails = true;
    type(*run, "A");
    run->time.run_for(10s);
    EXPECT_THAT(waiting(run->program.notices),
                ElementsAre(StartsWith("Changes are not kept for the case of a crash. Cannot ")));
    EXPECT_EQ(run->form.Text1.text.get(), "");
    EXPECT_THAT(run->messages.shown, IsEmpty());
}

}  // namespace
}  // namespace memwright
