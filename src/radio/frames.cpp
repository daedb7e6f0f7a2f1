#include "radio/frames.h"

#include <algorithm>
#include <numeric>

namespace memwright::radio {

std::uint8_t frame_sum(std::span<const std::uint8_t> frame) {
    const unsigned sum = std::accumulate(frame.begin(), frame.end() - 1, 0U);
    return static_cast<std::uint8_t>(sum % 256);
}

Bytes block_frame(const MemoryImage& memory, int number) {
    Bytes frame(kBlockHeader.begin(), kBlockHeader.end());
    frame.push_back(static_cast<std::uint8_t>(number));
    if (number < layout::kImageBlocks) {
        const auto first = static_cast<std::size_t>(number) * layout::kBlockSize;
        const auto data = memory.bytes().subspan(first, layout::kBlockSize);
        frame.insert(frame.end(), data.begin(), data.end());
    }
    frame.resize(kBlockFrameSize - 1, kFiller);
    frame.push_back(0);
    frame.back() = frame_sum(frame);
    return frame;
}

Bytes frame_at(const MemoryImage& memory, int place) {
    if (place == kOpening) return {kOpeningFrame.begin(), kOpeningFrame.end()};
    if (place == kClosing) return {kClosingFrame.begin(), kClosingFrame.end()};
    return block_frame(memory, place);
}

}  // namespace memwright::radio
