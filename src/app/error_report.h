#pragma once

// The boundary where events enter: what fails behind it is shown in a message box, which the list
// of notices keeps, and the program goes on.

#include <functional>
#include <string>

#include "app/notices.h"
#include "platform/message_box.h"

namespace memwright {

class ErrorReport {
  public:
    // `in_a_transfer`: whether one is under way, which is not to wait until the user has read.
    ErrorReport(MessageBox& messages, Notices& notices, std::function<bool()> in_a_transfer)
        : messages_(messages), notices_(notices), in_a_transfer_(std::move(in_a_transfer)) {}

    // Runs an event's procedure.
    void guard(const std::function<void()>& procedure);

  private:
    void show(const std::string& text);

    MessageBox& messages_;
    Notices& notices_;
    std::function<bool()> in_a_transfer_;
    Connection shown_;
};

}  // namespace memwright
