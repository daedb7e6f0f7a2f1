#pragma once

// The boundary where events enter: what fails behind it is shown in a message box and leaves a line
// in the status window, and the program goes on.

#include <functional>
#include <string>

#include "link/status_window.h"
#include "platform/message_box.h"

namespace memwright {

class ErrorReport {
  public:
    // `in_a_transfer`: whether one is under way, which is not to wait until the user has read.
    ErrorReport(MessageBox& messages, StatusWindow& status_window,
                std::function<bool()> in_a_transfer)
        : messages_(messages),
          status_window_(status_window),
          in_a_transfer_(std::move(in_a_transfer)) {}

    // Runs an event's procedure.
    void guard(const std::function<void()>& procedure);

  private:
    void show(const std::string& text);

    MessageBox& messages_;
    StatusWindow& status_window_;
    std::function<bool()> in_a_transfer_;
    Connection shown_;
};

}  // namespace memwright
