#pragma once

// The unit of all lengths on forms and on paper.

namespace memwright {

inline constexpr double kTwipsPerInch = 1440;

}  // namespace memwright
