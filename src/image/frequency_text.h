#pragma once

// Frequency texts and the packed digits that the image holds for them. A frequency text is decimal
// MHz with "." and five decimals, the last two of which are the fraction code: "00", "25", "50" or
// "75", the part below one kilohertz in tens of hertz.

#include <cstdint>
#include <string>
#include <string_view>

namespace memwright {

// A frequency text taken apart for storing.
struct FrequencyDigits {
    std::string digits;    // hundreds of MHz as one hexadecimal digit, then five decimal digits
    std::string fraction;  // two digits
};

// The digits of `Freq`; `Freq` becomes the shortest writing of the number that it starts with. For
// 1600 MHz and more there are more than six digits.
FrequencyDigits digits_from_frequency(std::string& Freq);

// The channel table's reading of six hexadecimal digits and a fraction code ("" for none). "" for
// the empty memory "FFFFFF".
std::string frequency_from_digits(const std::string& digits, const std::string& fraction);

// The search limits' reading of the same: the kilohertz digits stay as they are stored.
std::string limit_from_digits(const std::string& digits, const std::string& fraction);

// Normalises a frequency as typed: at most 1299 MHz, five decimals, a known fraction code, outside
// of the blocked ranges. `Freq` holds the same text except for the last of these.
std::string FormatFreq(std::string& Freq);

// True if a memory with this frequency text is an occupied one: if the text starts with a number
// other than 0.
bool is_occupied(const std::string& frequency);

// The channel table's row, 1 to 640, of a memory number: the bank's digit, then two digits.
// Not checked: "099" gives 100, which belongs to bank 1.
std::int16_t Mem2Row(const std::string& mem);

}  // namespace memwright
