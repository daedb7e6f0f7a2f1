#pragma once

// Numbers and texts as bytes and back. Numbers stand least significant byte first; texts follow
// their lengths, which take four bytes.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace memwright {

class ByteWriter {
  public:
    // The lowest bytes of a number, 1 to 4.
    void number(std::size_t value, int width = 4);
    void text(std::string_view text);
    void raw(std::span<const std::uint8_t> bytes);

    Bytes bytes;
};

// Errors: InputError where the bytes end too early.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::span<const std::uint8_t> raw(std::size_t count);
    std::size_t number(int width = 4);
    // A number that must not be greater.
    std::size_t number_up_to(std::size_t most, int width = 4);
    std::string text();
    std::size_t left() const { return bytes_.size(); }

    // That these bytes are not what they should be.
    [[noreturn]] static void refuse();

  private:
    std::span<const std::uint8_t> bytes_;
};

}  // namespace memwright
