#pragma once

// A program with windows, driven and read like by a person with a mouse, a keyboard and a screen
// reader. When its test fails, a picture of the screen is left in the folder system-failures.
// Errors: as Accessible; std::runtime_error when the program ends while it is waited for.

#include <initializer_list>
#include <string>
#include <string_view>

#include "system/support/accessible.h"
#include "system/support/program.h"

namespace memwright::systest {

class Application : public Program {
  public:
    Application(Desktop& desktop, const std::filesystem::path& file,
                std::vector<std::string> arguments = {}, const Environment& extra = {});
    ~Application() override;

    // The element above all windows.
    Accessible root(Milliseconds patience = kPatience) const;
    Accessible find(const Query& query, Milliseconds patience = kPatience) const;

    // The main window, once it holds the keyboard.
    Accessible main_window(std::string_view title) const;
    // A dialog, once it holds the keyboard.
    Accessible dialog(std::string_view title, Milliseconds patience = kPatience) const;
    // A message box that says the text (a part will do), once it holds the keyboard.
    Accessible message_box(std::string_view title, std::string_view text = {},
                           Milliseconds patience = kPatience) const;
    // Whether a window of any kind is open under that title now. To see that none comes up, settle
    // first.
    bool has_window(std::string_view title) const;

    // Opens the menus with the mouse and clicks the last item.
    void choose(std::initializer_list<std::string_view> path) const;

    // Returns once the program has dealt with all keys, clicks and window changes up to now, so
    // that "nothing happened" can be told from "not yet". Needs an event loop that turns.
    void settle(Milliseconds patience = kPatience) const;

    double scale() const { return scale_; }  // pixels per unit of the program's coordinates
    std::string tree() const;

  private:
    Accessible active_window(const Query& query, std::string_view text,
                             Milliseconds patience) const;

    double scale_ = 1;
    mutable std::string owner_;  // its name on the bus, once known
};

}  // namespace memwright::systest
