#pragma once

// Closing the main window, also in the middle of a transfer: that goes on behind the question about
// unsaved changes, and when it ends first, the window stays open.

#include <functional>

#include "app/shell.h"
#include "link/transfer_control.h"

namespace memwright {

class Closing {
  public:
    using Guard = std::function<void(const std::function<void()>&)>;

    // `guard` runs what an answer brings about, as events are run.
    Closing(Shell& shell, ImageFiles& image_files, TransferControl& control, FormWindow& window,
            Guard guard)
        : shell_(shell),
          image_files_(image_files),
          control_(control),
          window_(window),
          guard_(std::move(guard)) {}

    // Whether the window may close now. If that is asked in the middle of a transfer, it is closed
    // by the answer.
    bool allowed();

    // Around each transfer: it ends when it has come to its end or was cancelled, not when it
    // failed.
    void transfer_begins();
    void transfer_ended();

  private:
    void answered(Answer answer);
    void close_after(Answer answer);

    Shell& shell_;
    ImageFiles& image_files_;
    TransferControl& control_;
    FormWindow& window_;
    Guard guard_;
    bool confirmed_ = false;        // the window closes because of an answer
    bool save_when_ended_ = false;  // Yes, as soon as the transfer has ended
};

}  // namespace memwright
