#pragma once

// The 18 search limits of the radio. Their records lie where image/layout.h says and are like those
// of the channels, but for two things: the kilohertz digits are read as they are stored, and mode 0
// is "AUTO". Operations take the offset of a record's first byte in the image
// (layout::search_limit).

#include <string>
#include <vector>

#include "image/image_codec.h"

namespace memwright {

// "AUTO", "NFM", "WFM", "AM".
const std::vector<std::string>& search_limit_modes();

// Frequency text; "" for none.
std::string Mem2Freq(const ImageCodec& image, int loffset);

// One of the modes; other texts are not stored.
std::string RMode(const ImageCodec& image, int loffset);
void SMode(ImageCodec& image, int loffset, const std::string& Mode);

// The number that the text starts with; an empty text stores 0 MHz, not "none".
void WriteFreq(ImageCodec& image, int loffset, const std::string& Freq);

}  // namespace memwright
