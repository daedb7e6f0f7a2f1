#pragma once

// A main window's place on the screen. Lengths in twips, of the whole window with its frame.

#include <string>

namespace memwright {

enum class WindowState { normal = 0, minimised = 1, maximised = 2 };

class FormWindow {
  public:
    virtual ~FormWindow() = default;

    virtual WindowState state() const = 0;
    virtual void set_state(WindowState state) = 0;

    virtual double left() const = 0;
    virtual double top() const = 0;
    virtual double width() const = 0;
    virtual double height() const = 0;
    virtual void set_left(double twips) = 0;
    virtual void set_top(double twips) = 0;
    virtual void set_width(double twips) = 0;
    virtual void set_height(double twips) = 0;

    // Moves a window whose title bar cannot be seen on any screen, or which is larger than its
    // screen, so that all of it can be seen. Any other stays as it is.
    virtual void bring_into_sight() = 0;

    // What the frame and the menu bar take of the height.
    virtual double frame_height() const = 0;

    virtual double screen_width() const = 0;
    virtual double screen_height() const = 0;

    // Shows one of the window's menus at the mouse.
    virtual void pop_up_menu(const std::string& name) = 0;

    // Asks the window to close, as its close button does.
    virtual void close() = 0;
};

}  // namespace memwright
