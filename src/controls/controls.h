#pragma once

// The controls of the windows as plain values with change signals. What stands in them is what the
// window shows. Lengths are in twips, 1440 to the inch. Texts are UTF-8; only what belongs to the
// channel table's cells, and what is typed into one-line boxes, is in the radio's character set
// (base/charset.h).

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/signal.h"
#include "controls/input.h"

namespace memwright {

template <class T>
class Property {
  public:
    Property() = default;
    explicit Property(T value) : value_(std::move(value)) {}

    const T& get() const { return value_; }
    operator const T&() const { return value_; }

    Property& operator=(T value) {
        if (value == value_) return *this;
        value_ = std::move(value);
        changed();
        return *this;
    }

    Signal<> changed;

  private:
    T value_{};
};

struct Control {
    explicit Control(std::string its_name) : name(std::move(its_name)) {}

    const std::string name;
    Property<bool> enabled{true};
    Property<bool> visible{true};
};

// A control with a place on its form.
struct PlacedControl : Control {
    using Control::Control;

    Property<double> left;
    Property<double> top;
    Property<double> width;
    Property<double> height;
};

// Sets a width or height. Error if it is negative: the length stays as it was.
void set_length(Property<double>& length, double twips);

struct Label : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::string> caption;
};

struct CommandButton : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::string> caption;
    Property<std::string> tip;  // what it does, for the mouse and for assistive programs
    Signal<> clicked;
};

struct CheckBox : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::string> caption;
    Property<bool> checked{false};
};

// One of the buttons of a form or frame of which at most one is selected. Whoever selects one in
// the program deselects the others.
struct OptionButton : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::string> caption;
    Property<bool> selected{false};
};

struct TextBox : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::string> text;
    Property<std::size_t> caret;       // characters before it
    Property<std::size_t> max_length;  // characters; 0 for no limit
    Property<bool> read_only{false};
    Signal<> edited;  // its text was typed
    Signal<> focus_wanted;
    Signal<> focus_lost;
    Signal<> escaped;  // Escape was pressed in it

    // True if the key was used and is not to act in the text; empty for none of its own.
    std::function<bool(Key, bool shift)> key_down;
    // A typed character, which may be changed; false if it is to be dropped.
    std::function<bool(char& KeyAscii)> key_press;

    // What of a text that is inserted as a whole goes in, beside the text around it; empty if all.
    std::function<std::string(const std::string& text, const std::string& around)> pasted;
};

// A drop-down list. Its text need not be one of the items.
struct ComboBox : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<std::vector<std::string>> items;
    Property<std::string> text;
    Signal<> edited;  // its text was typed
    Signal<> picked;  // an item was chosen
    Signal<> focus_wanted;
    Signal<> focus_lost;
    // As of a text box.
    Signal<> escaped;
    std::function<bool(Key, bool shift)> key_down;
    std::function<std::string(const std::string& text, const std::string& around)> pasted;
};

struct ProgressBar : PlacedControl {
    using PlacedControl::PlacedControl;

    Property<int> percent{0};
    Property<bool> busy{false};  // no end in sight: shows movement instead of a share
};

// A menu, an entry of one, or a separator line between entries.
struct MenuEntry : Control {
    MenuEntry(std::string its_name, std::string its_caption,
              std::vector<std::string> its_shortcuts = {})
        : Control(std::move(its_name)),
          caption(std::move(its_caption)),
          shortcuts(std::move(its_shortcuts)) {}
    virtual ~MenuEntry() = default;

    Property<std::string> caption;
    Property<std::string> tip;  // what it does, where the caption does not tell; "" for none
    // Keys that do as if its menu were opened and it were chosen, as "Ctrl+Z". The first is shown
    // beside it.
    const std::vector<std::string> shortcuts;
    Property<bool> checked{false};
    Signal<> clicked;
};

// An entry of a menu that opens a list to choose from.
struct MenuChoice : MenuEntry {
    using MenuEntry::MenuEntry;

    Property<std::vector<std::string>> items;  // as captions, with their mnemonics
    Signal<std::size_t> picked;                // the item's number, from 0
};

}  // namespace memwright
