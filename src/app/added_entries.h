#pragma once

// The menu entries that were added beside the original ones.

#include "controls/controls.h"

namespace memwright {

struct AddedEntries {
    // Edit Channels
    MenuEntry undo{"UndoEntry", "&Undo", {"Ctrl+Z"}};
    MenuEntry redo{"RedoEntry", "&Redo", {"Ctrl+Shift+Z", "Ctrl+Y"}};
    MenuEntry line_below_undo{"LineBelowUndo", "-"};

    // Help
    MenuEntry notices{"NoticesEntry", "&Notices..."};
};

}  // namespace memwright
