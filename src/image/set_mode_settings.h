#pragma once

// The radio-wide set-mode settings: what they are called, what can be chosen, and where the memory
// image holds which choice. A choice's position, counted from 0, is what is stored.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "image/image_codec.h"

namespace memwright {

struct SetModeSetting {
    std::string id;          // for scripts, the same for ever: "scan-resume"
    std::string caption;     // with its mnemonic: "Scan &Resume"
    int offset;              // in the image
    std::optional<int> bit;  // none if it takes the whole byte
    std::vector<std::string> choices;

    std::string name() const;  // "Scan Resume"

    // The stored position, which may be past the last choice.
    int stored(const ImageCodec& image) const;
    void store_position(ImageCodec& image, int position) const;

    // The stored choice. InputError if there is none for the position.
    const std::string& choice(const ImageCodec& image) const;
};

// In the order of their lists in the dialog.
const std::vector<SetModeSetting>& set_mode_settings();

// Whether the scan mode is "Bank"; otherwise it is "All". One bit is this and the key beep.
inline constexpr const char* kScanModeId = "scan-mode";
bool scans_bank(const ImageCodec& image);
void set_scans_bank(ImageCodec& image, bool bank);

// The banks whose scans are linked.
inline constexpr const char* kLinkedBanksId = "linked-scan-bands";
using LinkedBanks = std::array<bool, layout::kBanks>;
LinkedBanks linked_banks(const ImageCodec& image);
void set_linked_banks(ImageCodec& image, const LinkedBanks& linked);

}  // namespace memwright
