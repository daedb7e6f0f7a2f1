// The fields of a channel memory but its frequency: mode, preference, fraction code and label.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "image/image_store.h"

namespace memwright {
namespace {

// A memory well inside of the image.
constexpr int kBank = 2;
constexpr int kNumber = 35;
constexpr int kIndex = 163;

class Fields : public testing::Test {
  protected:
    int flags() { return store_->MemoryImage.get(4 * kIndex + 3); }
    void set_flags(int byte) {
        store_->set_byte(4 * kIndex + 3, static_cast<std::uint8_t>(byte));
    }

    ImageStore store_;
};

TEST_F(Fields, mode_is_read_from_the_lowest_two_bits_of_any_flags_byte) {
    const std::string modes[] = {"", "NFM", "WFM", "AM"};
    for (int byte = 0; byte < 256; ++byte) {
        set_flags(byte);
        EXPECT_EQ(store_->GetMode(kBank, kNumber), modes[byte % 4]) << byte;
    }
}

TEST_F(Fields, SetMode_changes_the_lowest_two_bits_of_any_flags_byte_alone) {
    for (int byte = 0; byte < 256; ++byte) {
        int code = 0;
        for (const char* mode : {"NFM", "WFM", "AM"}) {
            ++code;
            set_flags(byte);
            store_->SetMode(kBank, kNumber, mode);
            EXPECT_EQ(flags(), (byte & 0xFC) | code) << byte << " " << mode;
            EXPECT_EQ(store_->GetMode(kBank, kNumber), mode);
        }
    }
}

TEST_F(Fields, SetMode_ignores_texts_that_it_does_not_know) {
    for (const char* mode :
         {"nfm", "Nfm", "wfm", "am", "Am", "AUTO", "FM", "", " AM", "AM ", "NFMX", "0"}) {
        for (const int byte : {0x00, 0x01, 0x02, 0x03, 0xFF, 0xA8}) {
            set_flags(byte);
            store_->SetMode(kBank, kNumber, mode);
            EXPECT_EQ(flags(), byte) << '"' << mode << '"';
        }
    }
}

TEST_F(Fields, preference_is_read_from_bit_2_of_any_flags_byte) {
    for (int byte = 0; byte < 256; ++byte) {
        set_flags(byte);
        EXPECT_EQ(store_->GetPref(kBank, kNumber), byte / 4 % 2 == 1 ? "On" : "Off") << byte;
    }
}

TEST_F(Fields, SetPref_changes_bit_2_of_any_flags_byte_alone) {
    for (int byte = 0; byte < 256; ++byte) {
        set_flags(byte);
        store_->SetPref(kBank, kNumber, "On");
        EXPECT_EQ(flags(), byte | 0x04);
        EXPECT_EQ(store_->GetPref(kBank, kNumber), "On");
        set_flags(byte);
        store_->SetPref(kBank, kNumber, "Off");
        EXPECT_EQ(flags(), byte & 0xFB);
        EXPECT_EQ(store_->GetPref(kBank, kNumber), "Off");
    }
}

TEST_F(Fields, SetPref_ignores_texts_that_it_does_not_know) {
    for (const char* preference : {"on", "ON", "off", "OFF", "", "1", "On ", " Off", "Yes"}) {
        for (const int byte : {0x00, 0x04, 0xFF, 0xFB}) {
            set_flags(byte);
            store_->SetPref(kBank, kNumber, preference);
            EXPECT_EQ(flags(), byte) << '"' << preference << '"';
        }
    }
}

TEST_F(Fields, fraction_code_is_read_from_the_upper_three_bits_of_any_flags_byte) {
    const std::string codes[] = {"", "25", "50", "", "75", "", "", ""};
    for (int byte = 0; byte < 256; ++byte) {
        set_flags(byte);
        EXPECT_EQ(store_->GetRXStp(kBank, kNumber), codes[byte / 32]) << byte;
    }
}

TEST_F(Fields, SetRxStp_changes_the_upper_three_bits_of_any_flags_byte_alone) {
    for (int byte = 0; byte < 256; ++byte) {
        int code = 0x20;
        for (const char* fraction : {"25", "50", "75"}) {
            set_flags(byte);
            store_->SetRxStp(kBank, kNumber, fraction);
            EXPECT_EQ(flags(), (byte & 0x1F) | code) << byte << " " << fraction;
            EXPECT_EQ(store_->GetRXStp(kBank, kNumber), fraction);
            code *= 2;
        }
    }
}

TEST_F(Fields, SetRxStp_clears_the_code_for_any_other_text) {
    for (const char* fraction :
         {"00", "", "0", "5", "2.5", "25 ", " 50", "075", "750", "99", "x"}) {
        for (const int byte : {0xFF, 0x3F, 0x5F, 0x9F, 0x1F, 0xE0}) {
            set_flags(byte);
            store_->SetRxStp(kBank, kNumber, fraction);
            EXPECT_EQ(flags(), byte & 0x1F) << '"' << fraction << '"';
        }
    }
}

TEST_F(Fields, SetMemTag_stores_six_characters_padded_with_spaces) {
    store_->SetMemTag(kBank, kNumber, "ABCDEFGH");
    EXPECT_EQ(store_.label(kIndex), "ABCDEF");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "ABCDEF");
    store_->SetMemTag(kBank, kNumber, "AB");
    EXPECT_EQ(store_.label(kIndex), "AB    ");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "AB");
    store_->SetMemTag(kBank, kNumber, "");
    EXPECT_EQ(store_.label(kIndex), "      ");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "");
}

TEST_F(Fields, SetMemTag_neither_filters_nor_changes_case) {
    store_->SetMemTag(kBank, kNumber, "aB\t\x80\xE4,");
    EXPECT_EQ(store_.label(kIndex), "aB\t\x80\xE4,");
}

TEST_F(Fields, GetMemTag_removes_nothing_but_spaces_from_nothing_but_the_end) {
    store_.put_label(kIndex, "  A B ");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "  A B");
    store_.put_label(kIndex, "A  \t  ");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "A  \t");
    store_.put_label(kIndex, std::string("A \0   ", 6));
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), std::string("A \0", 3));
    store_.put_label(kIndex, "A\xA0\xA0\xA0\xA0\xA0");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "A\xA0\xA0\xA0\xA0\xA0");
    store_.put_label(kIndex, std::string(6, '\0'));
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), std::string(6, '\0'));
}

TEST_F(Fields, every_byte_survives_in_every_place_of_a_label) {
    for (std::size_t place = 0; place < 6; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string bytes = "uvwxyz";
            bytes[place] = static_cast<char>(byte);
            store_.put_label(kIndex, bytes);
            const std::string tag = store_->GetMemTag(kBank, kNumber);
            ASSERT_EQ(tag, place == 5 && byte == ' ' ? "uvwxy" : bytes) << byte << " at " << place;
            store_->SetMemTag(9, 63, tag);
            ASSERT_EQ(store_.label(639), bytes) << byte << " at " << place;
        }
    }
}

TEST_F(Fields, any_label_is_the_same_six_bytes_after_reading_and_storing_it) {
    SeededRandom random;
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(6, ' ');
        for (char& c : bytes) c = random.coin() ? ' ' : static_cast<char>(random.byte());
        store_.put_label(kIndex, bytes);
        const std::string tag = store_->GetMemTag(kBank, kNumber);
        ASSERT_FALSE(tag.ends_with(' '));
        ASSERT_EQ(tag + std::string(6 - tag.size(), ' '), bytes);
        store_->SetMemTag(0, 0, tag);
        ASSERT_EQ(store_.label(0), bytes);
    }
}

TEST_F(Fields, ClearMem_makes_the_empty_memory_and_touches_no_other) {
    SeededRandom random;
    store_.fill(random);
    const MemoryImage before = store_->MemoryImage;
    store_->ClearMem(kBank, kNumber);
    EXPECT_EQ(store_.record(kIndex), (std::array<int, 4>{0xFF, 0xFF, 0xFF, 0xFF}));
    EXPECT_EQ(store_.label(kIndex), "      ");
    EXPECT_EQ(store_->GetMemFreq(kBank, kNumber), "");
    EXPECT_EQ(store_->GetMode(kBank, kNumber), "AM");
    EXPECT_EQ(store_->GetPref(kBank, kNumber), "On");
    EXPECT_EQ(store_->GetRXStp(kBank, kNumber), "");
    EXPECT_EQ(store_->GetMemTag(kBank, kNumber), "");
    EXPECT_EQ(store_->GetMemByte(kBank, kNumber), "FF");

    const auto untouched = [&](std::size_t first, std::size_t size) {
        return std::ranges::equal(store_->MemoryImage.bytes().subspan(first, size),
                                  before.bytes().subspan(first, size));
    };
    constexpr std::size_t kRecord = 4UL * kIndex;
    constexpr std::size_t kLabel = 2560 + 6UL * kIndex;
    EXPECT_TRUE(untouched(0, kRecord));
    EXPECT_TRUE(untouched(kRecord + 4, kLabel - (kRecord + 4)));
    EXPECT_TRUE(untouched(kLabel + 6, 7392 - (kLabel + 6)));
}

TEST_F(Fields, the_last_memory_has_its_label_right_before_the_settings) {
    store_->SetMemTag(9, 63, "LASTLB");
    EXPECT_EQ(store_->MemoryImage.get(6394), 'L');
    EXPECT_EQ(store_->MemoryImage.get(6399), 'B');
    EXPECT_EQ(store_->MemoryImage.get(6400), 0);
    store_->SetMemTag(0, 0, "FIRST");
    EXPECT_EQ(store_->MemoryImage.get(2560), 'F');
    EXPECT_EQ(store_->MemoryImage.get(2559), 0);
}

TEST_F(Fields, setting_the_flags_fields_never_touches_another_byte) {
    SeededRandom random;
    store_.fill(random);
    const MemoryImage before = store_->MemoryImage;
    store_->SetMode(kBank, kNumber, "WFM");
    store_->SetPref(kBank, kNumber, "Off");
    store_->SetRxStp(kBank, kNumber, "75");
    EXPECT_EQ(store_.first_change(before, 4 * kIndex + 3, 1), -1);
    EXPECT_EQ(flags(), 0x80 | (before.get(4 * kIndex + 3) & 0x18) | 0x02);
}

}  // namespace
}  // namespace memwright
