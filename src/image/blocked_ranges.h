#pragma once

// The frequency ranges that the radio cannot receive.

#include <string>

namespace memwright {

// The upper edge of the blocked range that `Freq` (text, MHz) lies in, as a text with five
// decimals; `Freq` itself, character for character, if it lies in none. A text that does not start
// with a number reads as 0.
std::string CheckBlocked(const std::string& Freq);

}  // namespace memwright
