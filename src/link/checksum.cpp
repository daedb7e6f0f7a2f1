#include "link/checksum.h"

#include <numeric>

#include "base/error.h"
#include "base/number_text.h"

namespace memwright {
namespace {

std::uint32_t sum(std::span<const std::uint8_t> arry, std::size_t start, std::size_t end) {
    if (end >= arry.size() || start > end) {
        throw IndexError("There are no bytes " + std::to_string(start) + " to " +
                         std::to_string(end) + " among " + std::to_string(arry.size()) + ".");
    }
    const auto bytes = arry.subspan(start, end - start + 1);
    return std::accumulate(bytes.begin(), bytes.end(), std::uint32_t{0});
}

}  // namespace

std::string CalcChecksum(std::span<const std::uint8_t> arry, std::size_t start, std::size_t end) {
    return std::to_string(sum(arry, start, end) % 256);
}

std::string CalcChecksumB(std::span<const std::uint8_t> arry) {
    constexpr std::size_t kLast = 8121;
    const std::uint32_t total = sum(arry, 0, kLast);
    const std::string text = lHex(total);
    return total < 16 ? text.substr(1) : text.substr(text.size() - 2);
}

std::string ParseBytes(std::span<const std::uint8_t> arry) {
    std::string text;
    for (const std::uint8_t byte : arry) text += lHex(byte) + " ";
    return text;
}

}  // namespace memwright
