#pragma once

// Twips, 1440 to the inch, and the screen's logical pixels: 15 to a pixel at 96 dots an inch.

#include <QWidget>
#include <cmath>

namespace memwright::qt {

inline constexpr double kTwipsPerInch = 1440;

inline int pixels(const QWidget& on, double twips) {
    return static_cast<int>(std::lround(twips * on.logicalDpiX() / kTwipsPerInch));
}

inline double twips(const QWidget& on, int pixels) {
    return pixels * kTwipsPerInch / on.logicalDpiX();
}

}  // namespace memwright::qt
