#pragma once

// All that the program uses of the platform: what the operating system and its desktop give.

#include "app/dialog_views.h"
#include "platform/file_dialogs.h"
#include "platform/file_system.h"
#include "platform/form_window.h"
#include "platform/message_box.h"
#include "platform/ms_comm.h"
#include "platform/printer.h"
#include "platform/run_lock.h"
#include "platform/settings_store.h"
#include "platform/time.h"
#include "platform/user_folders.h"
#include "table/cell_editor.h"

namespace memwright {

struct Platform {
    MessageBox& messages;
    FileDialogs& file_dialogs;
    FileSystem& files;
    SettingsStore& settings;
    MSComm& port;
    Clock& clock;
    EventLoop& loop;
    FormWindow& window;
    DialogViews& dialogs;
    CellPlaces& cells;
    Printer& printer;
    RunLocks& locks;
    UserFolders folders;
};

}  // namespace memwright
