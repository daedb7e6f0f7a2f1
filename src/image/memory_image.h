#pragma once

// The radio's memory image: 7392 bytes (image/layout.h), zero-filled when created, never resized.
// An offset outside of it is an IndexError and changes nothing.

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "image/layout.h"

namespace memwright {

class MemoryImage {
  public:
    MemoryImage() = default;

    // The first 7392 of the bytes; zeros where there are fewer.
    explicit MemoryImage(std::span<const std::uint8_t> bytes) { assign(bytes); }

    // Overwrites as many bytes from the start on; those past the image's end are left out.
    void assign(std::span<const std::uint8_t> bytes) {
        std::ranges::copy(bytes.first(std::min(bytes.size(), bytes_.size())), bytes_.begin());
    }

    std::uint8_t get(int loffset) const { return bytes_[checked(loffset)]; }
    void set(int loffset, std::uint8_t value) { bytes_[checked(loffset)] = value; }

    std::span<const std::uint8_t, layout::kImageSize> bytes() const { return bytes_; }

    friend bool operator==(const MemoryImage&, const MemoryImage&) = default;

  private:
    static std::size_t checked(int loffset);

    std::array<std::uint8_t, layout::kImageSize> bytes_{};
};

}  // namespace memwright
