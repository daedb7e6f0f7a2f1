#pragma once

// The status window, the only log, and the menu entry that shows and hides it.

#include <functional>
#include <string>

#include "controls/controls.h"
#include "platform/settings_store.h"

namespace memwright {

class StatusWindow {
  public:
    // `lay_out` makes room for the status window or takes it back.
    StatusWindow(TextBox& Text1, MenuEntry& mnuShwDbg, SettingsStore& settings,
                 std::function<void()> lay_out)
        : Text1_(Text1), mnuShwDbg_(mnuShwDbg), settings_(settings), lay_out_(std::move(lay_out)) {}

    // Appends a line, puts the caret behind it and the focus into the window if it can be seen.
    void DebugOut(const std::string& txt);

    void mnuShwDbg_Click();

  private:
    TextBox& Text1_;
    MenuEntry& mnuShwDbg_;
    SettingsStore& settings_;
    std::function<void()> lay_out_;
};

}  // namespace memwright
