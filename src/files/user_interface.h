#pragma once

// What file commands and transfers ask of the main window.

#include <string>

#include "controls/controls.h"

namespace memwright {

// Locks the window around a transfer. The two first are deliberately no mirror images: EnableGui
// also enables the commands that need an image.
class UserInterface {
  public:
    virtual ~UserInterface() = default;

    virtual void DisableGui() = 0;
    virtual void EnableGui() = 0;

    // Undoes the last DisableGui: what was enabled before it is enabled again, and nothing more.
    virtual void unlock_gui() = 0;
};

// The main window's caption: the program's title, and behind it the path of the current file.
struct FormCaption {
    std::string title;
    std::string at_start{};  // the caption while there is no file
    Property<std::string> caption;

    void show_path(const std::string& path) { caption = title + " - " + path; }
    void show_no_path() { caption = at_start; }
};

}  // namespace memwright
