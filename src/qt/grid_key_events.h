#pragma once

// What the keys mean on a grid while no editor is open.

#include <QKeyEvent>
#include <optional>

#include "controls/input.h"

namespace memwright::qt {

// Left and right are those of a table that is read from the left: from the right they change
// places.
std::optional<GridKey> grid_key_of(const QKeyEvent& event, bool right_to_left);

}  // namespace memwright::qt
