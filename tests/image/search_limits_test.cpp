// The records of the search limits, by the bytes of the image.

#include "image/search_limits.h"

#include <gtest/gtest.h>

#include <array>

namespace memwright {
namespace {

using Record = std::array<int, layout::kRecordSize>;

constexpr int kTwentyFive = 0x20;
const std::array<std::string, 4> kModes = {"AUTO", "NFM", "WFM", "AM"};

std::size_t index(int number) { return static_cast<std::size_t>(number); }
std::uint8_t byte_of(int value) { return static_cast<std::uint8_t>(value); }
int offset_of(int limit) { return layout::search_limit(limit); }

class SearchLimitRecords : public testing::Test {
  protected:
    void put(int limit, const Record& record) {
        for (int i = 0; i < layout::kRecordSize; ++i) {
            image.set_byte(offset_of(limit) + i, byte_of(record[index(i)]));
        }
    }
    Record record(int limit) const {
        Record bytes{};
        for (int i = 0; i < layout::kRecordSize; ++i) {
            bytes[index(i)] = image.MemoryImage.get(offset_of(limit) + i);
        }
        return bytes;
    }

    ImageCodec image;
};

TEST_F(SearchLimitRecords, the_kilohertz_are_shown_as_stored_and_the_code_behind_them) {
    const int at = offset_of(3);
    put(3, {0x14, 0x51, 0x00, 0x41});
    EXPECT_EQ(Mem2Freq(image, at), "145.10050");
    EXPECT_EQ(RMode(image, at), "NFM");
    put(3, {0x14, 0x51, 0x00, 0x00});
    EXPECT_EQ(Mem2Freq(image, at), "145.10000");
    put(3, {0x01, 0x23, 0x45, kTwentyFive});
    EXPECT_EQ(Mem2Freq(image, at), "12.34525");
    put(3, {0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(Mem2Freq(image, at), "");
    for (const int pattern : {0x60, 0xA0, 0xC0, 0xE0}) {
        put(3, {0x14, 0x51, 0x00, pattern});
        EXPECT_EQ(Mem2Freq(image, at), "145.10000") << pattern;
    }
}

TEST_F(SearchLimitRecords, the_mode_has_four_values_in_the_lowest_two_bits) {
    for (int flags = 0; flags < 256; ++flags) {
        image.set_byte(7155, byte_of(flags));
        EXPECT_EQ(RMode(image, 7152), kModes[index(flags % 4)]) << flags;
        for (int code = 0; code < 4; ++code) {
            SMode(image, 7152, kModes[index(code)]);
            EXPECT_EQ(image.MemoryImage.get(7155), (flags & 0xFC) | code) << flags << " " << code;
        }
    }
}

TEST_F(SearchLimitRecords, a_text_that_is_no_mode_is_not_stored) {
    for (const char* text : {"", "auto", "Auto", "nfm", "FM", "NFM ", " AM", "0", "-"}) {
        for (int flags = 0; flags < 256; flags += 5) {
            image.set_byte(6915, byte_of(flags));
            SMode(image, 6912, text);
            EXPECT_EQ(image.MemoryImage.get(6915), flags) << '"' << text << '"';
        }
    }
}

TEST_F(SearchLimitRecords, a_frequency_is_written_as_a_channels_is) {
    const auto written = [&](const std::string& text, int flags) {
        put(17, {0x11, 0x22, 0x33, flags});
        WriteFreq(image, 7156, text);
        return record(17);
    };
    EXPECT_EQ(written("145.51250", 0xFF), (Record{0x14, 0x55, 0x12, 0x5F}));
    EXPECT_EQ(written("145.10050", 0x01), (Record{0x14, 0x51, 0x00, 0x41}));
    EXPECT_EQ(written("1299.00075", 0x00), (Record{0xC9, 0x90, 0x00, 0x80}));
    EXPECT_EQ(written("1300", 0xE3), (Record{0xD0, 0x00, 0x00, 0x03}));
    EXPECT_EQ(written("45.5", 0x1C), (Record{0x04, 0x55, 0x00, 0x1C}));
    EXPECT_EQ(written("5.00125", 0x00), (Record{0x00, 0x50, 0x01, 0x20}));
    EXPECT_EQ(written("", 0xFF), (Record{0x00, 0x00, 0x00, 0x1F}));
    EXPECT_EQ(written("abc", 0xE0), (Record{0x00, 0x00, 0x00, 0x00}));
    EXPECT_EQ(written("100.00033", 0xE0), (Record{0x10, 0x00, 0x00, 0x00}));
}

}  // namespace
}  // namespace memwright
