#include "cli/support/image.h"

namespace memwright::cli_tests {

Image::Image() {
    for (int row = 1; row <= layout::kMemories; ++row) {
        store_.ClearMem((row - 1) / layout::kMemoriesPerBank, (row - 1) % layout::kMemoriesPerBank);
    }
    for (int number = 0; number < layout::kSearchLimitCount; ++number) {
        set(layout::search_limit(number), {0xFF, 0xFF, 0xFF});
    }
}

Image& Image::channel(int row, const std::string& tag, const std::string& frequency,
                      const std::string& mode, const std::string& pref) {
    const int bank = (row - 1) / layout::kMemoriesPerBank;
    const int number = (row - 1) % layout::kMemoriesPerBank;
    std::string megahertz = frequency;
    store_.SetMemByte(bank, number, 0);
    store_.SetMemFreq(bank, number, megahertz);
    store_.SetMode(bank, number, mode);
    store_.SetPref(bank, number, pref);
    store_.SetMemTag(bank, number, tag);
    return *this;
}

Image& Image::limit(int number, const std::string& frequency, int mode) {
    const int record = layout::search_limit(number);
    std::string megahertz = frequency;
    store_.set_byte(record + layout::kFlags, static_cast<std::uint8_t>(mode));
    store_.set_frequency(record, megahertz);
    return *this;
}

Image& Image::set(int offset, std::vector<std::uint8_t> values) {
    for (const std::uint8_t value : values) store_.set_byte(offset++, value);
    return *this;
}

Image& Image::rest(const std::string& text) {
    rest_ = text;
    return *this;
}

Bytes Image::bytes() const {
    const auto image = store_.MemoryImage.bytes();
    Bytes all(image.begin(), image.end());
    all.insert(all.end(), rest_.begin(), rest_.end());
    return all;
}

std::string Image::text() const {
    const Bytes all = bytes();
    return {all.begin(), all.end()};
}

}  // namespace memwright::cli_tests
