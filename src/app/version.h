#pragma once

namespace memwright {

// The project's version, as the build knows it.
inline constexpr int kVersionMajor = MEMWRIGHT_VERSION_MAJOR;
inline constexpr int kVersionMinor = MEMWRIGHT_VERSION_MINOR;

}  // namespace memwright
