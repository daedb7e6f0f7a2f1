#pragma once

// One connection to the X server, with the handful of requests that the support library makes.
// Included by its sources only: Xlib's macros (None, Bool, Status) clash with everybody's names.
// Errors: std::runtime_error when the display cannot be opened; requests about a window that is
// just going away read as empty.

#include <array>
#include <string>
#include <vector>

// GoogleTest has to come before Xlib and its macros.
#include "support/eventually.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace memwright::systest {

class XDisplay {
  public:
    explicit XDisplay(const std::string& name);
    ~XDisplay();
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;

    Display* get() const { return display_; }
    Window root() const { return root_; }

    std::vector<unsigned long> numbers(Window window, const char* property) const;
    std::string text(Window window, const char* property) const;

    // The way in which pagers and taskbars ask the window manager for something.
    void ask_manager(Window window, const char* message, const std::array<long, 5>& data) const;

    // True once the window manager has dealt with everything that came before.
    bool manager_is_done(Milliseconds patience) const;
    // True once the window's program has read every event sent to it so far; false without answer.
    bool program_is_done(Window window, Milliseconds patience) const;

  private:
    Atom atom(const char* name) const;
    std::string bytes(Window window, const char* property) const;

    Display* display_ = nullptr;
    Window root_ = 0;
    Window probe_ = 0;  // never shown; the window manager is asked about it
    mutable long pings_ = 0;
};

}  // namespace memwright::systest
