#pragma once

// The choices of the columns that are edited with a list, in the order in which the list shows
// them.

#include <string>
#include <vector>

namespace memwright {

// Empty for a column that is not edited with a list.
const std::vector<std::string>& choices_of(int column);

}  // namespace memwright
