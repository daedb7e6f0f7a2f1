#include "files/changes_since.h"

namespace memwright {
namespace {

template <class Place, class Value>
void add_change(std::map<Place, Value>& first, const Place& place, const Value& before,
                const Value& after) {
    const auto [known, is_new] = first.try_emplace(place, before);
    if (known->second == after) first.erase(known);
}

}  // namespace

void ChangesSince::add(const Edit& edit) {
    for (const Edit::Cell& cell : edit.cells) {
        add_change(texts_, {cell.row, cell.col}, cell.before.text, cell.after.text);
    }
    for (const Edit::Byte& byte : edit.bytes) {
        add_change(bytes_, byte.offset, byte.before, byte.after);
    }
}

}  // namespace memwright
