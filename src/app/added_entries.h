#pragma once

// The menu entries that were added beside the original ones.

#include "controls/controls.h"

namespace memwright {

struct AddedEntries {
    // Help
    MenuEntry notices{"NoticesEntry", "&Notices..."};
};

}  // namespace memwright
