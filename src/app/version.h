#pragma once

namespace memwright {

inline constexpr int kVersionMajor = 1;
inline constexpr int kVersionMinor = 0;

}  // namespace memwright
