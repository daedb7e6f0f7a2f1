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
    ErrorReport(MessageBox& messages, StatusWindow& status_window)
        : messages_(messages), status_window_(status_window) {}

    // Runs an event's procedure.
    void guard(const std::function<void()>& procedure);

  private:
    void show(const std::string& text);

    MessageBox& messages_;
    StatusWindow& status_window_;
};

}  // namespace memwright
