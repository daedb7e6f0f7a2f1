// What lies on the disk while a table is changed, and what the next run of the program makes of it.

#include "files/recovery.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>

#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "fakes/recording_interface.h"
#include "fakes/scripted_dialogs.h"
#include "fakes/seeded_random.h"
#include "fakes/temporary_folder.h"
#include "fakes/virtual_time.h"
#include "platform/error.h"
#include "platform/native_file_system.h"
#include "table/columns.h"

namespace memwright {
namespace {

using namespace columns;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* kFirst = "2026-11-21 12.34.56 1.recovery";
constexpr const char* kSecond = "2026-11-21 12.34.56 2.recovery";
constexpr const char* kDeclined = "declined 2026-11-21 12.34.56 1.recovery";

// What all runs on a machine share.
struct Machine {
    TemporaryFolder folder;
    NativeFileSystem native;
    fakes::FaultyFileSystem files{native};
    fakes::HeldLocks locks;
    fakes::VirtualTime time;
    std::string state = folder.file("state");
};

// A run of the program. It crashes when it is dropped without end().
class ProgramRun {
  public:
    explicit ProgramRun(Machine& machine) : machine_(machine) {
        table.initgrid();
        mnuSaveOnly.enabled = false;
        recovery.begin();
    }

    void type(const std::string& tag, int row = 1) {
        mnuSaveOnly.enabled = true;
        grid.set_text(row, kFreq, "145.51250");
        grid.set_text(row, kMode, "NFM");
        grid.set_text(row, kTag, tag);
    }
    std::string tag() const { return grid.TextMatrix(1, kTag); }
    void save_as(const std::string& path) {
        dialogs.names.emplace_back(path);
        image_files.mnuSave_Click();
    }
    bool offered(Answer answer) {
        messages.answers = {answer};
        return recovery.offer();
    }
    // Nothing is asked.
    bool offered() { return recovery.offer(); }

  private:
    Machine& machine_;

  public:
    modVR120 store{machine_.files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    ChannelTable table{store, grid, mnuSaveOnly};
    fakes::RecordingInterface window;
    FormCaption caption{.title = "Memwright", .caption = Property<std::string>("Memwright")};
    fakes::ScriptedMessageBox messages;
    fakes::ScriptedFileDialogs dialogs;
    ImageFiles image_files{store,  table,   grid,
                           window, caption, {messages, dialogs, machine_.files}};
    std::vector<std::string> notes;
    Recovery recovery{
        {store, table, grid, image_files, window},
        {machine_.files, machine_.locks, machine_.time, machine_.time, messages, machine_.state},
        [this](const std::string& text) { notes.push_back(text); }};
};

class RecoveryTest : public testing::Test {
  protected:
    ~RecoveryTest() override { std::filesystem::current_path(current_folder_); }

    std::vector<std::string> left() { return machine.native.files_in(machine.state); }
    Bytes content(const std::string& name) const { return machine.folder.get("state/" + name); }
    Snapshot snapshot(const std::string& name = kFirst) const {
        return snapshot_from(content(name));
    }
    void put(const std::string& name, const Bytes& bytes) {
        machine.native.make_folder(machine.state);
        machine.folder.put("state/" + name, bytes);
    }
    void make_old(const std::string& name, int days) {
        std::filesystem::last_write_time(
            std::filesystem::path(machine.state) / name,
            std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * days + 1));
    }
    std::unique_ptr<ProgramRun> start() { return std::make_unique<ProgramRun>(machine); }
    // A run that typed a label and crashed a second later.
    void crash_with(const std::string& tag) {
        const auto run = start();
        run->type(tag);
        machine.time.run_for(1s);
    }

    std::filesystem::path current_folder_ = std::filesystem::current_path();
    Machine machine;
};

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
    run->store.MemoryImage.set(layout::kLamp, 2);
    run->recovery.note_change();
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
    run->recovery.note_change();
    machine.time.run_for(5s);
    EXPECT_THAT(left(), IsEmpty()) << "nothing is kept after the end";
    run.reset();
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(machine.locks.held, IsEmpty());
}

TEST_F(RecoveryTest, the_next_start_asks_about_the_file_and_the_time) {
    {
        const auto run = start();
        run->image_files.open_named(
            machine.folder.put("Gr\xC3\xBC\xC3\x9F.120", Bytes(layout::kImageSize, 0)));
        run->type("A");
        machine.time.run_for(1s);
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    ASSERT_THAT(next->messages.shown, SizeIs(1));
    const Message& question = next->messages.shown[0];
    EXPECT_EQ(question.text, "Memwright ended before the table of " +
                                 machine.folder.file("Gr\xC3\xBC\xC3\x9F.120") +
                                 " was saved. It was last changed on 21.11.26 12:34.\r\n\r\n"
                                 "Do you want to restore it?");
    EXPECT_EQ(question.title, "Memwright");
    EXPECT_EQ(question.buttons, Buttons::yes_no);
    EXPECT_EQ(question.icon, Icon::question);
}

TEST_F(RecoveryTest, a_table_without_a_file_is_asked_about_as_such) {
    crash_with("A");
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_THAT(next->messages.shown.at(0).text,
                StartsWith("Memwright ended before a table that has no file yet was saved. "));
    EXPECT_EQ(next->caption.caption.get(), "Memwright");
    next->save_as(machine.folder.file("new.120"));
    EXPECT_EQ(machine.folder.get("new.120").size(), std::size_t{layout::kImageSize});
}

TEST_F(RecoveryTest, yes_gives_every_cell_the_image_and_the_file_back_as_unsaved) {
    SeededRandom random;
    const std::string path = machine.folder.put("mem.120", Bytes(layout::kImageSize, 0));
    std::vector<std::string> cells;
    MemoryImage image;
    {
        const auto run = start();
        run->image_files.open_named(path);
        for (int row = 1; row < kRows; ++row) {
            for (int col = 1; col < kCount; ++col) {
                std::string text(static_cast<std::size_t>(random.between(0, 8)), ' ');
                for (char& c : text) c = static_cast<char>(random.byte());
                run->grid.set_text(row, col, text);
            }
        }
        for (int i = 0; i < layout::kImageSize; ++i) run->store.MemoryImage.set(i, random.byte());
        machine.time.run_for(1s);
        cells = cells_of(run->grid);
        image = run->store.MemoryImage;
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_TRUE(cells_of(next->grid) == cells);
    EXPECT_TRUE(next->store.MemoryImage == image);
    EXPECT_EQ(next->image_files.current_path(), path);
    EXPECT_EQ(next->caption.caption.get(), "Memwright - " + path);
    EXPECT_THAT(next->window.calls, ElementsAre("EnableGui"));
    EXPECT_TRUE(next->table.IsDataChanged());
    EXPECT_THAT(next->notes, IsEmpty());
}

TEST_F(RecoveryTest, what_was_restored_counts_as_unsaved_even_if_it_is_what_the_file_holds) {
    const std::string path = machine.folder.put("mem.120", Bytes(layout::kImageSize, 0));
    {
        const auto run = start();
        run->image_files.open_named(path);
        run->grid.set_text(1, kTag, "X");  // no memory without a frequency
        machine.time.run_for(1s);
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_TRUE(next->table.IsDataChanged());
    next->table.SetChangeCheck();
    EXPECT_FALSE(next->table.IsDataChanged());
}

TEST_F(RecoveryTest, a_crash_right_after_restoring_loses_nothing) {
    crash_with("A");
    for (int i = 0; i < 3; ++i) {
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        EXPECT_EQ(next->tag(), "A");
        EXPECT_THAT(left(), ElementsAre(kFirst));
    }
    crash_with("B");
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
}

TEST_F(RecoveryTest, a_crash_after_restoring_on_a_full_disk_loses_nothing) {
    crash_with("A");
    {
        machine.files.writing_fails = true;
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        machine.time.run_for(5s);
        machine.files.writing_fails = false;
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
}

TEST_F(RecoveryTest, what_was_restored_and_changed_is_kept_and_goes_with_the_save) {
    crash_with("A");
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    next->type("B");
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_EQ(snapshot().cells[0], "B");
    next->save_as(machine.folder.file("mem.120"));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_THAT(machine.locks.held, IsEmpty());
}

TEST_F(RecoveryTest, no_starts_empty_and_keeps_the_snapshot_aside) {
    crash_with("A");
    const Bytes before = content(kFirst);
    auto next = start();
    EXPECT_FALSE(next->offered(Answer::no));
    EXPECT_EQ(next->tag(), "");
    EXPECT_THAT(next->window.calls, IsEmpty());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    EXPECT_EQ(content(kDeclined), before);
    next->recovery.end();
    next = start();
    EXPECT_FALSE(next->offered()) << "asked once";
    EXPECT_THAT(left(), ElementsAre(kDeclined));
}

TEST_F(RecoveryTest, a_declined_one_is_kept_for_thirty_days_from_then_on) {
    crash_with("A");
    make_old(kFirst, 400);
    EXPECT_FALSE(start()->offered(Answer::no));
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    make_old(kDeclined, 30);
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    make_old(kDeclined, 31);
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, one_that_nobody_has_been_asked_about_never_grows_old) {
    crash_with("A");
    make_old(kFirst, 4000);
    EXPECT_TRUE(start()->offered(Answer::yes));
}

TEST_F(RecoveryTest, declining_on_a_full_disk_keeps_it_aside_all_the_same) {
    crash_with("A");
    machine.files.writing_fails = true;
    EXPECT_FALSE(start()->offered(Answer::no));
    machine.files.writing_fails = false;
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    EXPECT_EQ(snapshot(kDeclined).cells[0], "A");
}

TEST_F(RecoveryTest, a_declined_one_replaces_no_other) {
    crash_with("A");
    EXPECT_FALSE(start()->offered(Answer::no));
    crash_with("B");
    EXPECT_FALSE(start()->offered(Answer::no));
    crash_with("C");
    EXPECT_FALSE(start()->offered(Answer::no));
    ASSERT_THAT(left(), SizeIs(3));
    EXPECT_EQ(snapshot("declined 2 2026-11-21 12.34.56 1.recovery").cells[0], "B");
    EXPECT_EQ(snapshot("declined 3 2026-11-21 12.34.56 1.recovery").cells[0], "C");
}

TEST_F(RecoveryTest, a_declined_one_comes_back_under_its_old_name) {
    crash_with("A");
    EXPECT_FALSE(start()->offered(Answer::no));
    std::filesystem::rename(std::filesystem::path(machine.state) / kDeclined,
                            std::filesystem::path(machine.state) / kFirst);
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
}

TEST_F(RecoveryTest, of_several_the_latest_is_offered_first_and_the_others_wait) {
    {
        const auto one = start(), other = start();
        one->type("ONE");
        machine.time.run_for(1s);
        other->type("OTHER");
        machine.time.run_for(1s);
    }
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
    {
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        EXPECT_THAT(next->messages.shown, SizeIs(1));
        EXPECT_EQ(next->tag(), "OTHER");
        next->recovery.end();
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "ONE");
}

TEST_F(RecoveryTest, no_goes_on_to_the_next_one) {
    {
        const auto one = start(), other = start();
        one->type("ONE");
        other->type("OTHER");
        machine.time.run_for(1s);
    }
    const auto next = start();
    next->messages.answers = {Answer::no, Answer::yes};
    EXPECT_TRUE(next->recovery.offer());
    EXPECT_EQ(next->tag(), "ONE");
    EXPECT_THAT(left(), ElementsAre(kFirst, "declined 2026-11-21 12.34.56 2.recovery"));
}

TEST_F(RecoveryTest, two_running_programs_do_not_take_each_others) {
    const auto one = start(), other = start();
    one->type("ONE");
    other->type("OTHER");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
    EXPECT_FALSE(one->offered());
    EXPECT_FALSE(other->offered());
    EXPECT_FALSE(start()->offered());
    one->recovery.end();
    EXPECT_THAT(left(), ElementsAre(kSecond));
    EXPECT_EQ(snapshot(kSecond).cells[0], "OTHER");
}

TEST_F(RecoveryTest, a_new_run_does_not_write_over_what_an_old_one_left) {
    crash_with("A");
    crash_with("B");
    EXPECT_EQ(snapshot(kFirst).cells[0], "A");
    EXPECT_EQ(snapshot(kSecond).cells[0], "B");
}

TEST_F(RecoveryTest, one_that_is_no_snapshot_is_told_and_set_aside_without_a_question) {
    crash_with("A");
    const Bytes whole = content(kFirst);
    const Bytes half(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
    std::filesystem::remove_all(machine.state);
    for (const Bytes& bytes : {Bytes(), half, Bytes(3, 0), Bytes(100'000, 0xFF)}) {
        put(kFirst, bytes);
        const auto next = start();
        EXPECT_FALSE(next->offered());
        EXPECT_THAT(next->notes, ElementsAre(HasSubstr(kFirst)));
        ASSERT_THAT(left(), ElementsAre(kDeclined));
        EXPECT_EQ(content(kDeclined), bytes);
        std::filesystem::remove_all(machine.state);
    }
}

TEST_F(RecoveryTest, a_huge_one_is_set_aside_unread) {
    put(kFirst, {});
    std::filesystem::resize_file(std::filesystem::path(machine.state) / kFirst, 1ULL << 36);
    const auto next = start();
    EXPECT_FALSE(next->offered());
    EXPECT_THAT(next->notes, SizeIs(1));
    EXPECT_THAT(left(), ElementsAre(kDeclined));
}

TEST_F(RecoveryTest, one_that_cannot_be_read_stands_in_no_others_way) {
    crash_with("A");
    put("2026-11-22 12.34.56 1.recovery", {1, 2, 3});
    machine.files.removing_fails = true;  // it cannot be set aside, either
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
    EXPECT_FALSE(next->notes.empty());
}

TEST_F(RecoveryTest, a_disk_that_cannot_be_read_costs_nothing) {
    crash_with("A");
    {
        machine.files.reading_fails = true;
        const auto next = start();
        EXPECT_FALSE(next->offered());
        EXPECT_THAT(next->notes, ElementsAre(HasSubstr("the disk is gone")));
        machine.files.reading_fails = false;
    }
    EXPECT_TRUE(start()->offered(Answer::yes));
}

TEST_F(RecoveryTest, an_old_declined_one_that_cannot_be_removed_stands_in_no_ones_way) {
    crash_with("A");
    put(std::string("declined old") + ".recovery", {1});
    make_old("declined old.recovery", 50);
    machine.files.removing_fails = true;
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
}

TEST_F(RecoveryTest, other_files_in_the_folder_are_left_alone) {
    put("notes.txt", {1});
    put("declined.txt", {1});
    put(".memwright-1.tmp", {1});
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(".memwright-1.tmp", "declined.txt", "notes.txt"));
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

TEST_F(RecoveryTest, locks_that_nobody_gets_are_told) {
    for (int n = 1; n <= 1000; ++n) {
        machine.locks.held.insert(machine.state + "/2026-11-21 12.34.56 " + std::to_string(n) +
                                  ".recovery.lock");
    }
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
