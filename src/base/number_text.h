#pragma once

// Conversions between numbers and their hexadecimal, binary and decimal texts, in which the image's
// codecs are written. Hexadecimal: upper case, most significant digit first, no prefix. Binary: "0"
// and "1", most significant first. No conversion depends on a locale.

#include <cstdint>
#include <string>
#include <string_view>

namespace memwright {

// Hexadecimal text of at least two digits.
std::string lHex(std::uint32_t lNumber);

// The value of a hexadecimal text, either case. ConversionError for any other text, an empty one
// included, and for more than 32 bits.
std::int32_t lLng(std::string_view HexNumber);

// Four binary digits for each hexadecimal digit.
std::string Hex2Bin(std::string_view hex);

// One hexadecimal digit for each four binary digits, counted from the left.
std::string Bin2Hex(std::string_view bin);

// Decimal text of a binary text.
std::string Bin2Dec(std::string_view bin);

// The number that a text starts with: digits with at most one decimal point. Reading stops at the
// first character that is no part of it; a text that does not start with a number reads as 0.
double leading_number(std::string_view text);

// The shortest decimal writing of a number that is not negative, never with an exponent: 12.340 is
// "12.34", 145.000 is "145".
std::string shortest_text(double number);

// `text` with zeros in front of it until it has `length` characters.
std::string with_leading_zeros(std::string text, std::size_t length);

}  // namespace memwright
