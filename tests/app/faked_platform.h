#pragma once

// What the program has of the platform, all fakes: to be joined with files, a port, a time
// and locks of the test's choice.

#include <utility>

#include "app/idle_platform.h"
#include "app/program.h"
#include "fakes/fake_cell_places.h"
#include "fakes/fake_window.h"
#include "fakes/memory_settings.h"
#include "fakes/paper.h"
#include "fakes/scripted_dialogs.h"

namespace memwright::fakes {

struct FakedPlatform {
    explicit FakedPlatform(MemorySettings stored = {}) : settings(std::move(stored)) {}
    FakedPlatform(const FakedPlatform&) = delete;
    FakedPlatform& operator=(const FakedPlatform&) = delete;

    // `time` is the clock as well as what waits.
    template <class Time>
    Platform platform(FileSystem& files, MSComm& port, Time& time, RunLocks& locks,
                      UserFolders folders) {
        return {messages, dialogs, files, settings,          port, time, time, window, views,
                cells,    paper,   locks, std::move(folders)};
    }

    MemorySettings settings;
    ScriptedMessageBox messages;
    ScriptedFileDialogs dialogs;
    FakeWindow window;
    WorkedDialogs views;
    ListedDevices devices;
    ComPorts ports{devices, settings, {}};
    FakeCellPlaces cells;
    Paper paper;
};

}  // namespace memwright::fakes
