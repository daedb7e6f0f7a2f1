#pragma once

// Which procedure each menu entry, button, key, click and typed text of the main window runs, and
// the name of the command that it is.

#include <vector>

#include "app/events.h"
#include "app/procedures.h"

namespace memwright {

class Commands {
  public:
    Commands(Procedures& procedures, Events& events);

    // Around each transfer: it ends when it has come to its end or was cancelled, not when it
    // failed.
    Signal<> transfer_begins;
    Signal<> transfer_ended;

  private:
    template <class Form, class... Arguments>
    void show_dialog(Arguments&&... arguments);
    void transfer(const std::function<void()>& procedure);
    void connect_file_menu();
    void connect_other_menus();
    void connect_transfer_menu();
    void connect_buttons();
    void connect_grid();
    void connect_overlays();

    Procedures& do_;
    Form1& form_;
    Events& events_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
