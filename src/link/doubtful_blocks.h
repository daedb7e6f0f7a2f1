#pragma once

// Blocks that came from the radio with a wrong checksum, told as what they carried.

#include <optional>
#include <string>
#include <vector>

namespace memwright {

// What block 0 to 230 of the image carries: "frequencies, modes and preferences of Bank 1 - 32 to
// Bank 1 - 39".
std::string contents_of_block(int block);

// The memory, 0 to 639, that a block's first byte belongs to; none if it carries something else.
std::optional<int> first_memory_of_block(int block);

// A line for each block.
std::vector<std::string> doubts_about(const std::vector<int>& blocks);

}  // namespace memwright
