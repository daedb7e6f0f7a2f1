#pragma once

// The radio-wide set-mode settings: what they are called, what can be chosen, and where the memory
// image holds which choice. A choice's position, counted from 0, is what is stored.

#include <optional>
#include <string>
#include <vector>

#include "image/mod_vr120.h"

namespace memwright {

struct SetModeSetting {
    std::string caption;     // with its mnemonic: "Scan &Resume"
    int offset;              // in the image
    std::optional<int> bit;  // none if it takes the whole byte
    std::vector<std::string> choices;

    std::string name() const;  // "Scan Resume"

    // The stored position, which may be past the last choice.
    int stored(const modVR120& store) const;
    void store_position(modVR120& store, int position) const;
};

// In the order of their lists in the dialog.
const std::vector<SetModeSetting>& set_mode_settings();

}  // namespace memwright
