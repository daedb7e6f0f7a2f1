#include "app/frm_misc_setting.h"

#include <algorithm>

#include "platform/error.h"

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

frmMiscSetting::frmMiscSetting(modVR120& store) : store_(store) {
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
    for (std::size_t i = 0; i < Check1.size(); ++i) {
        const auto [offset, bit] = layout::linked_bank(static_cast<int>(i));
        Check1[i].checked = store_.GetBit(offset, bit) == 1;
    }
    const bool bank = store_.GetBit(layout::kScanMode.offset, layout::kScanMode.bit) == 1;
    Option1.selected = bank;
    Option2.selected = !bank;
    for (const Setting& setting : settings_) select(setting, setting.stored(store_));
}

void frmMiscSetting::select(const Setting& setting, int position) {
    const Choices& items = setting.choices;
    if (position >= static_cast<int>(items.size())) {
        throw InputError("The settings cannot be shown: \"" + setting.name() + "\", at offset " +
                         std::to_string(setting.offset) + " of the memory image, is " +
                         std::to_string(position) + ", and its choices are 0 (" + items.front() +
                         ") to " + std::to_string(items.size() - 1) + " (" + items.back() +
                         ").\nNothing was changed. Choose \"" + setting.name() +
                         "\" on the radio and read it again, or open another image.");
    }
    setting.list.text = items[static_cast<std::size_t>(position)];
}

void frmMiscSetting::SaveAll() {
    for (std::size_t i = 0; i < Check1.size(); ++i) {
        const auto [offset, bit] = layout::linked_bank(static_cast<int>(i));
        store_.SetBit(offset, bit, Check1[i].checked ? 1 : 0);
    }
    // Deliberate: the key beep has the same bit and is written after this, so it is what remains.
    store_.SetBit(layout::kScanMode.offset, layout::kScanMode.bit, Option1.selected ? 1 : 0);
    for (const Setting& setting : settings_) {
        setting.store_position(store_, position_of(setting.list));
    }
}

}  // namespace memwright
