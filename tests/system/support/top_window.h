#pragma once

// A program's window as the window manager knows it: what its title bar, a taskbar and a mouse on
// its edges can do with it.
// Errors: a window that has gone reads as empty.

#include <string>
#include <vector>

#include "system/support/geometry.h"

namespace memwright::systest {

class XDisplay;

class TopWindow {
  public:
    TopWindow(const XDisplay& display, unsigned long id) : display_(&display), id_(id) {}

    unsigned long id() const { return id_; }
    std::string title() const;
    int process() const;
    std::string class_name() const;       // by which a desktop file claims it
    std::vector<int> icon_sizes() const;  // those of its square icons
    bool active() const;                  // holds the keyboard
    Rectangle rectangle() const;          // without the frame

    // Asks for it, as the button in the title bar does; the program may refuse.
    void close() const;
    void activate() const;
    void move_to(Point corner) const;  // the frame's corner
    void resize(int width, int height) const;

  private:
    const XDisplay* display_;
    unsigned long id_;
};

}  // namespace memwright::systest
