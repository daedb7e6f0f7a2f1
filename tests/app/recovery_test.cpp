// What the whole program keeps for the case of a crash, and of what comes from a radio and goes to
// one: with a simulated radio, in virtual time.

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>

#include "app/faked_desktop.h"
#include "app/frm_limit_search.h"
#include "app/frm_misc_setting.h"
#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "fakes/simulated_port.h"
#include "fakes/temporary_folder.h"
#include "fakes/virtual_time.h"
#include "link/doubtful_blocks.h"
#include "native/file_system.h"
#include "radio/demonstration.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// A run of the program, which crashes when it is dropped.
struct Running : fakes::FakedDesktop {
    Running(UserFolders folders, FileSystem& files, RunLocks& locks, radio::Options options)
        : radio(radio::demonstration_memory(), std::move(options)),
          program(platform(files, port, time, locks, std::move(folders)), ports) {
        cells.grid = &form.MSFlexGrid1;
        program.start();
    }

    fakes::VirtualTime time;
    radio::SimulatedRadio radio;
    fakes::SimulatedPort port{time, radio};
    Program program;
    Form1& form{program.form};
};

class ProgramRecovery : public testing::Test {
  protected:
    ProgramRecovery() { native.set_current_folder(folder.path().string()); }
    ~ProgramRecovery() override { native.set_current_folder(folder_before); }

    std::unique_ptr<Running> start(std::vector<radio::Fault> faults = {},
                                   radio::Mode mode = radio::Mode::send) {
        return std::make_unique<Running>(
            folders, files, locks,
            radio::Options{.mode = mode, .faults = std::move(faults), .short_frames_before = {}});
    }
    // With an image of empty memories.
    std::unique_ptr<Running> start_with_a_file(std::vector<radio::Fault> faults = {},
                                               radio::Mode mode = radio::Mode::send) {
        auto run = start(std::move(faults), mode);
        Bytes bytes(layout::kImageSize, 0);
        for (int i = 0; i < layout::kLabels; ++i) bytes[static_cast<std::size_t>(i)] = 0xFF;
        for (int i = layout::kLabels; i < layout::kRadioSettings; ++i) {
            bytes[static_cast<std::size_t>(i)] = ' ';
        }
        run->program.open_named(folder.put("mem.120", bytes));
        return run;
    }
    static void type(Running& run, const std::string& tag) {
        run.form.MSFlexGrid1.set_text(1, columns::kFreq, "145.51250");
        run.form.MSFlexGrid1.set_text(1, columns::kMode, "NFM");
        run.form.MSFlexGrid1.set_text(1, columns::kTag, tag);
    }

    std::vector<std::string> snapshots() { return native.files_in(folder.file("state")); }
    Snapshot snapshot() {
        const auto names = snapshots();
        EXPECT_THAT(names, SizeIs(1));
        return names.empty() ? Snapshot{} : snapshot_from(folder.get("state/" + names[0]));
    }
    std::vector<std::string> archived() {
        return native.files_in(folder.file("data/radio images"));
    }
    Bytes archived(const std::string& name) { return folder.get("data/radio images/" + name); }
    static Bytes bytes(const MemoryImage& image) {
        return {image.bytes().begin(), image.bytes().end()};
    }

    TemporaryFolder folder;
    UserFolders folders{folder.file("state"), folder.file("data")};
    NativeFileSystem native;
    std::string folder_before = native.current_folder();
    fakes::FaultyFileSystem files{native};
    fakes::HeldLocks locks;
};

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

TEST_F(ProgramRecovery, opens_dialog_offers_the_folder_of_the_archive) {
    const auto run = start();
    run->dialogs.names = {std::nullopt};
    run->form.mnuOpen.clicked();
    EXPECT_THAT(run->dialogs.asked.at(0).request.places,
                ElementsAre(folder.file("data/radio images")));
}

TEST_F(ProgramRecovery, without_a_data_folder_every_file_is_the_users_own) {
    folders.data.clear();
    const auto run = start_with_a_file();
    run->dialogs.names = {std::nullopt};
    run->form.mnuOpen.clicked();
    EXPECT_THAT(run->dialogs.asked.at(0).request.places, IsEmpty());
    type(*run, "A");
    run->form.mnuSaveOnly.clicked();
    EXPECT_EQ(folder.get("mem.120")[0], 0x14) << "no other name is asked for";
}

TEST_F(ProgramRecovery, what_was_read_is_archived) {
    const auto run = start();
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    ASSERT_THAT(archived(), ElementsAre("2026-11-21 12.34.56 read.120"));
    EXPECT_EQ(archived(archived()[0]), bytes(radio::demonstration_memory()));
    EXPECT_EQ(run->form.Text1.text.get(), "");
}

TEST_F(ProgramRecovery, a_read_that_does_not_complete_is_not_archived) {
    const auto run = start();
    run->messages.answers = {Answer::ok};
    run->time.after(3s, [&] { run->program.escape_pressed(); });
    run->form.mnuRead.clicked();
    EXPECT_THAT(archived(), IsEmpty());
}

TEST_F(ProgramRecovery,
       a_read_whose_closing_frame_misses_a_byte_is_archived_and_completed_by_cancel) {
    const auto run = start({{radio::FaultKind::missing_byte, radio::kClosing, 3}});
    run->messages.answers = {Answer::ok};
    run->time.after(50s, [&] {
        EXPECT_THAT(archived(), ElementsAre("2026-11-21 12.34.56 read.120"));
        run->program.escape_pressed();
    });
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    EXPECT_EQ(archived("2026-11-21 12.34.56 read.120"), bytes(radio::demonstration_memory()));
}

TEST_F(ProgramRecovery,
       closing_in_the_closing_exchange_of_a_read_saves_the_table_that_was_asked_about) {
    const auto run = start_with_a_file({{radio::FaultKind::silence, radio::kClosing}});
    std::filesystem::create_directories(folder.file("data/radio images"));
    std::filesystem::copy_file(folder.file("mem.120"), folder.file("data/radio images/my.120"));
    run->program.open_named(folder.file("data/radio images/my.120"));
    type(*run, "A");
    bool closed = false;
    run->window.when_closed = [&] { closed = run->program.close_allowed(); };
    run->messages.answers = {Answer::no, Answer::ok};
    run->messages.leaves_questions_open = true;
    run->dialogs.names = {folder.file("named.120")};
    run->time.after(50s, [&] { run->program.close_allowed(); });
    run->time.after(51s, [&] { run->messages.answer_open_question(Answer::yes); });
    run->form.mnuRead.clicked();
    EXPECT_TRUE(closed);
    EXPECT_EQ(folder.get("named.120")[layout::kLabels], 'A');
    EXPECT_THAT(archived(), testing::Contains("2026-11-21 12.34.56 read.120"));
}

TEST_F(ProgramRecovery, what_was_typed_into_a_table_that_a_read_replaces_is_set_aside) {
    const auto run = start_with_a_file();
    run->time.after(5s, [&] { type(*run, "A"); });
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    ASSERT_THAT(archived(),
                ElementsAre("2026-11-21 12.34.56 read.120", "2026-11-21 12.34.56 set aside.120"));
    EXPECT_EQ(archived("2026-11-21 12.34.56 set aside.120")[0], 0x14);
    EXPECT_TRUE(run->program.close_allowed());
    EXPECT_THAT(archived(), SizeIs(2)) << "what was read is there already";
}

TEST_F(ProgramRecovery, what_is_about_to_be_written_is_archived_before_the_first_byte) {
    const auto run = start_with_a_file({}, radio::Mode::receive);
    type(*run, "A");
    std::vector<std::string> before_first;
    run->port.sending = [&](const fakes::SimulatedPort::Sent& /*bytes*/) {
        if (before_first.empty()) before_first = archived();
    };
    run->messages.answers = {Answer::ok};
    run->form.mnuWrite.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Write To VR-120 complete.");
    ASSERT_THAT(before_first, ElementsAre("2026-11-21 12.34.56 written.120"));
    EXPECT_EQ(archived(before_first[0])[0], 0x14) << "with what was typed last";
    EXPECT_THAT(archived(), SizeIs(1));
}

TEST_F(ProgramRecovery, an_archive_that_cannot_be_written_stands_in_no_transfers_way) {
    folder.put("data", {});
    auto run = start();
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    EXPECT_THAT(run->form.Text1.text.get(), StartsWith("No copy of the image was kept. Cannot "));
    EXPECT_THAT(run->messages.shown, SizeIs(1));

    run = start_with_a_file({}, radio::Mode::receive);
    run->messages.answers = {Answer::ok};
    run->form.mnuWrite.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Write To VR-120 complete.");
    EXPECT_THAT(run->form.Text1.text.get(), StartsWith("No copy of the image was kept. Cannot "));
}

TEST_F(ProgramRecovery, the_status_window_tells_what_to_doubt_of_a_read) {
    const auto run = start({{radio::FaultKind::checksum, 0}, {radio::FaultKind::checksum, 100}});
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    const auto lines = doubts_about({0, 100});
    EXPECT_EQ(run->form.Text1.text.get(), lines[0] + "\r\n" + lines[1] + "\r\n");
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_THAT(run->messages.shown, SizeIs(1)) << "nobody is stopped by it";
}

TEST_F(ProgramRecovery, a_full_disk_is_told_in_the_status_window_alone) {
    const auto run = start_with_a_file();
    files.writing_fails = true;
    type(*run, "A");
    run->time.run_for(10s);
    EXPECT_THAT(run->form.Text1.text.get(),
                StartsWith("Changes are not kept for the case of a crash. Cannot "));
    EXPECT_THAT(run->messages.shown, IsEmpty());
}

}  // namespace
}  // namespace memwright
