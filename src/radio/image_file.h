#pragma once

// The radio's memory from and to a file of 7392 bytes. FileError says what failed and why.

#include <string>

#include "image/memory_image.h"

namespace memwright::radio {

// The first 7392 bytes of a file that has at least as many.
MemoryImage load_image(const std::string& path);

// The file then has these bytes and no others; before, it is the old one or none.
void save_image(const std::string& path, const MemoryImage& image);

}  // namespace memwright::radio
