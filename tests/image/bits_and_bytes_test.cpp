// Bytes and bits of the image through their texts.

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/error.h"
#include "base/number_text.h"
#include "image/image_store.h"

namespace memwright {
namespace {

constexpr int kLowestInt = std::numeric_limits<int>::min();
constexpr int kHighestInt = std::numeric_limits<int>::max();

TEST(BitsAndBytes, GetBit_counts_from_the_least_significant_bit) {
    ImageStore store;
    store->set_byte(6400, 0x05);
    EXPECT_EQ(store->GetBit(6400, 0), 1);
    EXPECT_EQ(store->GetBit(6400, 1), 0);
    EXPECT_EQ(store->GetBit(6400, 2), 1);
    EXPECT_EQ(store->GetBit(6400, 7), 0);
}

TEST(BitsAndBytes, SetBit_rewrites_one_bit) {
    ImageStore store;
    store->set_byte(6400, 0x05);
    store->SetBit(6400, 7, 1);
    EXPECT_EQ(store->MemoryImage.get(6400), 0x85);
    store->set_byte(6400, 0x05);
    store->SetBit(6400, 0, 0);
    EXPECT_EQ(store->MemoryImage.get(6400), 0x04);
}

TEST(BitsAndBytes, GetBit_agrees_with_shifts_for_every_byte_and_bit) {
    ImageStore store;
    for (int byte = 0; byte < 256; ++byte) {
        store->set_byte(7391, static_cast<std::uint8_t>(byte));
        for (int bit = 0; bit < 8; ++bit) {
            ASSERT_EQ(store->GetBit(7391, bit), (byte >> bit) & 1) << byte << " bit " << bit;
        }
    }
}

TEST(BitsAndBytes, SetBit_agrees_with_shifts_for_every_byte_and_bit) {
    ImageStore store;
    for (int byte = 0; byte < 256; ++byte) {
        for (int bit = 0; bit < 8; ++bit) {
            store->set_byte(0, static_cast<std::uint8_t>(byte));
            store->SetBit(0, bit, 1);
            ASSERT_EQ(store->MemoryImage.get(0), byte | 1 << bit) << byte << " bit " << bit;
            ASSERT_EQ(store->GetBit(0, bit), 1);
            store->set_byte(0, static_cast<std::uint8_t>(byte));
            store->SetBit(0, bit, 0);
            ASSERT_EQ(store->MemoryImage.get(0), byte & ~(1 << bit)) << byte << " bit " << bit;
            ASSERT_EQ(store->GetBit(0, bit), 0);
        }
    }
}

TEST(BitsAndBytes, SetBit_leaves_every_other_byte_alone) {
    SeededRandom random;
    ImageStore store;
    store.fill(random);
    const MemoryImage before = store->MemoryImage;
    for (int round = 0; round < 50; ++round) {
        const int offset = random.between(0, 7391);
        store->set_image(before);
        store->SetBit(offset, random.between(0, 7), random.between(0, 1));
        ASSERT_EQ(store.first_change(before, offset, 1), -1) << offset;
    }
}

TEST(BitsAndBytes, an_offset_outside_the_image_is_an_index_error) {
    ImageStore store;
    const MemoryImage before = store->MemoryImage;
    for (const int offset : {-1, 7392, kLowestInt, kHighestInt}) {
        EXPECT_THROW(store->GetBit(offset, 0), IndexError) << offset;
        EXPECT_THROW(store->SetBit(offset, 0, 1), IndexError) << offset;
    }
    EXPECT_EQ(store->MemoryImage, before);
}

TEST(BitsAndBytes, a_byte_has_no_bits_but_0_to_7) {
    ImageStore store;
    store->set_byte(10, 0xA5);
    for (const int bit : {-1, 8, kLowestInt, kHighestInt}) {
        EXPECT_THROW(store->GetBit(10, bit), IndexError) << bit;
        EXPECT_THROW(store->SetBit(10, bit, 1), IndexError) << bit;
    }
    EXPECT_EQ(store->MemoryImage.get(10), 0xA5);
}

// The bit's value goes into the byte's binary text as it is written, and the way back repeats a
// digit for what it does not know.
TEST(BitsAndBytes, SetBit_writes_any_other_value_into_the_text_as_it_stands) {
    ImageStore store;
    const auto after = [&](int byte, int bit, int value) {
        store->set_byte(5, static_cast<std::uint8_t>(byte));
        store->SetBit(5, bit, value);
        return static_cast<int>(store->MemoryImage.get(5));
    };
    EXPECT_EQ(after(0xA4, 0, 2), 0xAA);      // 1010 0102
    EXPECT_EQ(after(0xF5, 7, 2), 0x05);      // 2111 0101
    EXPECT_EQ(after(0x00, 7, -1), 0x00);     // -100 0000 0
    EXPECT_EQ(after(0x81, 7, -1), 0x00);     // -100 0000 1
    EXPECT_EQ(after(0x0F, 7, -1), 0x77);     // -100 0111 1
    EXPECT_EQ(after(0xFF, 4, -1000), 0x8F);  // 111- 1000 1111
}

TEST(BitsAndBytes, SetBit_of_a_value_that_makes_no_byte_changes_nothing) {
    struct Case {
        int bit;
        int value;
    };
    ImageStore store;
    for (const auto [bit, value] : {Case{7, 10},           // 1011 1111 1
                                    Case{4, 10},           // 1111 0111 1
                                    Case{0, 11},           // 1111 1111 1
                                    Case{0, -1000},        // 1111 111- 1000
                                    Case{4, kHighestInt},  // no slice is a group
                                    Case{0, kHighestInt}}) {
        store->set_byte(5, 0xFF);
        EXPECT_THROW(store->SetBit(5, bit, value), ConversionError) << bit << " " << value;
        EXPECT_EQ(store->MemoryImage.get(5), 0xFF) << bit << " " << value;
    }
}

TEST(BitsAndBytes, GetMemByte_reads_the_flags_of_the_first_and_the_last_memory) {
    ImageStore store;
    store->set_byte(3, 0x0A);
    store->set_byte(2559, 0xC7);
    EXPECT_EQ(store->GetMemByte(0, 0), "0A");
    EXPECT_EQ(store->GetMemByte(9, 63), "C7");
}

TEST(BitsAndBytes, the_flags_byte_of_every_memory_lies_at_the_end_of_its_record) {
    ImageStore store;
    for (int bank = 0; bank < 10; ++bank) {
        for (int number = 0; number < 64; ++number) {
            const MemoryImage before = store->MemoryImage;
            const int index = bank * 64 + number;
            store->SetMemByte(bank, number, index % 256);
            EXPECT_EQ(store->MemoryImage.get(index * 4 + 3), index % 256);
            EXPECT_EQ(store->GetMemByte(bank, number),
                      lHex(static_cast<std::uint32_t>(index % 256)));
            EXPECT_EQ(store.first_change(before, index * 4 + 3, 1), -1);
        }
    }
}

TEST(BitsAndBytes, SetMemByte_refuses_what_does_not_fit_in_a_byte) {
    ImageStore store;
    store->SetMemByte(1, 2, 0x5A);
    for (const int value : {-1, 256, kLowestInt, kHighestInt}) {
        EXPECT_THROW(store->SetMemByte(1, 2, value), ConversionError) << value;
    }
    EXPECT_EQ(store->GetMemByte(1, 2), "5A");
}

TEST(BitsAndBytes, a_bank_is_bound_by_the_image_alone) {
    ImageStore store;
    store->SetMemByte(10, 0, 0x77);
    EXPECT_EQ(store->MemoryImage.get(2563), 0x77);
    store->SetMemByte(0, 64, 0x66);
    EXPECT_EQ(store->GetMemByte(1, 0), "66");
    store->SetMemByte(28, 55, 0x99);
    EXPECT_EQ(store->MemoryImage.get(7391), 0x99);
}

TEST(BitsAndBytes, a_memory_outside_the_image_is_an_index_error) {
    struct Address {
        int bank;
        int number;
    };
    ImageStore store;
    const MemoryImage before = store->MemoryImage;
    for (const auto [bank, number] :
         {Address{28, 56}, Address{0, -1}, Address{-1, 63}, Address{29, 0}, Address{-1000, 0},
          // Their offsets in 32 bits would come round to the image again.
          Address{1 << 26, 0}, Address{1 << 24, 0}, Address{0, 1 << 30}, Address{kLowestInt, 0},
          Address{kHighestInt, kHighestInt}, Address{0, kLowestInt}}) {
        SCOPED_TRACE(std::to_string(bank) + ", " + std::to_string(number));
        std::string freq = "145.5";
        EXPECT_THROW(store->GetMemByte(bank, number), IndexError);
        EXPECT_THROW(store->SetMemByte(bank, number, 1), IndexError);
        EXPECT_THROW(store->GetMemFreq(bank, number), IndexError);
        EXPECT_THROW(store->SetMemFreq(bank, number, freq), IndexError);
        EXPECT_THROW(store->GetMode(bank, number), IndexError);
        EXPECT_THROW(store->SetMode(bank, number, "AM"), IndexError);
        EXPECT_THROW(store->GetPref(bank, number), IndexError);
        EXPECT_THROW(store->SetPref(bank, number, "On"), IndexError);
        EXPECT_THROW(store->GetRXStp(bank, number), IndexError);
        EXPECT_THROW(store->SetRxStp(bank, number, "25"), IndexError);
        EXPECT_THROW(store->ClearMem(bank, number), IndexError);
    }
    EXPECT_EQ(store->MemoryImage, before);
}

TEST(BitsAndBytes, a_label_outside_the_image_is_an_index_error) {
    ImageStore store;
    const MemoryImage before = store->MemoryImage;
    for (const int bank : {13, -7, 1 << 26, kLowestInt, kHighestInt}) {
        EXPECT_THROW(store->GetMemTag(bank, 0), IndexError) << bank;
        EXPECT_THROW(store->SetMemTag(bank, 0, "LABEL"), IndexError) << bank;
    }
    EXPECT_EQ(store->MemoryImage, before);
}

}  // namespace
}  // namespace memwright
