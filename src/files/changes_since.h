#pragma once

// What texts of the table and bytes of the image differ from those of a moment, such as that of the
// last save. Edits are added as they come; each costs what it changed itself, and what it brings
// back counts no longer.

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "table/edit.h"

namespace memwright {

class ChangesSince {
  public:
    void add(const Edit& edit);
    bool none() const { return texts_.empty() && bytes_.empty(); }

  private:
    // As they were in that moment, of what is another now.
    std::map<std::pair<int, int>, std::string> texts_;  // by row and column
    std::map<std::uint16_t, std::uint8_t> bytes_;       // by offset
};

}  // namespace memwright
