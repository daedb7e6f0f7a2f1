#include "files/byte_stream.h"

#include "base/error.h"

namespace memwright {
namespace {

constexpr int kBitsPerByte = 8;

}  // namespace

void ByteWriter::number(std::size_t value, int width) {
    for (int i = 0; i < width; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (kBitsPerByte * i)));
    }
}

void ByteWriter::text(std::string_view text) {
    number(text.size());
    bytes.insert(bytes.end(), text.begin(), text.end());
}

void ByteWriter::raw(std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void ByteReader::refuse() {
    throw InputError("This is no recovery file of Memwright, or not the whole of one.");
}

std::span<const std::uint8_t> ByteReader::raw(std::size_t count) {
    if (count > bytes_.size()) refuse();
    const auto taken = bytes_.first(count);
    bytes_ = bytes_.subspan(count);
    return taken;
}

std::size_t ByteReader::number(int width) {
    std::size_t value = 0;
    int shift = 0;
    for (const std::uint8_t byte : raw(static_cast<std::size_t>(width))) {
        value |= std::size_t{byte} << shift;
        shift += kBitsPerByte;
    }
    return value;
}

std::size_t ByteReader::number_up_to(std::size_t most, int width) {
    const std::size_t value = number(width);
    if (value > most) refuse();
    return value;
}

std::string ByteReader::text() {
    const auto taken = raw(number());
    return {taken.begin(), taken.end()};
}

}  // namespace memwright
