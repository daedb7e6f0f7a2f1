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
    MenuEntry line_above_rows{"LineAboveRows", "-"};
    MenuEntry insert_row{"InsertRowEntry", "&Insert Row"};
    MenuEntry close_up{"CloseUpEntry", "C&lose Up"};
    MenuChoice sort_rows{"SortRowsMenu", "&Sort Marked Rows"};
    MenuEntry fill_series{"FillSeriesEntry", "&Fill Series..."};
    MenuEntry move_to{"MoveToEntry", "&Move To..."};
    MenuChoice set_mode{"SetModeMenu", "Set M&ode"};
    MenuChoice set_pref{"SetPrefMenu", "Set Pr&ef"};
    MenuEntry line_above_find{"LineAboveFind", "-"};
    MenuEntry find{"FindEntry", "Fi&nd...", {"Ctrl+F"}};
    MenuEntry find_next{"FindNextEntry", "Find Ne&xt", {"F3"}};
    MenuEntry find_previous{"FindPreviousEntry", "Find Pre&vious", {"Shift+F3"}};
    MenuEntry go_to{"GoToEntry", "&Go To Memory...", {"Ctrl+G"}};

    // Help
    MenuEntry notices{"NoticesEntry", "&Notices..."};
};

}  // namespace memwright
