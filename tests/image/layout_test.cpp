// Where things lie in the memory image.

#include "image/layout.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace memwright {
namespace {

using layout::BitPlace;

// Bits of one byte of the image that belong to something.
struct Place {
    std::string name;
    int offset;
    int bits = 0xFF;
};

std::vector<Place> channel_places() {
    std::vector<Place> places;
    for (int i = 0; i < 640; ++i) {
        const std::string memory = "memory " + std::to_string(i);
        for (int byte = 0; byte < layout::kRecordSize; ++byte) {
            places.push_back({memory, layout::kRecords + layout::kRecordSize * i + byte});
        }
        for (int byte = 0; byte < layout::kLabelSize; ++byte) {
            places.push_back({memory, layout::kLabels + layout::kLabelSize * i + byte});
        }
    }
    return places;
}

std::vector<Place> setting_places() {
    std::vector<Place> places = {{"fast step", layout::kFastStep},
                                 {"lamp", layout::kLamp},
                                 {"battery save", layout::kBatterySave},
                                 {"scan resume", layout::kScanResume},
                                 {"search width", layout::kSearchWidth}};
    const auto add = [&](const std::string& name, BitPlace place) {
        places.push_back({name, place.offset, 1 << place.bit});
    };
    add("attenuator", layout::kAttenuator);
    add("keypad lock", layout::kKeypadLock);
    add("AM antenna", layout::kAmAntenna);
    add("key beep and scan mode", layout::kKeyBeep);
    add("search", layout::kSearch);
    add("FM antenna", layout::kFmAntenna);
    add("smart search", layout::kSmartSearch);
    add("S-meter beep", layout::kSMeterBeep);
    add("S-meter sensitivity", layout::kSMeterSensitivity);
    for (int bank = 0; bank < layout::kBanks; ++bank) {
        add("linked bank " + std::to_string(bank), layout::linked_bank(bank));
    }
    return places;
}

std::vector<Place> limit_places() {
    std::vector<Place> places;
    for (int limit = 0; limit < layout::kSearchLimitCount; ++limit) {
        for (int byte = 0; byte < layout::kRecordSize; ++byte) {
            places.push_back(
                {"search limit " + std::to_string(limit), layout::search_limit(limit) + byte});
        }
    }
    return places;
}

TEST(Layout, every_place_lies_in_the_image_and_no_two_overlap) {
    std::vector<Place> places = channel_places();
    for (const auto& more : {setting_places(), limit_places()}) {
        places.insert(places.end(), more.begin(), more.end());
    }
    std::array<int, 7392> taken{};
    for (const auto& [name, offset, bits] : places) {
        ASSERT_GE(offset, 0) << name;
        ASSERT_LT(offset, 7392) << name;
        auto& here = taken[static_cast<std::size_t>(offset)];
        EXPECT_EQ(here & bits, 0) << name << " at " << offset;
        here |= bits;
    }
}

TEST(Layout, settings_and_limits_lie_behind_the_channels) {
    EXPECT_EQ(layout::kRadioSettings, 6400);
    for (const auto& places : {setting_places(), limit_places()}) {
        for (const auto& [name, offset, bits] : places) EXPECT_GE(offset, 6400) << name;
    }
}

TEST(Layout, key_beep_and_scan_mode_are_one_bit) {
    EXPECT_EQ(layout::kKeyBeep.offset, layout::kScanMode.offset);
    EXPECT_EQ(layout::kKeyBeep.bit, layout::kScanMode.bit);
}

TEST(Layout, the_linked_banks_fill_one_byte_and_two_bits_of_the_next) {
    for (int bank = 0; bank < 8; ++bank) {
        EXPECT_EQ(layout::linked_bank(bank).offset, 6688);
        EXPECT_EQ(layout::linked_bank(bank).bit, bank);
    }
    EXPECT_EQ(layout::linked_bank(8).offset, 6689);
    EXPECT_EQ(layout::linked_bank(8).bit, 0);
    EXPECT_EQ(layout::linked_bank(9).offset, 6689);
    EXPECT_EQ(layout::linked_bank(9).bit, 1);
}

TEST(Layout, sixteen_search_limits_follow_each_other_and_two_lie_apart) {
    for (int limit = 0; limit < 16; ++limit) {
        EXPECT_EQ(layout::search_limit(limit), 6912 + 4 * limit) << limit;
    }
    EXPECT_EQ(layout::search_limit(15), 6972);
    EXPECT_EQ(layout::search_limit(16), 7152);
    EXPECT_EQ(layout::search_limit(17), 7156);
}

}  // namespace
}  // namespace memwright
