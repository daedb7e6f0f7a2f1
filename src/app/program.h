#pragma once

// The whole program: the main window's controls with the commands that it has always had, and what
// was added around them.

#include <string>
#include <vector>

#include "app/closing.h"
#include "app/commands.h"
#include "app/doubtful_read.h"
#include "app/error_report.h"
#include "app/events.h"
#include "app/find_line.h"
#include "app/first_steps.h"
#include "app/form1.h"
#include "app/go_to_line.h"
#include "app/kept_images.h"
#include "app/new_table.h"
#include "app/notices.h"
#include "app/platform.h"
#include "app/procedures.h"
#include "app/recent_files.h"
#include "app/row_commands.h"
#include "app/told_changes.h"
#include "app/undo.h"
#include "files/recovery.h"
#include "table/edit_history.h"
#include "table/edit_recorder.h"
#include "table/grid_keys.h"

namespace memwright {

class Program {
  public:
    Program(Platform platform, ComPorts& ports);

    Form1 form;
    Notices notices;

    // Opens the main window: to be called once the window shows the form's controls.
    void start();

    // The window's events that are no click on a control.
    void resized();
    bool close_allowed();
    void escape_pressed();
    void open_named(const std::string& path);

    // Offers what a run that crashed left behind: to be called once the window is seen.
    void offer_recovery();

    // Says how to begin, if nobody knows yet: to be called when all that a start opens is open.
    void say_first_steps() { first_steps_.begin(); }

    // Does what a notice of the list offers.
    void act_on_notice(std::size_t number);

    // Every change of table and image.
    EditRecorder& edits() { return edits_; }
    EditHistory& history() { return history_; }

    // What is typed into below the form.
    FindLine& find_line() { return find_line_; }
    GoToLine& go_to_line() { return go_to_line_; }

  private:
    Platform platform_;
    Procedures procedures_;
    EditRecorder edits_;
    EditHistory history_;
    ErrorReport errors_;
    Events events_;
    Commands commands_;

    // What was added. An addition is a class with a file pair of its own that wires itself, and a
    // line here.
    GridKeys grid_keys_;
    Closing closing_;
    FirstSteps first_steps_;
    DoubtfulRead doubtful_read_;
    KeptImages kept_images_;
    Recovery recovery_;
    Undo undo_;
    ToldChanges told_changes_;
    NewTable new_table_;
    RecentFiles recent_files_;
    FindLine find_line_;
    GoToLine go_to_line_;
    RowCommands row_commands_;

    std::vector<Connection> connections_;
};

}  // namespace memwright
