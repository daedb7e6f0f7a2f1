#pragma once

// Runs of the program, one after the other or beside each other, on one machine whose disk, locks
// and time belong to the test: each with a table, its file commands and its recovery.

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "fakes/recording_interface.h"
#include "fakes/scripted_dialogs.h"
#include "fakes/virtual_time.h"
#include "files/recovery.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"
#include "table/columns.h"

namespace memwright {

inline constexpr const char* kFirst = "2026-11-21 12.34.56 1.recovery";
inline constexpr const char* kSecond = "2026-11-21 12.34.56 2.recovery";
inline constexpr const char* kDeclined = "declined 2026-11-21 12.34.56 1.recovery";

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
    explicit ProgramRun(Machine& machine) : ProgramRun(machine, machine.locks) {}
    ProgramRun(Machine& machine, RunLocks& locks) : machine_(machine), locks_(locks) {
        table.initgrid();
        mnuSaveOnly.enabled = false;
        recovery.begin();
    }

    void type(const std::string& tag, int row = 1) {
        mnuSaveOnly.enabled = true;
        grid.set_text(row, columns::kFreq, "145.51250");
        grid.set_text(row, columns::kMode, "NFM");
        grid.set_text(row, columns::kTag, tag);
    }
    std::string tag() const { return grid.TextMatrix(1, columns::kTag); }
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
    RunLocks& locks_;

  public:
    modVR120 store{machine_.files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    ChannelTable table{store, grid, mnuSaveOnly};
    EditRecorder edits{grid, store};
    EditHistory history{edits};
    fakes::RecordingInterface window;
    FormCaption caption{.title = "Memwright", .caption = Property<std::string>("Memwright")};
    fakes::ScriptedMessageBox messages;
    fakes::ScriptedFileDialogs dialogs;
    ImageFiles image_files{store,  table,   grid,
                           window, caption, {messages, dialogs, machine_.files}};
    std::vector<std::string> notes;
    Recovery recovery{
        {store, table, grid, edits, history, image_files, window},
        {machine_.files, locks_, machine_.time, machine_.time, messages, machine_.state},
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
        machine.native.make_private_folder(machine.state);
        machine.folder.put("state/" + name, bytes);
    }
    // As many other runs have taken their names.
    void hold_first_names(int count) {
        for (int n = 1; n <= count; ++n) {
            machine.locks.held.insert(machine.state + "/2026-11-21 12.34.56 " + std::to_string(n) +
                                      ".recovery.lock");
        }
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
        machine.time.run_for(std::chrono::seconds(1));
    }

    std::filesystem::path current_folder_ = std::filesystem::current_path();
    Machine machine;
};

}  // namespace memwright
