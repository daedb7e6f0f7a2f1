#pragma once

// Runs of the whole program with a simulated radio, in virtual time, whose files lie in a folder of
// the test's own.

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "app/faked_platform.h"
#include "fakes/faulty_file_system.h"
#include "fakes/held_locks.h"
#include "fakes/simulated_port.h"
#include "fakes/virtual_time.h"
#include "native/file_system.h"
#include "radio/demonstration.h"
#include "support/temporary_folder.h"
#include "table/columns.h"

namespace memwright {

// A run of the program, which crashes when it is dropped.
struct Running : fakes::FakedPlatform {
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

class RunsTest : public testing::Test {
  protected:
    RunsTest() { native.set_current_folder(folder.path().string()); }
    ~RunsTest() override { native.set_current_folder(folder_before); }

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
        EXPECT_THAT(names, testing::SizeIs(1));
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

}  // namespace memwright
