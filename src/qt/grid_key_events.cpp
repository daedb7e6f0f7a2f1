#include "qt/grid_key_events.h"

#include <algorithm>

namespace memwright::qt {
namespace {

struct Meaning {
    int key;
    Qt::KeyboardModifiers modifiers;  // Shift apart
    GridKey meaning;
};

const Meaning kMeanings[] = {{Qt::Key_Left, {}, GridKey::left},
                             {Qt::Key_Right, {}, GridKey::right},
                             {Qt::Key_Up, {}, GridKey::up},
                             {Qt::Key_Down, {}, GridKey::down},
                             {Qt::Key_PageUp, {}, GridKey::page_up},
                             {Qt::Key_PageDown, {}, GridKey::page_down},
                             {Qt::Key_Home, {}, GridKey::home},
                             {Qt::Key_End, {}, GridKey::end},
                             {Qt::Key_Home, Qt::ControlModifier, GridKey::first},
                             {Qt::Key_End, Qt::ControlModifier, GridKey::last},
                             {Qt::Key_PageUp, Qt::ControlModifier, GridKey::previous_bank},
                             {Qt::Key_PageDown, Qt::ControlModifier, GridKey::next_bank},
                             {Qt::Key_Space, {}, GridKey::mark},
                             {Qt::Key_Delete, {}, GridKey::erase},
                             {Qt::Key_Up, Qt::AltModifier, GridKey::move_up},
                             {Qt::Key_Down, Qt::AltModifier, GridKey::move_down}};

}  // namespace

std::optional<GridKey> grid_key_of(const QKeyEvent& event, bool right_to_left) {
    const auto modifiers =
        event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier);
    const auto* const found = std::ranges::find_if(kMeanings, [&](const Meaning& meaning) {
        return meaning.key == event.key() && meaning.modifiers == modifiers;
    });
    if (found == std::end(kMeanings)) return {};
    if (right_to_left && found->meaning == GridKey::left) return GridKey::right;
    if (right_to_left && found->meaning == GridKey::right) return GridKey::left;
    return found->meaning;
}

}  // namespace memwright::qt
