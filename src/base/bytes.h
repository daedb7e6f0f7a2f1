#pragma once

// Bytes that a file holds or a line carries, the first in front.

#include <cstdint>
#include <vector>

namespace memwright {

using Bytes = std::vector<std::uint8_t>;

}  // namespace memwright
