#pragma once

// The radio's memory image: 7392 bytes (image/layout.h), zero-filled when created, never resized.
// An offset outside of it is an IndexError and changes nothing.

#include <array>
#include <cstdint>
#include <span>

#include "image/layout.h"

namespace memwright {

class MemoryImage {
  public:
    std::uint8_t get(int loffset) const { return bytes_[checked(loffset)]; }
    void set(int loffset, std::uint8_t value) { bytes_[checked(loffset)] = value; }

    std::span<const std::uint8_t, layout::kImageSize> bytes() const { return bytes_; }

    friend bool operator==(const MemoryImage&, const MemoryImage&) = default;

  private:
    static std::size_t checked(int loffset);

    std::array<std::uint8_t, layout::kImageSize> bytes_{};
};

}  // namespace memwright
