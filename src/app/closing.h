#pragma once

// Closing the main window, also in the middle of a transfer: that goes on behind the question about
// unsaved changes, and when it ends first, the window stays open.

#include <vector>

#include "app/commands.h"
#include "app/events.h"
#include "app/shell.h"
#include "link/transfer_control.h"

namespace memwright {

class Closing {
  public:
    struct Work {
        Shell& shell;
        ImageFiles& image_files;
        TransferControl& control;
        Commands& commands;
    };

    Closing(Work work, FormWindow& window, Events& events);

    // Whether the window may close now. If that is asked in the middle of a transfer, it is closed
    // by the answer.
    bool allowed();

  private:
    void answered(Answer answer);
    void transfer_ended();
    void close_after(Answer answer);

    Work work_;
    FormWindow& window_;
    Events& events_;
    std::vector<Connection> connections_;
    bool confirmed_ = false;        // the window closes because of an answer
    bool save_when_ended_ = false;  // Yes, as soon as the transfer has ended
};

}  // namespace memwright
