#pragma once

// The channel table with its image and its file commands, behind a main window that nobody sees,
// and what targets ask of them.

#include "app/form1.h"
#include "fakes/scripted_dialogs.h"
#include "files/image_files.h"
#include "image/mod_vr120.h"
#include "table/channel_table.h"

namespace memwright::fuzz {

struct Bench {
    explicit Bench(FileSystem& files_of_machine) : files(files_of_machine) {
        table.initgrid();
        form.mnuSaveOnly.enabled = false;
    }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    FileSystem& files;
    modVR120 store{files};
    Form1 form;
    MSFlexGrid& grid{form.MSFlexGrid1};
    ChannelTable table{store, grid, form.mnuSaveOnly};
    fakes::ScriptedMessageBox messages;
    fakes::ScriptedFileDialogs dialogs;
    ImageFiles image_files{store, table, grid, form, form.caption, {messages, dialogs, files}};
};

// Image to table and back until nothing changes any more: a table that is shown again shows the
// same from then on. Expects that it takes no more than a few rounds.
void settle(Bench& bench);

}  // namespace memwright::fuzz
