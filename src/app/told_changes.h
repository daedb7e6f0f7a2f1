#pragma once

// Marked rows outlive clicks, files and reads. So the commands on them say in their tips which rows
// they take, and when one has run, or something else has taken the place of what was there, a
// notice names it with Undo.

#include <string>
#include <vector>

#include "app/form1.h"
#include "app/notices.h"
#include "table/edit_history.h"

namespace memwright {

class ToldChanges {
  public:
    ToldChanges(Form1& form, EditHistory& history, Notices& notices);

  private:
    void show_tips();
    void look_at_last_step();
    bool waits() const;

    Form1& form_;
    EditHistory& history_;
    Notices& notices_;
    std::string told_;  // the notice that waits
    std::vector<Connection> connections_;
};

}  // namespace memwright
