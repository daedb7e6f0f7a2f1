#pragma once

// Conversions between numbers and their hexadecimal, binary and decimal texts, in which the image's
// codecs and the stored settings are written. Hexadecimal: upper case, most significant digit
// first, no prefix. Binary: "0" and "1", most significant first. No conversion depends on a locale.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace memwright {

// Decimal digits and letters, whatever the locale.
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
std::string lower_case(std::string text);

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

// The shortest decimal writing of a number, never with an exponent: 12.340 is "12.34", 145.000 is
// "145". ConversionError if it is not finite.
std::string shortest_text(double number);

// `text` with zeros in front of it until it has `length` characters.
std::string with_leading_zeros(std::string text, std::size_t length);

// The whole number that a text is: decimal digits, with "-" in front if it is below 0. None for any
// other text, and for what no int holds.
std::optional<int> whole_number(std::string_view text);

// "True" and "False" in any case; a number is true unless it is 0. Else ConversionError.
bool boolean_from_text(const std::string& text);

// A decimal number with an optional sign, rounded to the nearest whole one (halves to the even
// one), in the range of 16 bits. Else ConversionError.
int integer_from_text(const std::string& text);

// A decimal number with an optional sign. Else ConversionError.
double number_from_text(const std::string& text);

}  // namespace memwright
