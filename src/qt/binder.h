#pragma once

// Binds the core's controls to the widgets that show them. The widget of a control is the one whose
// object name is the control's name.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "qt/grid_view.h"

namespace memwright::qt {

class Binder {
  public:
    explicit Binder(QWidget& form) : form_(form) {}

    void bind(MSFlexGrid& grid);
    void bind(TextBox& box);
    void bind(Label& label);
    void bind(CommandButton& button);
    void bind(ComboBox& box);
    void bind(ProgressBar& bar);
    void bind(CheckBox& box);
    void bind(OptionButton& button);
    void bind_line(TextBox& box);
    void bind_overlay(TextBox& box);
    void bind_overlay(ComboBox& box);
    void bind(MenuEntry& menu, QMenu& shown);
    void bind(MenuEntry& entry, QAction& shown);
    void bind(MenuChoice& choice, QMenu& shown);
    // The keys of an entry, which do as if it were chosen from its menu.
    void bind_shortcuts(MenuEntry& menu, MenuEntry& entry, QAction& shown);

    // Names of bound controls that have no widget.
    const std::vector<std::string>& missing() const { return missing_; }
    // Names of all bound controls.
    const std::vector<std::string>& bound() const { return bound_; }

  private:
    template <class Widget>
    Widget* find(const Control& control);
    void bind_state(Control& control, QWidget& widget);
    void bind_overlay_state(PlacedControl& control, QWidget& widget);
    void bind_place(PlacedControl& control, QWidget& widget);

    // Runs `show` now and whenever the property changes.
    template <class Value, class Show>
    void follow(Property<Value>& property, Show show) {
        show();
        connections_.push_back(property.changed.connect(show));
    }

    QWidget& form_;
    std::vector<Connection> connections_;
    std::vector<std::string> missing_;
    std::vector<std::string> bound_;
};

}  // namespace memwright::qt
