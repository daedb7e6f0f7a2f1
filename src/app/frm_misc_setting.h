#pragma once

// The dialog of the radio-wide set-mode settings (image/set_mode_settings.h).

#include <array>
#include <vector>

#include "controls/controls.h"
#include "image/set_mode_settings.h"

namespace memwright {

class frmMiscSetting {
  public:
    // A setting with the list that shows it.
    struct Setting : SetModeSetting {
        Setting(const SetModeSetting& setting, ComboBox& its_list)
            : SetModeSetting(setting), list(its_list) {}

        ComboBox& list;
    };

    // Shows what the image holds. InputError if a list has no entry for it: nothing is changed.
    explicit frmMiscSetting(ImageCodec& image);

    ComboBox Combo1{"Combo1"};
    ComboBox Combo2{"Combo2"};
    ComboBox Combo3{"Combo3"};
    ComboBox Combo4{"Combo4"};
    ComboBox Combo5{"Combo5"};
    ComboBox Combo6{"Combo6"};
    ComboBox Combo7{"Combo7"};
    ComboBox Combo8{"Combo8"};
    ComboBox Combo9{"Combo9"};
    ComboBox Combo10{"Combo10"};
    ComboBox Combo11{"Combo11"};
    ComboBox Combo12{"Combo12"};
    ComboBox Combo13{"Combo13"};
    ComboBox Combo14{"Combo14"};

    // The scan mode: "Bank" and "All".
    OptionButton Option1{"Option1"};
    OptionButton Option2{"Option2"};

    // The linked scan bands 0 to 9.
    std::array<CheckBox, 10> Check1{
        CheckBox("Check1(0)"), CheckBox("Check1(1)"), CheckBox("Check1(2)"), CheckBox("Check1(3)"),
        CheckBox("Check1(4)"), CheckBox("Check1(5)"), CheckBox("Check1(6)"), CheckBox("Check1(7)"),
        CheckBox("Check1(8)"), CheckBox("Check1(9)")};

    CommandButton Command1{"Command1"};
    CommandButton Command2{"Command2"};

    // The settings of Combo1 to Combo14, in this order.
    const std::vector<Setting>& settings() const { return settings_; }

    // Encodes every control into the image.
    void SaveAll();

    Signal<> closed;

  private:
    void Form_Load();
    void Command1_Click();
    void Command2_Click() { closed(); }

    ImageCodec& image_;
    std::vector<Setting> settings_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
