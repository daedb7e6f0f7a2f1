// The frequencies of search limits: the kilohertz digits as they are stored, and the operations on
// a record wherever it lies.

#include <gtest/gtest.h>

#include <string>

#include "base/error.h"
#include "image/image_store.h"

namespace memwright {
namespace {

TEST(LimitFrequency, the_fraction_code_follows_three_kilohertz_digits) {
    EXPECT_EQ(limit_from_digits("145100", "50"), "145.10050");
    EXPECT_EQ(limit_from_digits("145100", ""), "145.10000");
    EXPECT_EQ(limit_from_digits("145000", "75"), "145.00075");
    EXPECT_EQ(limit_from_digits("145512", "25"), "145.51225");
    EXPECT_EQ(limit_from_digits("000000", "25"), "0.00025");
}

TEST(LimitFrequency, zeros_in_front_are_not_shown) {
    EXPECT_EQ(limit_from_digits("012340", ""), "12.34000");
    EXPECT_EQ(limit_from_digits("005001", ""), "5.00100");
    EXPECT_EQ(limit_from_digits("000100", ""), "0.10000");
    EXPECT_EQ(limit_from_digits("000000", ""), "0.00000");
}

TEST(LimitFrequency, the_first_digit_counts_hundreds_of_megahertz_up_to_15) {
    EXPECT_EQ(limit_from_digits("A00001", ""), "1000.00100");
    EXPECT_EQ(limit_from_digits("C99999", "75"), "1299.99975");
    EXPECT_EQ(limit_from_digits("D00000", ""), "1300.00000");
    EXPECT_EQ(limit_from_digits("F99999", "75"), "1599.99975");
}

TEST(LimitFrequency, six_digits_of_F_are_no_frequency_whatever_the_fraction) {
    for (const char* fraction : {"", "25", "50", "75"}) {
        EXPECT_EQ(limit_from_digits("FFFFFF", fraction), "");
    }
    EXPECT_EQ(limit_from_digits("FFFFFE", ""), "15.FFE00");
    EXPECT_EQ(limit_from_digits("EFFFFF", ""), "14.FFF00");
}

TEST(LimitFrequency, digits_that_are_not_decimal_cut_the_megahertz_and_stay_in_the_kilohertz) {
    EXPECT_EQ(limit_from_digits("1A5512", ""), "1.51200");
    EXPECT_EQ(limit_from_digits("14B512", "50"), "14.51250");
    EXPECT_EQ(limit_from_digits("1E5512", ""), "1.51200") << "there are no exponents";
    EXPECT_EQ(limit_from_digits("145A12", "25"), "145.A1225");
    EXPECT_EQ(limit_from_digits("14551F", ""), "145.51F00");
}

TEST(LimitFrequency, is_read_unlike_a_channels) {
    EXPECT_EQ(limit_from_digits("145100", "50"), "145.10050");
    EXPECT_EQ(frequency_from_digits("145100", "50"), "145.15000");
}

// Where the kilohertz do not end in 0, or there is no fraction, and all digits are decimal.
TEST(LimitFrequency, agrees_with_a_channels_where_nothing_is_shortened_before_the_code) {
    SeededRandom random;
    for (int round = 0; round < 5000; ++round) {
        std::string digits(1, random.one_of("0123456789ABCDEF"));
        digits += random.text("0123456789", 5, 5);
        const std::string codes[] = {"", "25", "50", "75"};
        const std::string fraction = digits.back() == '0' ? "" : codes[random.between(0, 3)];
        ASSERT_EQ(limit_from_digits(digits, fraction), frequency_from_digits(digits, fraction))
            << digits << " " << fraction;
    }
}

class RecordAtAnOffset : public testing::Test {
  protected:
    std::array<int, 4> bytes(int offset) {
        std::array<int, 4> found{};
        for (std::size_t i = 0; i < 4; ++i) {
            found[i] = store_->MemoryImage.get(offset + static_cast<int>(i));
        }
        return found;
    }
    void put(int offset, const std::array<int, 4>& wanted) {
        for (std::size_t i = 0; i < 4; ++i) {
            store_->set_byte(offset + static_cast<int>(i),
                                    static_cast<std::uint8_t>(wanted[i]));
        }
    }
    void store(int offset, std::string Freq) { store_->set_frequency(offset, Freq); }

    ImageStore store_;
};

TEST_F(RecordAtAnOffset, is_read_as_six_digits_and_a_code) {
    for (const int offset : {0, 6912, 6913, 7156, 7388}) {
        put(offset, {0xD0, 0x0A, 0x1F, 0x5F});
        EXPECT_EQ(store_->frequency_digits(offset), "D00A1F") << offset;
        EXPECT_EQ(store_->fraction_code(offset), "50") << offset;
    }
}

TEST_F(RecordAtAnOffset, is_written_with_its_other_flags_and_its_neighbours_kept) {
    SeededRandom random;
    store_.fill(random);
    for (const int offset : {0, 6912, 6913, 7156, 7388}) {
        const MemoryImage before = store_->MemoryImage;
        const int flags = before.get(offset + 3) & 0x1F;
        store(offset, "1299.51275");
        EXPECT_EQ(bytes(offset), (std::array<int, 4>{0xC9, 0x95, 0x12, flags | 0x80})) << offset;
        EXPECT_EQ(store_.first_change(before, offset, 4), -1) << offset;
    }
}

TEST_F(RecordAtAnOffset, the_number_that_was_stored_is_left_in_the_text) {
    std::string Freq = "0145.51250 MHz";
    store_->set_frequency(6912, Freq);
    EXPECT_EQ(Freq, "145.5125");
    Freq = "";
    store_->set_frequency(6912, Freq);
    EXPECT_EQ(Freq, "0");
    EXPECT_EQ(bytes(6912), (std::array<int, 4>{0, 0, 0, 0}));
}

TEST_F(RecordAtAnOffset, setting_the_fraction_code_changes_three_bits_of_one_byte) {
    SeededRandom random;
    store_.fill(random);
    const int offset = 6972;
    int code = 0x20;
    for (const char* fraction : {"25", "50", "75", "00", ""}) {
        const MemoryImage before = store_->MemoryImage;
        store_->set_fraction_code(offset, fraction);
        EXPECT_EQ(store_->MemoryImage.get(offset + 3), (before.get(offset + 3) & 0x1F) | code)
            << fraction;
        EXPECT_EQ(store_.first_change(before, offset + 3, 1), -1);
        code = code * 2 & 0xFF;
    }
}

TEST_F(RecordAtAnOffset, is_the_record_of_a_channel_where_one_lies) {
    SeededRandom random;
    ImageStore other;
    for (int round = 0; round < 2000; ++round) {
        const int index = random.between(0, 639);
        std::string Freq = random.text("0123456789", 4) + "." + random.text("0257", 5);
        std::string same = Freq;
        store_->set_frequency(4 * index, Freq);
        other->SetMemFreq(index / 64, index % 64, same);
        ASSERT_EQ(Freq, same);
        ASSERT_EQ(bytes(4 * index), other.record(index));
        ASSERT_EQ(store_->fraction_code(4 * index), other->GetRXStp(index / 64, index % 64));
    }
}

TEST_F(RecordAtAnOffset, one_that_does_not_fit_into_the_image_is_refused_and_nothing_is_written) {
    SeededRandom random;
    store_.fill(random);
    const MemoryImage before = store_->MemoryImage;
    for (const int offset : {-4, 7389, 7390, 7391, 7392}) {
        EXPECT_THROW(store(offset, "145.5125"), IndexError) << offset;
        EXPECT_TRUE(store_->MemoryImage == before) << offset;
    }
    EXPECT_THROW(store_->frequency_digits(7390), IndexError);
    EXPECT_THROW(store_->frequency_digits(-1), IndexError);
    EXPECT_THROW(store_->fraction_code(7389), IndexError);
    EXPECT_THROW(store_->set_fraction_code(7389, "25"), IndexError);
    EXPECT_TRUE(store_->MemoryImage == before);
}

// What a search limit shows, stored again, is the same record.
TEST_F(RecordAtAnOffset, any_frequency_is_the_same_record_after_reading_and_storing_it) {
    SeededRandom random;
    for (int round = 0; round < 5000; ++round) {
        const int flags[] = {0x00, 0x20, 0x40, 0x80};
        const std::array<int, 4> record{random.between(0, 15) * 16 + random.between(0, 9),
                                        random.between(0, 9) * 16 + random.between(0, 9),
                                        random.between(0, 9) * 16 + random.between(0, 9),
                                        flags[random.between(0, 3)] | random.between(0, 0x1F)};
        const int offset = 6912 + 4 * random.between(0, 15);
        put(offset, record);
        store(offset,
              limit_from_digits(store_->frequency_digits(offset), store_->fraction_code(offset)));
        ASSERT_EQ(bytes(offset), record);
    }
}

}  // namespace
}  // namespace memwright
