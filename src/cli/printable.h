#pragma once

#include <string>

namespace memwright::cli {

// A text in UTF-8 as a terminal can show it: control characters are question marks.
std::string printable(const std::string& text);

}  // namespace memwright::cli
