#pragma once

// The choices of the columns that are edited with a list, in the order in which the list shows
// them.

#include <string>
#include <string_view>
#include <vector>

namespace memwright {

// Empty for a column that is not edited with a list.
const std::vector<std::string>& choices_of(int column);

// What a list with these choices shows when the beginning of one was typed, in capitals or not: the
// first that is just this text, or else begins with it. "" if there is none.
std::string completed(const std::vector<std::string>& choices, std::string_view typed);

}  // namespace memwright
