#include "image/set_mode_settings.h"

#include "base/error.h"

namespace memwright {
namespace {

using Choices = std::vector<std::string>;

SetModeSetting byte(const char* id, const char* caption, int offset, Choices choices) {
    return {id, caption, offset, std::nullopt, std::move(choices)};
}

SetModeSetting bit(const char* id, const char* caption, layout::BitPlace place, Choices choices) {
    return {id, caption, place.offset, place.bit, std::move(choices)};
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

int SetModeSetting::stored(const ImageCodec& image) const {
    return bit ? image.GetBit(offset, *bit) : image.MemoryImage.get(offset);
}

void SetModeSetting::store_position(ImageCodec& image, int position) const {
    if (bit) {
        image.SetBit(offset, *bit, position);
    } else {
        image.set_byte(offset, static_cast<std::uint8_t>(position));
    }
}

const std::string& SetModeSetting::choice(const ImageCodec& image) const {
    const int position = stored(image);
    if (position < static_cast<int>(choices.size())) {
        return choices[static_cast<std::size_t>(position)];
    }
    throw InputError("The settings cannot be shown: \"" + name() + "\", at offset " +
                     std::to_string(offset) + " of the memory image, is " +
                     std::to_string(position) + ", and its choices are 0 (" + choices.front() +
                     ") to " + std::to_string(choices.size() - 1) + " (" + choices.back() +
                     ").\nNothing was changed. Choose \"" + name() +
                     "\" on the radio and read it again, or open another image.");
}

const std::vector<SetModeSetting>& set_mode_settings() {
    using namespace layout;
    static const std::vector<SetModeSetting> settings = {
        byte("scan-resume", "Scan &Resume", kScanResume, seconds(12, 1)),
        byte("battery-save", "Battery Sa&ve", kBatterySave, seconds(5, 2, true)),
        byte("search-width", "Search &Width", kSearchWidth,
             {"5 MHz", "10 MHz", "50 MHz", "100 MHz"}),
        bit("attenuator", "A&ttenuator", kAttenuator, {"OFF", "ON"}),
        bit("am-antenna", "AM Ant&enna", kAmAntenna, {"External", "Bar"}),
        bit("fm-antenna", "&FM Antenna", kFmAntenna, {"External", "Earphone"}),
        bit("key-beep", "&Key Beep", kKeyBeep, {"ON", "OFF"}),
        bit("s-meter-beep", "S-&Meter Beep", kSMeterBeep, {"OFF", "ON"}),
        bit("s-meter-sens", "S-Meter Se&ns.", kSMeterSensitivity, {"Normal", "Low"}),
        byte("lamp", "&Lamp", kLamp, {"AUTO", "ON", "OFF"}),
        bit("smart-search", "Smart Searc&h", kSmartSearch, {"Single", "Continue"}),
        bit("keypad-lock", "Keypa&d Lock", kKeypadLock, {"OFF", "ON"}),
        byte("fast-step", "Fast Ste&p", kFastStep,
             {"10 KHz", "100 KHz", "1 MHz", "10 MHz", "100 MHz"}),
        bit("search", "&Search", kSearch, {"VFO", "Limit"}),
    };
    return settings;
}

bool scans_bank(const ImageCodec& image) {
    return image.GetBit(layout::kScanMode.offset, layout::kScanMode.bit) == 1;
}

void set_scans_bank(ImageCodec& image, bool bank) {
    image.SetBit(layout::kScanMode.offset, layout::kScanMode.bit, bank ? 1 : 0);
}

LinkedBanks linked_banks(const ImageCodec& image) {
    LinkedBanks linked{};
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        const auto [offset, bit] = layout::linked_bank(bank);
        linked[static_cast<std::size_t>(bank)] = image.GetBit(offset, bit) == 1;
    }
    return linked;
}

void set_linked_banks(ImageCodec& image, const LinkedBanks& linked) {
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        const auto [offset, bit] = layout::linked_bank(bank);
        image.SetBit(offset, bit, linked[static_cast<std::size_t>(bank)] ? 1 : 0);
    }
}

}  // namespace memwright
