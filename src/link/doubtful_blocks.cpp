#include "link/doubtful_blocks.h"

#include "image/image_codec.h"

namespace memwright {
namespace {

std::string memory(int index) {
    return memory_name(index / layout::kMemoriesPerBank, index % layout::kMemoriesPerBank);
}

// The memories that bytes first to last of an array of `size` bytes for each belong to.
std::string memories(int first, int last, int size) {
    const int from = first / size, to = last / size;
    return from == to ? memory(from) : memory(from) + " to " + memory(to);
}

}  // namespace

std::string contents_of_block(int block) {
    const int first = block * layout::kBlockSize;
    const int last = first + layout::kBlockSize - 1;
    if (last < layout::kLabels) {
        return "frequencies, modes and preferences of " +
               memories(first - layout::kRecords, last - layout::kRecords, layout::kRecordSize);
    }
    if (last < layout::kRadioSettings) {
        return "labels of " +
               memories(first - layout::kLabels, last - layout::kLabels, layout::kLabelSize);
    }
    return "settings or search limits (bytes " + std::to_string(first) + " to " +
           std::to_string(last) + ")";
}

std::optional<int> first_memory_of_block(int block) {
    const int first = block * layout::kBlockSize;
    if (first < layout::kLabels) return (first - layout::kRecords) / layout::kRecordSize;
    if (first < layout::kRadioSettings) return (first - layout::kLabels) / layout::kLabelSize;
    return std::nullopt;
}

std::vector<std::string> doubts_about(const std::vector<int>& blocks) {
    std::vector<std::string> lines;
    for (const int block : blocks) {
        lines.push_back("Block " + std::to_string(block) +
                        " came with a wrong checksum. Doubtful: " + contents_of_block(block) + ".");
    }
    return lines;
}

}  // namespace memwright
