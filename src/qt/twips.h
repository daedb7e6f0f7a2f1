#pragma once

// Twips and the screen's logical pixels: 15 to a pixel at 96 dots an inch.

#include <QWidget>
#include <cmath>

#include "base/twips.h"

namespace memwright::qt {

// In twips: a window cannot be wider or higher than X and Windows can count.
inline constexpr double kLargestLength = 400000;

inline int pixels(const QWidget& on, double twips) {
    return static_cast<int>(std::lround(twips * on.logicalDpiX() / kTwipsPerInch));
}

inline double twips(const QWidget& on, int pixels) {
    return pixels * kTwipsPerInch / on.logicalDpiX();
}

}  // namespace memwright::qt
