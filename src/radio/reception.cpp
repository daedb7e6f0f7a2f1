#include "radio/reception.h"

#include <algorithm>

namespace memwright::radio {
namespace {

constexpr int kClosingFrames = 2;
// Frames are told apart by their first bytes: an opening or closing frame by five, a block by four.
constexpr std::size_t kHeaderOfShortFrame = 5;

bool begins_like(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> header) {
    const std::size_t length = std::min(bytes.size(), header.size());
    return std::ranges::equal(bytes.first(length), header.first(length));
}

std::span<const std::uint8_t> header_of(std::span<const std::uint8_t> frame) {
    return frame.first(kHeaderOfShortFrame);
}

bool may_be_block(std::span<const std::uint8_t> bytes) { return begins_like(bytes, kBlockHeader); }
bool may_be_opening(std::span<const std::uint8_t> bytes) {
    return begins_like(bytes, header_of(kOpeningFrame));
}
bool may_be_closing(std::span<const std::uint8_t> bytes) {
    return begins_like(bytes, header_of(kClosingFrame));
}

// Counts the errors of a frame of which only the sum may differ from `right`.
void compare(std::span<const std::uint8_t> frame, std::span<const std::uint8_t> right,
             Transfer& transfer) {
    if (!sum_is_right(frame)) {
        ++transfer.checksum_errors;
    } else if (!std::ranges::equal(frame, right)) {
        ++transfer.content_errors;
    }
}

}  // namespace

Reception::Reception(std::span<const std::uint8_t> opening_frame, Transfer& transfer) {
    ++transfer.frames;
    compare(opening_frame, kOpeningFrame, transfer);
}

bool Reception::is_opening(std::span<const std::uint8_t> bytes) {
    return bytes.size() == kShortFrameSize && may_be_opening(bytes);
}

Reception::Result Reception::take(std::uint8_t byte, Transfer& transfer) {
    frame_.push_back(byte);
    drop_strays(transfer);
    if (may_be_block(frame_) && frame_.size() == kBlockFrameSize) {
        take_block(transfer);
        frame_.clear();
    } else if (may_be_closing(frame_) && frame_.size() == kShortFrameSize) {
        take_closing(transfer);
        frame_.clear();
        if (closing_frames_ == kClosingFrames) return Result::ended;
    } else if (is_opening(frame_)) {
        return Result::opened_anew;
    }
    return Result::goes_on;
}

// Drops bytes from the front until the rest may be a frame.
void Reception::drop_strays(Transfer& transfer) {
    while (!frame_.empty() && !may_be_block(frame_) && !may_be_closing(frame_) &&
           !may_be_opening(frame_)) {
        frame_.erase(frame_.begin());
        ++transfer.stray_bytes;
    }
}

void Reception::take_block(Transfer& transfer) {
    ++transfer.frames;
    ++transfer.blocks;
    if (closing_frames_ > 0) ++transfer.order_errors;
    if (!sum_is_right(frame_)) {
        ++transfer.checksum_errors;
        ++expected_;
        return;
    }
    const int number = frame_[kBlockNumber];
    if (number != expected_) ++transfer.order_errors;
    expected_ = number + 1;
    const auto data = std::span<const std::uint8_t>(frame_).subspan(kBlockData, layout::kBlockSize);
    if (number < layout::kImageBlocks) {
        int offset = number * layout::kBlockSize;
        for (const std::uint8_t value : data) image_.set(offset++, value);
    } else if (number >= kBlocks ||
               std::ranges::any_of(data, [](auto b) { return b != kFiller; })) {
        ++transfer.content_errors;
    }
}

void Reception::take_closing(Transfer& transfer) {
    ++transfer.frames;
    ++closing_frames_;
    compare(frame_, kClosingFrame, transfer);
    if (closing_frames_ < kClosingFrames) return;
    transfer.complete = transfer.blocks == kBlocks && transfer.checksum_errors == 0 &&
                        transfer.order_errors == 0 && transfer.content_errors == 0 &&
                        transfer.stray_bytes == 0;
}

}  // namespace memwright::radio
