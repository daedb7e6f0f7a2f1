#pragma once

// What the bytes of a memory image mean: bytes and bits through their texts, and the fields of the
// channel memories. A memory is addressed by its bank (0 to 9) and number (0 to 63); neither is
// checked beyond the image's own bounds (IndexError). Setters ignore texts that they do not know.
// Labels are bytes in the radio's single-byte character set.

#include <cstdint>
#include <span>
#include <string>

#include "base/signal.h"
#include "image/frequency_text.h"
#include "image/memory_image.h"

namespace memwright {

// "Bank 0 - 5"
std::string memory_name(int Bank, int Memnumber);

class ImageCodec {
  public:
    ImageCodec() = default;
    explicit ImageCodec(const ::memwright::MemoryImage& image) : image_(image) {}
    ImageCodec(const ImageCodec&) = delete;
    ImageCodec& operator=(const ImageCodec&) = delete;

    const ::memwright::MemoryImage& MemoryImage = image_;

    // Whatever changes the image goes through these two.
    void set_byte(int loffset, std::uint8_t value);
    void set_image(const ::memwright::MemoryImage& image);

    // Bytes were written: the offset of the first, and what they were before, which some of them
    // may still be.
    Signal<int, std::span<const std::uint8_t>> written;

    // Bit 0 is the least significant bit of the byte, 7 the most significant.
    std::int16_t GetBit(int loffset, int BitNum70) const;
    void SetBit(int loffset, int BitNum70, int BitVal01);

    // The flags byte as hexadecimal text, and from a number 0 to 255 (else ConversionError).
    std::string GetMemByte(int Bank, int Memnumber) const;
    void SetMemByte(int Bank, int Memnumber, int byteval);

    // Of the record of four bytes at an offset, be it a channel's or a search limit's: the
    // frequency as six hexadecimal digits, and the fraction code.
    std::string frequency_digits(int loffset) const;
    std::string fraction_code(int loffset) const;
    void set_fraction_code(int loffset, const std::string& stp);

    // Stores the number that `Freq` starts with, which is left in it, and its fraction code.
    void set_frequency(int loffset, std::string& Freq);

    // Frequency text, "" for an empty memory. The setter leaves the numeric reading in `Freq`; an
    // empty text stores 0 MHz, not the empty memory.
    std::string GetMemFreq(int Bank, int Memnumber) const;
    void SetMemFreq(int Bank, int Memnumber, std::string& Freq);

    // "NFM", "WFM", "AM"; "" for none.
    std::string GetMode(int Bank, int Memnumber) const;
    void SetMode(int Bank, int Memnumber, const std::string& Mode);

    // "Off" and "On".
    std::string GetPref(int Bank, int Memnumber) const;
    void SetPref(int Bank, int Memnumber, const std::string& Pref);

    // The fraction code "25", "50" or "75"; "" for none. Any other text clears it.
    std::string GetRXStp(int Bank, int Memnumber) const;
    void SetRxStp(int Bank, int Memnumber, const std::string& stp);

    // The label without the spaces at its end; at most 6 characters are stored.
    std::string GetMemTag(int Bank, int Memnumber) const;
    void SetMemTag(int Bank, int Memnumber, const std::string& tag);

    // Makes the memory empty.
    void ClearMem(int Bank, int Memnumber);

  private:
    static int record(int Bank, int Memnumber);
    static int label(int Bank, int Memnumber);
    std::string bits(int loffset) const;

    ::memwright::MemoryImage image_;
};

}  // namespace memwright
