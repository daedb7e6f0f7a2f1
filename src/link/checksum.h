#pragma once

// Sums and hexadecimal listings of bytes on the line. A block or frame ends with a byte that is the
// sum of all bytes before it, modulo 256.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace memwright {

// The sum of bytes `start` to `end`, both included, modulo 256, as decimal text. IndexError if
// there are not so many.
std::string CalcChecksum(std::span<const std::uint8_t> arry, std::size_t start, std::size_t end);

// The last two hexadecimal digits of the sum of bytes 0 to 8121; one digit for a sum below 16.
// IndexError if there are not so many.
std::string CalcChecksumB(std::span<const std::uint8_t> arry);

// Each byte as two upper-case hexadecimal digits and a space.
std::string ParseBytes(std::span<const std::uint8_t> arry);

}  // namespace memwright
