// Frequencies in the image and the texts that stand for them.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "image/image_store.h"

namespace memwright {
namespace {

using Record = std::array<int, 4>;

constexpr int kFraction25 = 0x20;
constexpr int kFraction50 = 0x40;
constexpr int kFraction75 = 0x80;

// What a record of memory 0 reads as.
std::string read(const Record& record) {
    ImageStore store;
    store.put_record(0, record);
    return store->GetMemFreq(0, 0);
}

struct Stored {
    Record record;
    std::string reading;
};

// What a text leaves in a record with the given flags, and in the text.
Stored stored(std::string Freq, int flags = 0) {
    ImageStore store;
    store.put_record(0, {0x11, 0x22, 0x33, flags});
    store->SetMemFreq(0, 0, Freq);
    return {store.record(0), Freq};
}

TEST(Frequency, the_fraction_code_follows_the_kilohertz) {
    EXPECT_EQ(read({0x14, 0x55, 0x12, kFraction50}), "145.51250");
    EXPECT_EQ(read({0x14, 0x55, 0x12, kFraction25}), "145.51225");
    EXPECT_EQ(read({0x14, 0x55, 0x12, kFraction75}), "145.51275");
    EXPECT_EQ(read({0x14, 0x55, 0x12, 0}), "145.51200");
}

TEST(Frequency, a_pattern_that_is_no_fraction_code_reads_as_none) {
    for (const int pattern : {0x60, 0xA0, 0xC0, 0xE0}) {
        EXPECT_EQ(read({0x14, 0x55, 0x12, pattern}), "145.51200") << pattern;
    }
}

TEST(Frequency, the_other_flags_have_no_part_in_the_reading) {
    EXPECT_EQ(read({0x14, 0x55, 0x12, 0x1F}), "145.51200");
    EXPECT_EQ(read({0x14, 0x55, 0x12, kFraction50 | 0x1F}), "145.51250");
}

TEST(Frequency, zeros_in_front_are_not_shown) {
    EXPECT_EQ(read({0x01, 0x23, 0x45, 0}), "12.34500");
    EXPECT_EQ(read({0x00, 0x01, 0x00, 0}), "0.10000");
    EXPECT_EQ(read({0x00, 0x00, 0x00, 0}), "0.00000");
}

TEST(Frequency, the_first_nibble_counts_hundreds_of_megahertz_up_to_15) {
    EXPECT_EQ(read({0xD0, 0x00, 0x00, 0}), "1300.00000");
    EXPECT_EQ(read({0xA0, 0x00, 0x01, 0}), "1000.00100");
    EXPECT_EQ(read({0xF9, 0x99, 0x99, 0}), "1599.99900");
}

TEST(Frequency, three_bytes_of_FF_are_the_empty_memory_whatever_the_flags) {
    for (int flags = 0; flags < 256; ++flags) {
        EXPECT_EQ(read({0xFF, 0xFF, 0xFF, flags}), "") << flags;
    }
}

TEST(Frequency, anything_but_three_bytes_of_FF_is_a_frequency) {
    EXPECT_EQ(read({0xFF, 0xFF, 0xFE, 0}), "15.00000");
    EXPECT_EQ(read({0xEF, 0xFF, 0xFF, 0}), "14.00000");
}

TEST(Frequency, the_fraction_code_follows_the_shortened_text_even_where_it_misplaces_digits) {
    EXPECT_EQ(read({0x14, 0x51, 0x00, kFraction50}), "145.15000");
    EXPECT_EQ(read({0x14, 0x51, 0x20, kFraction25}), "145.12250");
    EXPECT_EQ(read({0x14, 0x50, 0x00, kFraction75}), "14575.00000");
    EXPECT_EQ(read({0xD0, 0x00, 0x00, kFraction50}), "130050.00000");
}

TEST(Frequency, a_shortened_text_of_less_than_three_characters_is_filled_up_before_the_code) {
    EXPECT_EQ(read({0x00, 0x00, 0x00, kFraction25}), "00025.00000");
    EXPECT_EQ(read({0x00, 0x50, 0x00, kFraction50}), "50050.00000");
    EXPECT_EQ(read({0x04, 0x50, 0x00, kFraction75}), "45075.00000");
    EXPECT_EQ(read({0x00, 0x55, 0x00, kFraction25}), "5.52500");
}

TEST(Frequency, a_nibble_that_is_no_decimal_digit_cuts_the_number_short) {
    EXPECT_EQ(read({0x1A, 0x55, 0x12, 0}), "1.00000");
    EXPECT_EQ(read({0x14, 0xB5, 0x12, 0}), "14.00000");
    EXPECT_EQ(read({0x14, 0x5C, 0x12, 0}), "145.00000");
    EXPECT_EQ(read({0x14, 0x55, 0xD2, 0}), "145.50000");
    EXPECT_EQ(read({0x14, 0x55, 0x1F, 0}), "145.51000");
    EXPECT_EQ(read({0x1E, 0x55, 0x12, 0}), "1.00000") << "there are no exponents";
    EXPECT_EQ(read({0x14, 0x55, 0x1F, kFraction25}), "145.51250");
}

TEST(Frequency, storing_packs_the_digits_and_sets_the_fraction_bits) {
    EXPECT_EQ(stored("145.5125", 0xFF).record, (Record{0x14, 0x55, 0x12, 0x5F}));
    EXPECT_EQ(stored("145.51225", 0xFF).record, (Record{0x14, 0x55, 0x12, 0x3F}));
    EXPECT_EQ(stored("145.51275", 0x00).record, (Record{0x14, 0x55, 0x12, 0x80}));
    EXPECT_EQ(stored("45.5").record, (Record{0x04, 0x55, 0x00, 0x00}));
    EXPECT_EQ(stored("5.001").record, (Record{0x00, 0x50, 0x01, 0x00}));
}

TEST(Frequency, storing_clears_the_fraction_bits_for_any_other_decimals) {
    EXPECT_EQ(stored("1300", 0xFF).record, (Record{0xD0, 0x00, 0x00, 0x1F}));
    EXPECT_EQ(stored("145.51233", 0xFF).record, (Record{0x14, 0x55, 0x12, 0x1F}));
    EXPECT_EQ(stored("145.5122", 0xFF).record, (Record{0x14, 0x55, 0x12, 0x1F}));
}

TEST(Frequency, the_hundreds_from_1000_MHz_on_are_one_hexadecimal_digit) {
    EXPECT_EQ(stored("1000").record, (Record{0xA0, 0x00, 0x00, 0x00}));
    EXPECT_EQ(stored("1150.25").record, (Record{0xB5, 0x02, 0x50, 0x00}));
    EXPECT_EQ(stored("1300").record, (Record{0xD0, 0x00, 0x00, 0x00}));
    EXPECT_EQ(stored("1599.999").record, (Record{0xF9, 0x99, 0x99, 0x00}));
}

TEST(Frequency, from_1600_MHz_on_the_last_byte_is_still_the_last_two_digits) {
    EXPECT_EQ(stored("1623.456").record, (Record{0x10, 0x23, 0x56, 0x00}));
    EXPECT_EQ(stored("9999.999").record, (Record{0x63, 0x99, 0x99, 0x00}));
    EXPECT_EQ(stored("14575").record, (Record{0xE7, 0x50, 0x00, 0x00}));
    EXPECT_EQ(stored("160075.125").record, (Record{0x10, 0x75, 0x25, 0x00}));
}

TEST(Frequency, decimals_after_the_fifth_are_dropped) {
    EXPECT_EQ(stored("145.512259").record, (Record{0x14, 0x55, 0x12, kFraction25}));
    EXPECT_EQ(stored("145.5122599999").reading, "145.5122599999");
}

TEST(Frequency, storing_leaves_the_numeric_reading_in_the_text) {
    EXPECT_EQ(stored("145.51250").reading, "145.5125");
    EXPECT_EQ(stored("0145.500").reading, "145.5");
    EXPECT_EQ(stored("145.000").reading, "145");
    EXPECT_EQ(stored("12.5MHz").reading, "12.5");
    EXPECT_EQ(stored("1.2.3").reading, "1.2");
    EXPECT_EQ(stored(".5").reading, "0.5");
    EXPECT_EQ(stored("5.").reading, "5");
    EXPECT_EQ(stored("").reading, "0");
}

TEST(Frequency, a_text_that_is_no_number_stores_0_MHz_and_not_the_empty_memory) {
    for (const char* text : {"", "abc", "-145.5", " 145.5", "+145.5", "e5"}) {
        EXPECT_EQ(stored(text, 0xFF).record, (Record{0x00, 0x00, 0x00, 0x1F})) << text;
        EXPECT_EQ(stored(text).reading, "0") << text;
    }
    EXPECT_EQ(stored("1e5").record, (Record{0x00, 0x10, 0x00, 0x00}));
}

TEST(Frequency, a_number_of_400_digits_is_stored_by_its_first_two_digits) {
    const Stored huge = stored(std::string(400, '9'), 0xFF);
    EXPECT_EQ(huge.reading.substr(0, 6), "179769");
    EXPECT_EQ(huge.record[0], 0x11);
    EXPECT_EQ(huge.record[2], 0x00);
    EXPECT_EQ(huge.record[3], 0x1F);
    EXPECT_EQ(stored(std::string(400, '0') + "145.5").record, (Record{0x14, 0x55, 0x00, 0x00}));
}

TEST(Frequency, storing_touches_neither_the_label_nor_another_memory) {
    SeededRandom random;
    ImageStore store;
    store.fill(random);
    const MemoryImage before = store->MemoryImage;
    std::string Freq = "433.9225";
    store->SetMemFreq(7, 21, Freq);
    EXPECT_EQ(store.first_change(before, 4 * (7 * 64 + 21), 4), -1);
    EXPECT_EQ(store->MemoryImage.get(4 * (7 * 64 + 21) + 3) & 0x1F,
              before.get(4 * (7 * 64 + 21) + 3) & 0x1F);
}

// The plain formulation: nibbles and whole numbers, no text but the decimals.
std::string plain_reading(const Record& record) {
    int nibbles[6];
    for (std::size_t i = 0; i < 6; ++i) {
        nibbles[i] = i % 2 == 0 ? record[i / 2] / 16 : record[i / 2] % 16;
    }
    if (record[0] + record[1] + record[2] == 3 * 255) return "";
    int megahertz = nibbles[0];
    int kilohertz = 0;
    int weight = 100;
    for (int i = 1; i < 6 && nibbles[i] < 10; ++i) {
        if (i < 3) {
            megahertz = megahertz * 10 + nibbles[i];
        } else {
            kilohertz += nibbles[i] * weight;
            weight /= 10;
        }
    }
    std::string text = std::to_string(megahertz);
    if (kilohertz > 0) text += ".";
    for (int rest = kilohertz; rest > 0; rest = rest % 100 * 10) text += std::to_string(rest / 100);
    const int codes[] = {0, 25, 50, 0, 75, 0, 0, 0};
    const int code = codes[record[3] / 32];
    if (code != 0) {
        while (text.size() < 3) text += "0";
        text += std::to_string(code);
    }
    if (text.find('.') == std::string::npos) text += ".";
    while (text.size() - text.find('.') <= 5) text += "0";
    return text;
}

TEST(Frequency, reading_agrees_with_whole_numbers_on_random_records) {
    SeededRandom random;
    ImageStore store;
    for (int round = 0; round < 30000; ++round) {
        Record record{random.byte(), random.byte(), random.byte(), random.byte()};
        if (random.between(0, 9) > 2) {  // mostly decimal digits
            for (std::size_t i = 0; i < 3; ++i) {
                record[i] = random.between(0, i == 0 ? 15 : 9) * 16 + random.between(0, 9);
            }
        }
        if (random.between(0, 3) == 0) record[2] = record[2] / 16 * 16;
        if (random.between(0, 3) == 0) record[2] = 0;
        const int index = random.between(0, 639);
        store.put_record(index, record);
        ASSERT_EQ(store->GetMemFreq(index / 64, index % 64), plain_reading(record))
            << testing::PrintToString(record);
    }
}

// The plain formulation: the number as megahertz and hundred thousandths of one.
Record plain_record(int megahertz, int decimals, int flags) {
    int first = megahertz / 100;
    int last_two = megahertz % 100;
    const int kilohertz = decimals / 100;
    if (megahertz > 999) {
        while (first > 99) first /= 10;
    }
    const int digit[] = {kilohertz / 100, kilohertz / 10 % 10, kilohertz % 10};
    const int code = decimals % 100 % 25 == 0 ? decimals % 100 / 25 : 0;
    const int bits[] = {0, 0x20, 0x40, 0x80};
    Record record{first * 16 + last_two / 10, last_two % 10 * 16 + digit[0],
                  digit[1] * 16 + digit[2], (flags & 0x1F) | bits[code]};
    if (first > 15) {  // the hundreds fill the first byte, and the first decimal falls out
        record[0] = first;
        record[1] = last_two / 10 * 16 + last_two % 10;
    }
    return record;
}

TEST(Frequency, storing_agrees_with_whole_numbers_on_random_texts) {
    SeededRandom random;
    for (int round = 0; round < 10000; ++round) {
        const int highest[] = {9, 99, 999, 1599, 9999, 999999};
        const int megahertz = random.between(0, highest[random.between(0, 5)]);
        int decimals = random.between(0, 99999);
        if (random.coin()) decimals = decimals / 100 * 100 + 25 * random.between(0, 3);
        if (random.between(0, 5) == 0) decimals = 0;
        const int flags = random.byte();
        const std::string five = std::to_string(100000 + decimals).substr(1);
        const std::string text = random.text("0", 3) + std::to_string(megahertz) + "." + five +
                                 random.text("0123456789", 3) + random.text("x ,-e", 1);
        ASSERT_EQ(stored(text, flags).record, plain_record(megahertz, decimals, flags))
            << '"' << text << '"';
    }
}

// It holds where the kilohertz do not end in 0, or there is no fraction.
TEST(Frequency, what_was_stored_is_read_again) {
    SeededRandom random;
    ImageStore store;
    for (int round = 0; round < 5000; ++round) {
        const int kilohertz = random.between(0, 999);
        const int fraction = kilohertz % 10 == 0 ? 0 : 25 * random.between(0, 3);
        const std::string text = std::to_string(random.between(0, 1599)) + "." +
                                 std::to_string(100000 + kilohertz * 100 + fraction).substr(1);
        const int index = random.between(0, 639);
        std::string Freq = text;
        store->SetMemFreq(index / 64, index % 64, Freq);
        ASSERT_EQ(store->GetMemFreq(index / 64, index % 64), text);
    }
}

}  // namespace
}  // namespace memwright
