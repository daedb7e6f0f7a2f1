// Random images through the table and back, against a formulation in plain numbers. Frequencies
// are counted in tens of hertz here, so that no text takes part.

#include <array>
#include <cstdint>
#include <optional>

#include "fakes/seeded_random.h"
#include "table/table_test.h"

namespace memwright {
namespace {

using Record = std::array<std::uint8_t, 4>;

constexpr std::int64_t kMegahertz = 100000;

int fraction_code(std::uint8_t flags) {
    switch (flags & 0xE0) {
        case 0x20:
            return 25;
        case 0x40:
            return 50;
        case 0x80:
            return 75;
        default:
            return 0;
    }
}

// The frequency of a record without its fraction code: digits count up to the first that is none.
std::int64_t whole_kilohertz(const Record& record) {
    const std::array<int, 5> digits = {record[0] & 0x0F, record[1] >> 4, record[1] & 0x0F,
                                       record[2] >> 4, record[2] & 0x0F};
    std::int64_t megahertz = record[0] >> 4;
    std::int64_t kilohertz = 0;
    std::int64_t weight = 100;
    for (std::size_t i = 0; i < digits.size() && digits[i] <= 9; ++i) {
        if (i < 2) {
            megahertz = megahertz * 10 + digits[i];
        } else {
            kilohertz += digits[i] * weight;
            weight /= 10;
        }
    }
    return megahertz * kMegahertz + kilohertz * 100;
}

// What the table shows of a record: its frequency with the fraction code at the place where it is
// put, which is behind the last digit that is not a trailing zero.
std::int64_t shown_frequency(const Record& record) {
    if (record[0] == 0xFF && record[1] == 0xFF && record[2] == 0xFF) return 0;
    std::int64_t frequency = whole_kilohertz(record);
    const bool has_code =
        (record[3] & 0xE0) == 0x20 || (record[3] & 0xE0) == 0x40 || (record[3] & 0xE0) == 0x80;
    if (!has_code) return frequency;
    const int code = fraction_code(record[3]);
    const std::int64_t decimals = frequency % kMegahertz;
    if (decimals != 0) {
        // One, two or three decimals, then the code.
        const std::int64_t place = decimals % 10000 == 0 ? 100 : decimals % 1000 == 0 ? 10 : 1;
        return frequency + code * place;
    }
    std::int64_t megahertz = frequency / kMegahertz;
    if (megahertz != 0) {
        while (megahertz < 100) megahertz *= 10;
    }
    return (megahertz * 100 + code) * kMegahertz;
}

std::uint8_t packed(std::int64_t two_digits) {
    return static_cast<std::uint8_t>(two_digits / 10 * 16 + two_digits % 10);
}

// The record that stands for a shown frequency, and for the mode and preference of the old flags.
Record encoded(std::int64_t frequency, std::uint8_t old_flags) {
    const std::int64_t megahertz = frequency / kMegahertz;
    const std::int64_t kilohertz = frequency % kMegahertz / 100;
    std::int64_t hundreds = megahertz;
    while (megahertz > 999 ? hundreds > 99 : hundreds > 9) hundreds /= 10;
    if (megahertz < 100) hundreds = 0;
    const std::int64_t rest = megahertz % 100;

    Record record{};
    if (hundreds <= 15) {
        record[0] = static_cast<std::uint8_t>(hundreds * 16 + rest / 10);
        record[1] = static_cast<std::uint8_t>(rest % 10 * 16 + kilohertz / 100);
    } else {
        // The hundreds take two digits; the bytes take the first four and the last two of seven.
        record[0] = static_cast<std::uint8_t>(hundreds);
        record[1] = packed(rest);
    }
    record[2] = packed(kilohertz % 100);

    const std::int64_t fraction = frequency % 100;
    const int bits = fraction == 25 ? 0x20 : fraction == 50 ? 0x40 : fraction == 75 ? 0x80 : 0;
    record[3] = static_cast<std::uint8_t>((old_flags & 0x07) | bits);
    return record;
}

// What is left of a memory after the way into the table and back; none if it is an empty one.
std::optional<Record> after_the_table(const Record& record) {
    const std::int64_t frequency = shown_frequency(record);
    if (frequency == 0) return std::nullopt;
    return encoded(frequency, record[3]);
}

class RandomImages : public TableTest {
  protected:
    Record random_record() {
        const auto digit = [&] { return random.between(0, 9); };
        switch (random.between(0, 4)) {
            case 0:
                return {random.byte(), random.byte(), random.byte(), random.byte()};
            case 1:
                return {0xFF, 0xFF, 0xFF, random.byte()};
            case 2:
                return {0, 0, 0, random.byte()};
            case 3:  // with zeros at the end
                return {static_cast<std::uint8_t>(digit() * 16 + digit()),
                        static_cast<std::uint8_t>(digit() * 16 + digit() * random.between(0, 1)),
                        static_cast<std::uint8_t>(digit() * 16 * random.between(0, 1)),
                        random.byte()};
            default:
                return {static_cast<std::uint8_t>(random.between(0, 15) * 16 + digit()),
                        static_cast<std::uint8_t>(digit() * 16 + digit()),
                        static_cast<std::uint8_t>(digit() * 16 + digit()), random.byte()};
        }
    }

    MemoryImage random_image() {
        MemoryImage image;
        for (int i = 0; i < layout::kMemories; ++i) {
            const Record record = random_record();
            for (int b = 0; b < 4; ++b) image.set(4 * i + b, record[static_cast<std::size_t>(b)]);
        }
        for (int i = layout::kLabels; i < layout::kImageSize; ++i) {
            image.set(i, random.coin() ? random.byte() : 0x20);
        }
        return image;
    }

    static Record record_of(const MemoryImage& image, int index) {
        return {image.get(4 * index), image.get(4 * index + 1), image.get(4 * index + 2),
                image.get(4 * index + 3)};
    }

    SeededRandom random;
};

TEST_F(RandomImages, come_back_from_the_table_as_the_fields_that_it_shows) {
    int channels = 0;
    for (int round = 0; round < 40; ++round) {
        const MemoryImage before = random_image();
        MemoryImage wanted = before;
        for (int i = 0; i < layout::kMemories; ++i) {
            const auto record = after_the_table(record_of(before, i));
            if (record) ++channels;
            const Record bytes = record.value_or(Record{0xFF, 0xFF, 0xFF, 0xFF});
            for (int b = 0; b < 4; ++b) wanted.set(4 * i + b, bytes[static_cast<std::size_t>(b)]);
            for (int b = 0; !record && b < 6; ++b) wanted.set(layout::kLabels + 6 * i + b, 0x20);
        }
        store.set_image(before);
        table.ParseVR120Data();
        table.SaveVR120Data();
        for (int i = 0; i < layout::kMemories; ++i) {
            ASSERT_EQ(record_of(store.MemoryImage, i), record_of(wanted, i))
                << "row " << i + 1 << ": " << grid.TextMatrix(i + 1, columns::kFreq);
        }
        ASSERT_EQ(store.MemoryImage, wanted);
    }
    EXPECT_GT(channels, 1000) << "hardly a channel among them";
}

TEST_F(RandomImages, are_unchanged_by_a_second_save) {
    for (int round = 0; round < 10; ++round) {
        store.set_image(random_image());
        table.ParseVR120Data();
        table.SaveVR120Data();
        const MemoryImage once = store.MemoryImage;
        table.SetChangeCheck();
        EXPECT_FALSE(table.IsDataChanged());
        EXPECT_EQ(store.MemoryImage, once);
    }
}

// Whole channels as the radio's user enters them: nothing is lost on any number of ways.
TEST_F(RandomImages, of_plain_channels_come_back_byte_for_byte) {
    for (int i = 0; i < layout::kMemories; ++i) {
        const auto digit = [&] { return random.between(0, 9); };
        const int last = random.between(1, 9);  // no trailing zero before the fraction code
        const Record record = {
            static_cast<std::uint8_t>(random.between(0, 12) * 16 + digit()),
            static_cast<std::uint8_t>(digit() * 16 + digit()),
            static_cast<std::uint8_t>(digit() * 16 + last),
            static_cast<std::uint8_t>((0x80 >> random.between(0, 2)) | random.between(0, 7))};
        for (int b = 0; b < 4; ++b) {
            store.set_byte(4 * i + b, record[static_cast<std::size_t>(b)]);
        }
    }
    for (int i = layout::kLabels; i < layout::kImageSize; ++i) {
        store.set_byte(i, random.byte());
    }
    const MemoryImage before = store.MemoryImage;
    for (int round = 0; round < 3; ++round) {
        table.ParseVR120Data();
        table.SaveVR120Data();
        ASSERT_EQ(store.MemoryImage, before);
    }
}

}  // namespace
}  // namespace memwright
