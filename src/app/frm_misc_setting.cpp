#include "app/frm_misc_setting.h"

#include <algorithm>

#include "base/error.h"

namespace memwright {
namespace {

using Choices = std::vector<std::string>;

int position_of(const ComboBox& list) {
    const Choices& items = list.items;
    const auto found = std::ranges::find(items, list.text.get());
    if (found == items.end()) {
        throw InputError("\"" + list.text.get() + "\" is no choice of " + list.name + ".");
    }
    return static_cast<int>(found - items.begin());
}

}  // namespace

frmMiscSetting::frmMiscSetting(ImageCodec& image) : image_(image) {
    const std::array<ComboBox*, 14> lists = {&Combo1,  &Combo2,  &Combo3,  &Combo4, &Combo5,
                                             &Combo6,  &Combo7,  &Combo8,  &Combo9, &Combo10,
                                             &Combo11, &Combo12, &Combo13, &Combo14};
    for (std::size_t i = 0; i < lists.size(); ++i) {
        settings_.emplace_back(set_mode_settings()[i], *lists[i]);
        lists[i]->items = settings_.back().choices;
    }
    Option1.caption = "&Bank";
    Option2.caption = "&All";
    for (std::size_t i = 0; i < Check1.size(); ++i) Check1[i].caption = "&" + std::to_string(i);
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    connections_.push_back(Command1.clicked.connect([this] { Command1_Click(); }));
    connections_.push_back(Command2.clicked.connect([this] { Command2_Click(); }));
    Form_Load();
}

void frmMiscSetting::Command1_Click() {
    SaveAll();
    closed();
}

void frmMiscSetting::Form_Load() {
    const LinkedBanks linked = linked_banks(image_);
    for (std::size_t i = 0; i < Check1.size(); ++i) Check1[i].checked = linked[i];
    const bool bank = scans_bank(image_);
    Option1.selected = bank;
    Option2.selected = !bank;
    for (const Setting& setting : settings_) setting.list.text = setting.choice(image_);
}

void frmMiscSetting::SaveAll() {
    LinkedBanks linked;
    for (std::size_t i = 0; i < Check1.size(); ++i) linked[i] = Check1[i].checked;
    set_linked_banks(image_, linked);
    // Deliberate: the key beep has the same bit and is written after this, so it is what remains.
    set_scans_bank(image_, Option1.selected);
    for (const Setting& setting : settings_) {
        setting.store_position(image_, position_of(setting.list));
    }
}

}  // namespace memwright
