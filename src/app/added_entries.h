#pragma once

// The menu entries that were added beside the original ones.

#include "controls/controls.h"

namespace memwright {

struct AddedEntries {
    // File
    MenuEntry new_table{"NewEntry", "&New", {"Ctrl+N"}};
    MenuChoice recent{"RecentMenu", "Open &Recent"};

    // Edit Channels
    MenuEntry undo{"UndoEntry", "&Undo", {"Ctrl+Z"}};
    MenuEntry redo{"RedoEntry", "&Redo", {"Ctrl+Shift+Z", "Ctrl+Y"}};
    MenuEntry line_below_undo{"LineBelowUndo", "-"};

    // Help
    MenuEntry notices{"NoticesEntry", "&Notices..."};
};

}  // namespace memwright
