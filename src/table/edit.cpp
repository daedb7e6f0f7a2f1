#include "table/edit.h"

namespace memwright {

Edit Edit::inverse() const {
    Edit back = *this;
    for (Cell& cell : back.cells) std::swap(cell.before, cell.after);
    for (Byte& byte : back.bytes) std::swap(byte.before, byte.after);
    std::swap(back.selected_before, back.selected_after);
    return back;
}

}  // namespace memwright
