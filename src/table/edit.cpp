#include "table/edit.h"

#include <map>

namespace memwright {
namespace {

// Puts changes of the same kind together, by their places; those that come to nothing drop out.
template <class Change, class PlaceOf>
std::vector<Change> together(const std::vector<Change>& first, const std::vector<Change>& next,
                             PlaceOf place_of) {
    std::map<decltype(place_of(first.front())), Change> all;
    for (const Change& change : first) all.emplace(place_of(change), change);
    for (const Change& change : next) {
        const auto [known, is_new] = all.try_emplace(place_of(change), change);
        if (is_new) continue;
        known->second.after = change.after;
        if (known->second.before == change.after) all.erase(known);
    }
    std::vector<Change> changes;
    changes.reserve(all.size());
    for (auto& [place, change] : all) changes.push_back(std::move(change));
    return changes;
}

}  // namespace

Edit Edit::inverse() const {
    Edit back = *this;
    for (Cell& cell : back.cells) std::swap(cell.before, cell.after);
    for (Byte& byte : back.bytes) std::swap(byte.before, byte.after);
    std::swap(back.selected_before, back.selected_after);
    return back;
}

Edit Edit::then(const Edit& next) const {
    const auto place_of_cell = [](const Cell& cell) { return std::pair(cell.row, cell.col); };
    const auto place_of_byte = [](const Byte& byte) { return byte.offset; };
    return {command, together(cells, next.cells, place_of_cell),
            together(bytes, next.bytes, place_of_byte), selected_before, next.selected_after};
}

}  // namespace memwright
