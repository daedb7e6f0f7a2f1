#include "image/image_codec.h"

#include <utility>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

constexpr int kBitsPerByte = 8;

std::uint8_t checked_byte(int value) {
    if (value < 0 || value > 0xFF) {
        throw ConversionError(std::to_string(value) + " does not fit in a byte: 0 to 255.");
    }
    return static_cast<std::uint8_t>(value);
}

std::size_t checked_bit(int BitNum70) {
    if (BitNum70 < 0 || BitNum70 >= kBitsPerByte) {
        throw IndexError("A byte has no bit " + std::to_string(BitNum70) + ": bits are 0 to 7.");
    }
    return static_cast<std::size_t>(BitNum70);
}

// The memory index, far enough inside of an int for the offsets that are computed from it.
int memory_index(int Bank, int Memnumber) {
    const std::int64_t index = std::int64_t{Bank} * layout::kMemoriesPerBank + Memnumber;
    if (index < -layout::kImageSize || index > layout::kImageSize) {
        throw IndexError("The memory image has no memory " + std::to_string(Memnumber) +
                         " in a bank " + std::to_string(Bank) + ".");
    }
    return static_cast<int>(index);
}

}  // namespace

std::string memory_name(int Bank, int Memnumber) {
    return "Bank " + std::to_string(Bank) + " - " + std::to_string(Memnumber);
}

void ImageCodec::set_byte(int loffset, std::uint8_t value) {
    const std::uint8_t before = image_.get(loffset);
    if (before == value) return;
    image_.set(loffset, value);
    written(loffset, {&before, 1});
}

void ImageCodec::set_image(const ::memwright::MemoryImage& image) {
    const ::memwright::MemoryImage before = std::exchange(image_, image);
    written(0, before.bytes());
}

std::int16_t ImageCodec::GetBit(int loffset, int BitNum70) const {
    const std::size_t bit = checked_bit(BitNum70);
    return bits(loffset)[kBitsPerByte - 1 - bit] == '1' ? 1 : 0;
}

void ImageCodec::SetBit(int loffset, int BitNum70, int BitVal01) {
    const std::size_t bit = checked_bit(BitNum70);
    std::string changed = bits(loffset);
    changed.replace(kBitsPerByte - 1 - bit, 1, std::to_string(BitVal01));
    set_byte(loffset, checked_byte(lLng(Bin2Hex(changed))));
}

std::string ImageCodec::GetMemByte(int Bank, int Memnumber) const {
    return lHex(MemoryImage.get(record(Bank, Memnumber) + layout::kFlags));
}

void ImageCodec::SetMemByte(int Bank, int Memnumber, int byteval) {
    set_byte(record(Bank, Memnumber) + layout::kFlags, checked_byte(byteval));
}

void ImageCodec::ClearMem(int Bank, int Memnumber) {
    SetMemByte(Bank, Memnumber, 0xFF);
    for (int i = 0; i < layout::kFrequencySize; ++i) {
        set_byte(record(Bank, Memnumber) + i, 0xFF);
    }
    SetMemTag(Bank, Memnumber, "");
}

int ImageCodec::record(int Bank, int Memnumber) {
    return layout::kRecords + layout::kRecordSize * memory_index(Bank, Memnumber);
}

int ImageCodec::label(int Bank, int Memnumber) {
    return layout::kLabels + layout::kLabelSize * memory_index(Bank, Memnumber);
}

std::string ImageCodec::bits(int loffset) const { return Hex2Bin(lHex(MemoryImage.get(loffset))); }

}  // namespace memwright
