#pragma once

// Undo and Redo: their menu entries say which step they take back or do again, and the view goes to
// what it changed. In an opened editor what was typed there is taken back first; Escape takes it
// back and closes the editor. A history begins where a file is opened, and with the first image.

#include <string>
#include <vector>

#include "app/events.h"
#include "app/form1.h"
#include "app/notices.h"
#include "files/image_files.h"
#include "link/clone_read.h"
#include "table/cell_editor.h"
#include "table/edit_history.h"

namespace memwright {

class Undo {
  public:
    struct Work {
        Form1& form;
        CellEditor& editor;
        EditHistory& history;
        ImageFiles& files;
        CloneRead& clone_read;
    };

    Undo(Work work, Events& events, Notices& notices);

  private:
    void show_entries();
    void undo();
    void redo();
    void take_back_typing();
    void close_editor();
    void show(const Edit& step, const std::string& what);
    bool is_editing() const { return work_.form.TxtGrid.visible || work_.form.CboGrid.visible; }

    Work work_;
    Events& events_;
    Notices& notices_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
