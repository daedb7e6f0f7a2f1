#include "app/frm_misc_setting.h"

#include <algorithm>

#include "platform/error.h"

namespace memwright {
namespace {

using Choices = std::vector<std::string>;

constexpr const char* kSeconds = " Sec";

// "Off" if wanted, then `count` numbers of seconds from 1 on in steps.
Choices seconds(int count, int step, bool with_off = false) {
    Choices choices;
    if (with_off) choices.emplace_back("Off");
    for (int k = 0; k < count; ++k) choices.push_back(std::to_string(1 + step * k) + kSeconds);
    return choices;
}

int position_of(const ComboBox& list) {
    const Choices& items = list.items;
    const auto found = std::ranges::find(items, list.text.get());
    if (found == items.end()) {
        throw InputError("\"" + list.text.get() + "\" is no choice of " + list.name + ".");
    }
    return static_cast<int>(found - items.begin());
}

}  // namespace

std::string frmMiscSetting::Setting::name() const {
    std::string plain = caption;
    std::erase(plain, '&');
    return plain;
}

frmMiscSetting::frmMiscSetting(modVR120& store) : store_(store) {
    using namespace layout;
    const auto byte = [&](const char* caption, ComboBox& list, int offset, Choices choices) {
        list.items = std::move(choices);
        settings_.push_back({caption, list, offset, std::nullopt});
    };
    const auto bit = [&](const char* caption, ComboBox& list, BitPlace place, Choices choices) {
        list.items = std::move(choices);
        settings_.push_back({caption, list, place.offset, place.bit});
    };
    byte("Scan &Resume", Combo1, kScanResume, seconds(12, 1));
    byte("Battery Sa&ve", Combo2, kBatterySave, seconds(5, 2, true));
    byte("Search &Width", Combo3, kSearchWidth, {"5 MHz", "10 MHz", "50 MHz", "100 MHz"});
    bit("A&ttenuator", Combo4, kAttenuator, {"OFF", "ON"});
    bit("AM Ant&enna", Combo5, kAmAntenna, {"External", "Bar"});
    bit("&FM Antenna", Combo6, kFmAntenna, {"External", "Earphone"});
    bit("&Key Beep", Combo7, kKeyBeep, {"ON", "OFF"});
    bit("S-&Meter Beep", Combo8, kSMeterBeep, {"OFF", "ON"});
    bit("S-Meter Se&ns.", Combo9, kSMeterSensitivity, {"Normal", "Low"});
    byte("&Lamp", Combo10, kLamp, {"AUTO", "ON", "OFF"});
    bit("Smart Searc&h", Combo11, kSmartSearch, {"Single", "Continue"});
    bit("Keypa&d Lock", Combo12, kKeypadLock, {"OFF", "ON"});
    byte("Fast Ste&p", Combo13, kFastStep, {"10 KHz", "100 KHz", "1 MHz", "10 MHz", "100 MHz"});
    bit("&Search", Combo14, kSearch, {"VFO", "Limit"});

    Option1.caption = "&Bank";
    Option2.caption = "&All";
    for (std::size_t i = 0; i < Check1.size(); ++i) Check1[i].caption = "&" + std::to_string(i);
    Command1.caption = "&OK";
    Command2.caption = "&Cancel";
    connections_.push_back(Command1.clicked.connect([this] {
        SaveAll();
        closed();
    }));
    connections_.push_back(Command2.clicked.connect([this] { closed(); }));
    Form_Load();
}

void frmMiscSetting::Form_Load() {
    for (std::size_t i = 0; i < Check1.size(); ++i) {
        const auto [offset, bit] = layout::linked_bank(static_cast<int>(i));
        Check1[i].checked = store_.GetBit(offset, bit) == 1;
    }
    const bool bank = store_.GetBit(layout::kScanMode.offset, layout::kScanMode.bit) == 1;
    Option1.selected = bank;
    Option2.selected = !bank;
    for (const Setting& setting : settings_) select(setting, stored(setting));
}

int frmMiscSetting::stored(const Setting& setting) const {
    return setting.bit ? store_.GetBit(setting.offset, *setting.bit)
                       : store_.MemoryImage.get(setting.offset);
}

void frmMiscSetting::select(const Setting& setting, int position) {
    const Choices& items = setting.list.items;
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
        const int position = position_of(setting.list);
        if (setting.bit) {
            store_.SetBit(setting.offset, *setting.bit, position);
        } else {
            store_.MemoryImage.set(setting.offset, static_cast<std::uint8_t>(position));
        }
    }
}

}  // namespace memwright
