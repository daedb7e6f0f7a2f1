#pragma once

// The radio's single-byte character set, Windows-1252, in which the channel table's texts stand.
// The five codes that it leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the control
// characters of the same number, so every byte has a character and survives the way there and back.

#include <optional>
#include <string>
#include <string_view>

namespace memwright {

std::string utf8_from_radio(std::string_view text);

// Characters that the radio does not have, and bytes that are no UTF-8, become "?".
std::string radio_from_utf8(std::string_view text);

// Takes the first character off a UTF-8 text that is not empty; none if its first bytes are none.
std::optional<char32_t> take_character(std::string_view& text);

// The character of a byte, and the byte of a character (-1 if there is none).
char32_t character_from_radio(unsigned char byte);
int radio_from_character(char32_t character);

}  // namespace memwright
