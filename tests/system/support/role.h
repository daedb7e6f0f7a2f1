#pragma once

// The kinds and states of elements that the tests ask for, with their numbers in the
// accessibility protocol (org.a11y.atspi).

#include <cstdint>
#include <ostream>

namespace memwright::systest {

enum class Role : std::uint32_t {
    kAlert = 2,  // a message box
    kCheckBox = 7,
    kComboBox = 11,
    kDialog = 16,
    kFrame = 23,  // a main window
    kLabel = 29,
    kList = 31,
    kListItem = 32,
    kMenuBar = 34,
    kMenuItem = 35,
    kPanel = 39,
    kPopupMenu = 41,
    kProgressBar = 42,
    kPushButton = 43,
    kRadioButton = 44,
    kScrollBar = 48,
    kSlider = 51,
    kSpinButton = 52,
    kStatusBar = 54,
    kTable = 55,
    kTableCell = 56,
    kColumnHeader = 57,
    kRowHeader = 58,
    kText = 61,
    kToolBar = 63,
    kTree = 65,
    kTreeTable = 66,
    kApplication = 75,
};

enum class State : unsigned {
    kActive = 1,  // of a window: it holds the keyboard
    kChecked = 4,
    kEditable = 7,
    kEnabled = 8,
    kExpanded = 10,
    kFocused = 12,
    kModal = 16,
    kPressed = 20,
    kSelected = 23,
    kShowing = 25,  // on the screen, its parents too
    kVisible = 30,
    kCheckable = 41,
    kReadOnly = 43,
};

inline std::ostream& operator<<(std::ostream& out, Role role) {
    return out << "role " << static_cast<std::uint32_t>(role);
}

}  // namespace memwright::systest
