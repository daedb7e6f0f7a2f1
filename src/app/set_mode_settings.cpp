#include "app/set_mode_settings.h"

#include "image/layout.h"

namespace memwright {
namespace {

using Choices = std::vector<std::string>;

SetModeSetting byte(const char* caption, int offset, Choices choices) {
    return {caption, offset, std::nullopt, std::move(choices)};
}

SetModeSetting bit(const char* caption, layout::BitPlace place, Choices choices) {
    return {caption, place.offset, place.bit, std::move(choices)};
}

// `count` numbers of seconds from 1 on in steps, behind "Off" if that can be chosen, too.
Choices seconds(int count, int step, bool with_off = false) {
    Choices choices;
    if (with_off) choices.emplace_back("Off");
    for (int k = 0; k < count; ++k) choices.push_back(std::to_string(1 + step * k) + " Sec");
    return choices;
}

}  // namespace

std::string SetModeSetting::name() const {
    std::string plain = caption;
    std::erase(plain, '&');
    return plain;
}

int SetModeSetting::stored(const modVR120& store) const {
    return bit ? store.GetBit(offset, *bit) : store.MemoryImage.get(offset);
}

void SetModeSetting::store_position(modVR120& store, int position) const {
    if (bit) {
        store.SetBit(offset, *bit, position);
    } else {
        store.MemoryImage.set(offset, static_cast<std::uint8_t>(position));
    }
}

const std::vector<SetModeSetting>& set_mode_settings() {
    using namespace layout;
    static const std::vector<SetModeSetting> settings = {
        byte("Scan &Resume", kScanResume, seconds(12, 1)),
        byte("Battery Sa&ve", kBatterySave, seconds(5, 2, true)),
        byte("Search &Width", kSearchWidth, {"5 MHz", "10 MHz", "50 MHz", "100 MHz"}),
        bit("A&ttenuator", kAttenuator, {"OFF", "ON"}),
        bit("AM Ant&enna", kAmAntenna, {"External", "Bar"}),
        bit("&FM Antenna", kFmAntenna, {"External", "Earphone"}),
        bit("&Key Beep", kKeyBeep, {"ON", "OFF"}),
        bit("S-&Meter Beep", kSMeterBeep, {"OFF", "ON"}),
        bit("S-Meter Se&ns.", kSMeterSensitivity, {"Normal", "Low"}),
        byte("&Lamp", kLamp, {"AUTO", "ON", "OFF"}),
        bit("Smart Searc&h", kSmartSearch, {"Single", "Continue"}),
        bit("Keypa&d Lock", kKeypadLock, {"OFF", "ON"}),
        byte("Fast Ste&p", kFastStep, {"10 KHz", "100 KHz", "1 MHz", "10 MHz", "100 MHz"}),
        bit("&Search", kSearch, {"VFO", "Limit"}),
    };
    return settings;
}

}  // namespace memwright
