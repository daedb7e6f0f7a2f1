#pragma once

// Items in a sentence.

#include <string>
#include <vector>

namespace memwright {

// "a, b or c", with `word` before the last one; "" for none.
std::string enumeration(const std::vector<std::string>& items, const std::string& word);

}  // namespace memwright
