#include "radio/demonstration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "base/number_text.h"
#include "image/blocked_ranges.h"
#include "image/mod_vr120.h"
#include "native/file_system.h"

namespace memwright::radio {
namespace {

class Demonstration : public testing::Test {
  protected:
    Demonstration() { memory_.set_image(demonstration_memory()); }

    // Calls `visit` with the bank and number of every memory that is not empty.
    template <typename Visit>
    void for_each_channel(Visit visit) {
        for (int bank = 0; bank < 10; ++bank) {
            for (int number = 0; number < 64; ++number) {
                if (!memory_.GetMemFreq(bank, number).empty()) visit(bank, number);
            }
        }
    }

    // The frequency of a record as it is stored: whole kilohertz and the fraction behind them.
    std::string stored_frequency(int offset) const {
        const auto byte = [&](int at) { return int{memory_.MemoryImage.get(offset + at)}; };
        const auto packed = [](int value) { return 10 * (value / 16) + value % 16; };
        const int tens = packed(byte(0) % 16 * 16 + byte(1) / 16);
        const int megahertz = 100 * (byte(0) / 16) + tens;
        const int kilohertz = 1000 + 100 * (byte(1) % 16) + packed(byte(2));
        const std::map<int, std::string> fractions = {{0, "00"}, {1, "25"}, {2, "50"}, {4, "75"}};
        return std::to_string(megahertz) + "." + std::to_string(kilohertz).substr(1) +
               fractions.at(byte(3) / 32);
    }

    void expect_receivable(const std::string& frequency) {
        EXPECT_EQ(CheckBlocked(frequency), frequency);
        EXPECT_GE(leading_number(frequency), 0.1);
        EXPECT_LE(leading_number(frequency), 1299.0);
    }

    NativeFileSystem files_;
    modVR120 memory_{files_};
};

TEST_F(Demonstration, has_channels_in_several_banks_and_empty_memories_among_them) {
    std::map<int, std::set<int>> banks;
    for_each_channel([&](int bank, int number) { banks[bank].insert(number); });
    EXPECT_GE(banks.size(), 6U);
    EXPECT_LT(banks.size(), 10U);
    int banks_with_gaps = 0;
    for (const auto& [bank, numbers] : banks) {
        EXPECT_GE(numbers.size(), 5U) << "bank " << bank;
        const int length = *numbers.rbegin() - *numbers.begin() + 1;
        if (length > static_cast<int>(numbers.size())) ++banks_with_gaps;
    }
    EXPECT_GE(banks_with_gaps, 5);
}

TEST_F(Demonstration, has_all_modes_preferences_and_fractions) {
    std::map<std::string, int> seen;
    for_each_channel([&](int bank, int number) {
        ++seen[memory_.GetMode(bank, number)];
        ++seen[memory_.GetPref(bank, number)];
        ++seen["." + memory_.GetRXStp(bank, number)];
    });
    for (const char* const text : {"NFM", "WFM", "AM", "On", "Off", ".", ".25", ".50", ".75"}) {
        EXPECT_GT(seen[text], 0) << text;
    }
    EXPECT_EQ(seen.count(""), 0U);
    EXPECT_LT(seen["On"], seen["Off"]);
}

TEST_F(Demonstration, has_only_frequencies_that_the_radio_can_receive) {
    for_each_channel([&](int bank, int number) {
        expect_receivable(memory_.GetMemFreq(bank, number));
        expect_receivable(stored_frequency(4 * (64 * bank + number)));
    });
}

// So whoever reads it and changes nothing is not asked to save changes.
TEST_F(Demonstration, has_no_frequency_that_the_channel_table_shows_as_another) {
    for_each_channel([&](int bank, int number) {
        const int offset = 4 * (64 * bank + number);
        EXPECT_EQ(memory_.GetMemFreq(bank, number), stored_frequency(offset));
    });
}

TEST_F(Demonstration, has_labels_of_upper_case_characters) {
    for_each_channel([&](int bank, int number) {
        const std::string label = memory_.GetMemTag(bank, number);
        EXPECT_FALSE(label.empty());
        EXPECT_EQ(label.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789. "),
                  std::string::npos)
            << label;
    });
}

TEST_F(Demonstration, leaves_its_empty_memories_as_clearing_leaves_them) {
    modVR120 cleared(files_);
    cleared.ClearMem(0, 0);
    const auto all = memory_.MemoryImage.bytes();
    for (std::size_t i = 0; i < 640; ++i) {
        const int index = static_cast<int>(i);
        if (!memory_.GetMemFreq(index / 64, index % 64).empty()) continue;
        const auto record = all.subspan(4 * i, 4);
        const auto label = all.subspan(2560 + 6 * i, 6);
        EXPECT_TRUE(std::ranges::equal(record, cleared.MemoryImage.bytes().subspan(0, 4)));
        EXPECT_TRUE(std::ranges::equal(label, cleared.MemoryImage.bytes().subspan(2560, 6)));
    }
}

TEST_F(Demonstration, has_settings_that_every_list_of_choices_can_show) {
    const std::map<int, int> choices = {{6669, 12}, {6667, 6}, {6671, 4}, {6666, 3}, {6662, 5}};
    for (const auto& [offset, count] : choices) {
        EXPECT_LT(memory_.MemoryImage.get(offset), count) << "byte " << offset;
    }
}

TEST_F(Demonstration, has_eighteen_search_limits_in_ascending_pairs) {
    std::vector<int> offsets = {7152, 7156};
    for (int i = 0; i < 16; ++i) offsets.insert(offsets.begin() + i, 6912 + 4 * i);
    std::set<int> modes;
    for (std::size_t i = 0; i < offsets.size(); i += 2) {
        const std::string lower = stored_frequency(offsets[i]);
        const std::string upper = stored_frequency(offsets[i + 1]);
        expect_receivable(lower);
        expect_receivable(upper);
        EXPECT_LT(leading_number(lower), leading_number(upper)) << lower;
        modes.insert(memory_.MemoryImage.get(offsets[i] + 3) % 4);
    }
    EXPECT_EQ(modes, (std::set<int>{0, 1, 2, 3}));
}

}  // namespace
}  // namespace memwright::radio
