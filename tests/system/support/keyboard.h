#pragma once

// A keyboard: real key events of the X server, which go to whatever window has the focus.
// Errors: std::runtime_error for a key that does not exist.

#include <map>
#include <string>
#include <string_view>

namespace memwright::systest {

class XDisplay;

class Keyboard {
  public:
    explicit Keyboard(const XDisplay& display) : display_(display) {}

    // One key, or a chord: "F", "Enter", "Alt+F", "ctrl+shift+Home", "ctrl++". Letters stand for
    // the key, so "Alt+F" does not press Shift.
    void press(std::string_view chord);

    // Any UTF-8 text, a line feed being the Enter key. Characters that the layout lacks get a key
    // of their own first.
    void type(std::string_view text);

  private:
    struct Key {
        unsigned code = 0;
        bool shifted = false;
    };
    Key key_for(unsigned long symbol);
    unsigned code_for(unsigned long symbol);
    void send(unsigned code, bool down);
    unsigned long symbol_named(std::string_view name) const;

    const XDisplay& display_;
    std::map<unsigned long, unsigned> added_;  // symbol to the spare key that received it
};

}  // namespace memwright::systest
