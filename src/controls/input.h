#pragma once

// Keys and mouse buttons as the controls' event procedures know them.

namespace memwright {

enum class Key { tab, enter, up, down, left, right, other };

enum class MouseButton { left = 1, right = 2, other = 4 };

}  // namespace memwright
