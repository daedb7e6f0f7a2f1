#pragma once

// A main window's place on a screen, which remembers in which order it was moved and sized.

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/number_text.h"
#include "platform/form_window.h"
#include "platform/settings_store.h"

namespace memwright::fakes {

class FakeWindow final : public FormWindow {
  public:
    // As designed, until something else is set.
    double its_left = 0;
    double its_top = 0;
    double its_width = 9000;
    double its_height = 6000;
    WindowState its_state = WindowState::normal;

    double its_frame_height = 660;
    double its_screen_width = 28800;
    double its_screen_height = 16200;

    std::vector<std::string> calls;  // "Top=5100"
    std::set<std::string> refused;   // "Top": setting it is an error
    int closes = 0;
    std::function<void()> when_closed;  // what the window system does of it
    int times_brought_into_sight = 0;
    std::vector<std::string> menus_popped_up;  // by name

    WindowState state() const override { return its_state; }
    void set_state(WindowState state) override {
        note("WindowState", static_cast<int>(state));
        its_state = state;
    }
    double left() const override { return its_left; }
    double top() const override { return its_top; }
    double width() const override { return its_width; }
    double height() const override { return its_height; }
    void set_left(double twips) override { set("Left", its_left, twips); }
    void set_top(double twips) override { set("Top", its_top, twips); }
    void set_width(double twips) override { set("Width", its_width, twips); }
    void set_height(double twips) override { set("Height", its_height, twips); }
    void bring_into_sight() override { ++times_brought_into_sight; }
    double frame_height() const override { return its_frame_height; }
    double screen_width() const override { return its_screen_width; }
    double screen_height() const override { return its_screen_height; }
    void pop_up_menu(const std::string& name) override { menus_popped_up.push_back(name); }
    void close() override {
        ++closes;
        if (when_closed) when_closed();
    }

  private:
    void note(const std::string& what, double value) {
        if (refused.contains(what)) throw Error("The window refuses its " + what + ".");
        calls.push_back(what + "=" + shortest_text(value));
    }
    void set(const std::string& what, double& value, double twips) {
        note(what, twips);
        value = twips;
    }
};

}  // namespace memwright::fakes
