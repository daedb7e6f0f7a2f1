// The dialog of the search limits: what it shows of an image and what it makes of one.

#include "app/frm_limit_search.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>

#include "app/radio_image.h"

namespace memwright {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Record = std::array<int, 4>;
using Texts = std::vector<std::string>;

constexpr int kLimits = 18;
constexpr int offset_of(int limit) {
    return limit < 16 ? 6912 + 4 * limit : 7152 + 4 * (limit - 16);
}
constexpr int kFraction25 = 0x20;
constexpr int kFraction50 = 0x40;
constexpr int kFraction75 = 0x80;
const Texts kModes = {"AUTO", "NFM", "WFM", "AM"};

// The plain formulation, in nibbles and whole numbers, of what the dialog makes of a record that is
// neither edited nor left.
Record accepted(const Record& record) {
    const int others = record[3] & 0x1F;
    if (record[0] == 0xFF && record[1] == 0xFF && record[2] == 0xFF) return {0, 0, 0, others};
    std::array<int, 6> nibbles{};
    for (std::size_t i = 0; i < 6; ++i) {
        nibbles[i] = i % 2 == 0 ? record[i / 2] >> 4 : record[i / 2] & 0xF;
    }
    // A nibble that is no decimal digit ends the reading of the number that it stands in.
    int megahertz = nibbles[0];
    for (std::size_t i = 1; i < 3 && nibbles[i] < 10; ++i) megahertz = megahertz * 10 + nibbles[i];
    std::array<int, 3> kilohertz{};
    std::size_t read = 0;
    for (; read < 3 && nibbles[3 + read] < 10; ++read) kilohertz[read] = nibbles[3 + read];
    const int code = record[3] & 0xE0;
    const bool known = code == kFraction25 || code == kFraction50 || code == kFraction75;
    const int fraction = read == 3 && known ? code : 0;
    return {megahertz / 100 << 4 | megahertz / 10 % 10, megahertz % 10 << 4 | kilohertz[0],
            kilohertz[1] << 4 | kilohertz[2], others | fraction};
}

class SearchLimits : public ::testing::Test {
  protected:
    Record record(int limit) const {
        Record bytes{};
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[i] = radio_.byte(offset_of(limit) + static_cast<int>(i));
        }
        return bytes;
    }
    void put(int limit, const Record& bytes) {
        radio_.put(offset_of(limit), {bytes[0], bytes[1], bytes[2], bytes[3]});
    }

    // A record whose digits are all decimal and whose fraction code is one.
    static Record valid_record(SeededRandom& random) {
        const int fractions[] = {0, kFraction25, kFraction50, kFraction75};
        return {random.between(0, 15) << 4 | random.between(0, 9),
                random.between(0, 9) << 4 | random.between(0, 9),
                random.between(0, 9) << 4 | random.between(0, 9),
                fractions[random.between(0, 3)] | random.between(0, 0x1F)};
    }

    static std::size_t index(int limit) { return static_cast<std::size_t>(limit); }

    // Opens the dialog, works in it, and presses one of its buttons.
    void in_dialog(const std::function<void(frmLimitSearch&)>& work,
                   CommandButton frmLimitSearch::*button = &frmLimitSearch::Command1) {
        frmLimitSearch form(radio_.store());
        int closes = 0;
        const Connection close = form.closed.connect([&] { ++closes; });
        work(form);
        EXPECT_EQ(closes, 0);
        (form.*button).clicked();
        EXPECT_EQ(closes, 1);
    }
    static void change_nothing(frmLimitSearch& /*form*/) {}

    static void type(frmLimitSearch& form, int limit, const std::string& text) {
        form.Text1[index(limit)].text = text;
    }
    static std::string left_with(frmLimitSearch& form, int limit, const std::string& text) {
        type(form, limit, text);
        form.Text1[index(limit)].focus_lost();
        return form.Text1[index(limit)].text;
    }

    RadioImage radio_;
};

TEST_F(SearchLimits, has_a_box_and_a_list_for_each_of_the_eighteen) {
    const frmLimitSearch form(radio_.store());
    ASSERT_EQ(form.Text1.size(), 18U);
    ASSERT_EQ(form.Combo1.size(), 18U);
    for (int limit = 0; limit < kLimits; ++limit) {
        const std::string element = "(" + std::to_string(limit) + ")";
        EXPECT_EQ(form.Text1[index(limit)].name, "Text1" + element);
        EXPECT_EQ(form.Combo1[index(limit)].name, "Combo1" + element);
        EXPECT_EQ(form.Combo1[index(limit)].items.get(), kModes) << limit;
    }
}

TEST_F(SearchLimits, rows_and_buttons_have_their_captions) {
    frmLimitSearch form(radio_.store());
    Texts names;
    Texts captions;
    for (const Label* label : form.row_labels()) {
        names.push_back(label->name);
        std::string plain = label->caption;
        std::erase(plain, '&');
        captions.push_back(plain);
    }
    EXPECT_THAT(names, ElementsAre("Label1", "Label2", "Label3", "Label4", "Label5", "Label6",
                                   "Label7", "Label8", "Label9"));
    EXPECT_THAT(captions,
                ElementsAre("L00", "L01", "L02", "L03", "L04", "L05", "L06", "L07", "L--"));
    EXPECT_EQ(form.Command1.caption.get(), "&OK");
    EXPECT_EQ(form.Command2.caption.get(), "&Cancel");
}

TEST_F(SearchLimits, every_box_and_list_shows_its_own_record) {
    for (int limit = 0; limit < kLimits; ++limit) {
        put(limit, {0x10 + limit / 10, limit % 10 << 4, 0x00, limit % 4});
    }
    const frmLimitSearch form(radio_.store());
    for (int limit = 0; limit < kLimits; ++limit) {
        EXPECT_EQ(form.Text1[index(limit)].text.get(), std::to_string(100 + limit) + ".00000");
        EXPECT_EQ(form.Combo1[index(limit)].text.get(), kModes[index(limit % 4)]) << limit;
    }
}

TEST_F(SearchLimits, an_empty_marker_shows_nothing_and_is_lost_when_accepted) {
    put(5, {0xFF, 0xFF, 0xFF, 0x00});
    in_dialog([&](frmLimitSearch& form) {
        EXPECT_EQ(form.Text1[5].text.get(), "");
        EXPECT_EQ(form.Combo1[5].text.get(), "AUTO");
    });
    EXPECT_EQ(record(5), (Record{0x00, 0x00, 0x00, 0x00}));
    put(5, {0xFF, 0xFF, 0xFF, 0xFF});
    in_dialog(change_nothing);
    EXPECT_EQ(record(5), (Record{0x00, 0x00, 0x00, 0x1F}));
}

TEST_F(SearchLimits, leaving_a_box_corrects_its_text) {
    frmLimitSearch form(radio_.store());
    for (const int limit : {0, 9, 15, 16, 17}) {
        EXPECT_EQ(left_with(form, limit, "2000"), "1299.00000") << limit;
        EXPECT_EQ(left_with(form, limit, "339.5"), "340.00000") << limit;
        EXPECT_EQ(left_with(form, limit, ""), "0.00000") << limit;
        EXPECT_EQ(left_with(form, limit, "145.51233"), "145.51200") << limit;
        EXPECT_EQ(left_with(form, limit, "145.5125"), "145.51250") << limit;
        EXPECT_EQ(left_with(form, limit, "abc"), "0.00000") << limit;
    }
}

TEST_F(SearchLimits, leaving_a_box_touches_neither_another_box_nor_the_image) {
    SeededRandom random;
    radio_.randomise(random, layout::kRadioSettings);
    const MemoryImage before = radio_.image();
    frmLimitSearch form(radio_.store());
    Texts shown;
    for (const TextBox& box : form.Text1) shown.push_back(box.text);
    shown[7] = "1299.00000";
    left_with(form, 7, "2000");
    Texts now;
    for (const TextBox& box : form.Text1) now.push_back(box.text);
    EXPECT_EQ(now, shown);
    EXPECT_THAT(radio_.changes_from(before), IsEmpty());
}

TEST_F(SearchLimits, a_text_that_was_not_left_is_written_as_the_number_that_it_starts_with) {
    in_dialog([](frmLimitSearch& form) {
        type(form, 0, "339.5");
        type(form, 1, "145.5125 MHz");
    });
    EXPECT_EQ(record(0), (Record{0x33, 0x95, 0x00, 0x00})) << "nothing moved it out of the range";
    EXPECT_EQ(record(1), (Record{0x14, 0x55, 0x12, kFraction50}));
}

TEST_F(SearchLimits, a_changed_frequency_and_mode_are_stored_in_their_record_alone) {
    SeededRandom random;
    for (int round = 0; round < 50; ++round) {
        radio_.randomise(random, layout::kRadioSettings);
        for (int limit = 0; limit < kLimits; ++limit) put(limit, valid_record(random));
        const int limit = random.between(0, kLimits - 1);
        const int mode = random.between(0, 3);
        MemoryImage expected = radio_.image();
        const int flags = (record(limit)[3] & 0x1C) | kFraction75 | mode;
        const Record wanted{0x43, 0x31, 0x12, flags};
        for (int i = 0; i < 4; ++i) {
            expected.set(offset_of(limit) + i, static_cast<std::uint8_t>(wanted[index(i)]));
        }
        in_dialog([&](frmLimitSearch& form) {
            EXPECT_EQ(left_with(form, limit, "433.11275"), "433.11275");
            form.Combo1[index(limit)].text = kModes[index(mode)];
        });
        ASSERT_THAT(radio_.changes_from(expected), IsEmpty()) << limit;
    }
}

TEST_F(SearchLimits, every_mode_of_every_list_changes_two_bits_alone) {
    SeededRandom random;
    for (int round = 0; round < 10; ++round) {
        for (int limit = 0; limit < kLimits; ++limit) {
            for (int mode = 0; mode < 4; ++mode) {
                radio_.randomise(random, layout::kRadioSettings);
                for (int other = 0; other < kLimits; ++other) put(other, valid_record(random));
                MemoryImage expected = radio_.image();
                expected.set(offset_of(limit) + 3,
                             static_cast<std::uint8_t>((record(limit)[3] & 0xFC) | mode));
                in_dialog([&](frmLimitSearch& form) {
                    form.Combo1[index(limit)].text = kModes[index(mode)];
                });
                ASSERT_THAT(radio_.changes_from(expected), IsEmpty()) << limit << " " << mode;
            }
        }
    }
}

TEST_F(SearchLimits, OK_with_nothing_changed_leaves_every_byte_of_ten_thousand_valid_images) {
    SeededRandom random;
    for (int round = 0; round < 10000; ++round) {
        radio_.randomise(random, round % 100 == 0 ? 0 : layout::kRadioSettings);
        for (int limit = 0; limit < kLimits; ++limit) put(limit, valid_record(random));
        const MemoryImage before = radio_.image();
        in_dialog(change_nothing);
        ASSERT_TRUE(radio_.image() == before)
            << testing::PrintToString(radio_.changes_from(before));
    }
}

// Random bytes, among them nibbles that are no decimal digits, patterns that are no fraction code,
// and empty markers.
TEST_F(SearchLimits, OK_with_nothing_changed_makes_of_any_record_what_its_reading_says) {
    SeededRandom random;
    for (int round = 0; round < 10000; ++round) {
        radio_.randomise(random, layout::kRadioSettings);
        MemoryImage expected = radio_.image();
        for (int limit = 0; limit < kLimits; ++limit) {
            Record bytes = record(limit);
            if (random.between(0, 2) == 0) bytes = valid_record(random);
            if (random.between(0, 2) == 0) bytes[index(random.between(0, 2))] = random.byte();
            if (random.between(0, 19) == 0) bytes = {0xFF, 0xFF, 0xFF, random.byte()};
            put(limit, bytes);
            const Record after = accepted(bytes);
            for (int i = 0; i < 4; ++i) {
                expected.set(offset_of(limit) + i, static_cast<std::uint8_t>(after[index(i)]));
            }
        }
        in_dialog(change_nothing);
        ASSERT_TRUE(radio_.image() == expected)
            << testing::PrintToString(radio_.changes_from(expected));
    }
}

TEST_F(SearchLimits, bits_2_3_and_4_survive_any_edit) {
    SeededRandom random;
    for (int round = 0; round < 500; ++round) {
        radio_.randomise(random, layout::kRadioSettings);
        std::array<Record, kLimits> before{};
        for (int limit = 0; limit < kLimits; ++limit) before[index(limit)] = record(limit);
        in_dialog([&](frmLimitSearch& form) {
            for (int limit = 0; limit < kLimits; ++limit) {
                const std::string typed = random.text("0123456789.xA -", 12);
                if (random.coin()) left_with(form, limit, typed);
                form.Combo1[index(limit)].text = kModes[index(random.between(0, 3))];
            }
        });
        for (int limit = 0; limit < kLimits; ++limit) {
            ASSERT_EQ(record(limit)[3] & 0x1C, before[index(limit)][3] & 0x1C) << limit;
        }
    }
}

TEST_F(SearchLimits, Cancel_leaves_every_byte_whatever_was_changed) {
    SeededRandom random;
    for (int round = 0; round < 200; ++round) {
        radio_.randomise(random);
        put(random.between(0, kLimits - 1), {0xFF, 0xFF, 0xFF, 0xFF});
        const MemoryImage before = radio_.image();
        in_dialog(
            [&](frmLimitSearch& form) {
                for (int limit = 0; limit < kLimits; ++limit) {
                    left_with(form, limit, random.text("0123456789.", 9));
                    form.Combo1[index(limit)].text = kModes[index(random.between(0, 3))];
                }
            },
            &frmLimitSearch::Command2);
        ASSERT_THAT(radio_.changes_from(before), IsEmpty());
    }
}

TEST_F(SearchLimits, the_bytes_between_the_two_groups_are_never_touched) {
    SeededRandom random;
    radio_.randomise(random);
    const MemoryImage before = radio_.image();
    in_dialog([](frmLimitSearch& form) {
        for (int limit = 0; limit < kLimits; ++limit) type(form, limit, "0.00000");
    });
    for (int offset = 0; offset < layout::kImageSize; ++offset) {
        const bool of_a_limit =
            (offset >= 6912 && offset <= 6975) || (offset >= 7152 && offset <= 7159);
        if (of_a_limit) continue;
        ASSERT_EQ(radio_.byte(offset), before.get(offset)) << offset;
    }
}

}  // namespace
}  // namespace memwright
