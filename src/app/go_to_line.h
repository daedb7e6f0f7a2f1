#pragma once

// The line that goes to a memory by its bank and number, or its row: its controls, and what they
// do.

#include <string>
#include <vector>

#include "app/events.h"
#include "app/form1.h"
#include "app/notices.h"
#include "table/cell_editor.h"

namespace memwright {

class GoToLine {
  public:
    GoToLine(Form1& form, CellPlaces& cells, Events& events, Notices& notices);
    GoToLine(const GoToLine&) = delete;
    GoToLine& operator=(const GoToLine&) = delete;

    Property<bool> shown{false};
    TextBox memory{"GoToText"};
    Label message{"GoToMessage"};  // what is wanted, if it is something else
    CommandButton go{"GoToButton"};
    CommandButton close{"GoToClose"};

  private:
    void open();
    void go_there();

    Form1& form_;
    CellPlaces& cells_;
    Notices& notices_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
