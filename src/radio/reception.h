#pragma once

// One transfer to the radio: puts frames together from bytes that arrive in any portions, checks
// them, and holds the image that they carry apart until all of it is there.

#include <cstdint>

#include "image/memory_image.h"
#include "radio/frames.h"
#include "radio/report.h"

namespace memwright::radio {

class Reception {
  public:
    // Begins with the opening frame, which has arrived already; its sum may be wrong.
    Reception(std::span<const std::uint8_t> opening_frame, Transfer& transfer);

    // True for eight bytes that are meant to be an opening frame, whatever their checksum is.
    static bool is_opening(std::span<const std::uint8_t> bytes);

    enum class Result { goes_on, ended, opened_anew };
    // Notes in the transfer what the byte brings.
    Result take(std::uint8_t byte, Transfer& transfer);

    // The place of the frame that is due or arriving, and how many bytes of it are there.
    int place() const { return expected_ < kBlocks ? expected_ : kClosing; }
    int bytes_of_frame() const { return static_cast<int>(frame_.size()); }
    const Bytes& frame() const { return frame_; }

    const MemoryImage& image() const { return image_; }

  private:
    void drop_strays(Transfer& transfer);
    void take_block(Transfer& transfer);
    void take_closing(Transfer& transfer);

    MemoryImage image_;
    Bytes frame_;
    int expected_ = 0;
    int closing_frames_ = 0;
};

}  // namespace memwright::radio
