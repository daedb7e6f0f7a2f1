#pragma once

// The memory of a radio that somebody has used for a while: some banks of channels with empty
// memories between them, radio-wide settings and search limits. For tours, pictures and trials.

#include "image/memory_image.h"

namespace memwright::radio {

MemoryImage demonstration_memory();

}  // namespace memwright::radio
