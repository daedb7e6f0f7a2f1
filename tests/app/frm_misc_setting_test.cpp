// The dialog of the set-mode settings: what it shows of an image and what it makes of one.

#include "app/frm_misc_setting.h"

#include <gmock/gmock.h>

#include <functional>

#include "app/setting_rows.h"
#include "base/error.h"

namespace memwright {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

class SetMode : public ::testing::Test {
  protected:
    void zero() { radio_.store().set_image({}); }

    void make_valid(SeededRandom& random, int from = 0) {
        memwright::make_valid(radio_, random, from);
    }

    // Opens the dialog, works in it, and presses one of its buttons.
    void in_dialog(const std::function<void(frmMiscSetting&)>& work,
                   CommandButton frmMiscSetting::*button = &frmMiscSetting::Command1) {
        frmMiscSetting form(radio_.store());
        int closes = 0;
        const Connection close = form.closed.connect([&] { ++closes; });
        work(form);
        EXPECT_EQ(closes, 0);
        (form.*button).clicked();
        EXPECT_EQ(closes, 1);
    }
    static void change_nothing(frmMiscSetting& /*form*/) {}

    // What `work` and OK change in the image. The dialog's own reading has no part in it.
    Texts changes(const std::function<void(frmMiscSetting&)>& work) {
        const MemoryImage before = radio_.image();
        in_dialog(work);
        return radio_.changes_from(before);
    }
    Texts changes_to(const std::function<void()>& by_hand) {
        const MemoryImage before = radio_.image();
        by_hand();
        const Texts expected = radio_.changes_from(before);
        radio_.store().set_image(before);
        return expected;
    }
    void put(const SettingRow& row, int position) {
        if (row.bit == kWholeByte) {
            radio_.put(row.offset, position);
        } else {
            radio_.put_bit(row.offset, row.bit, position);
        }
    }

    static ComboBox& list_of(const frmMiscSetting& form, const SettingRow& row) {
        return form.settings().at(static_cast<std::size_t>(&row - setting_rows().data())).list;
    }
    static void select_bank(frmMiscSetting& form, bool bank) {
        form.Option1.selected = bank;
        form.Option2.selected = !bank;
    }

    // The text of the error with which the opening ends; "" if it does not.
    std::string opening_error() {
        try {
            const frmMiscSetting form(radio_.store());
        } catch (const InputError& error) {
            return error.what();
        }
        return "";
    }

    RadioImage radio_;
};

TEST_F(SetMode, an_image_of_zeros_shows_the_first_entry_of_each_list) {
    const frmMiscSetting form(radio_.store());
    Texts shown;
    for (const SettingRow& row : setting_rows()) shown.push_back(list_of(form, row).text);
    EXPECT_THAT(shown, ElementsAre("1 Sec", "Off", "5 MHz", "OFF", "External", "External", "ON",
                                   "OFF", "Normal", "AUTO", "Single", "OFF", "10 KHz", "VFO"));
    EXPECT_FALSE(form.Option1.selected);
    EXPECT_TRUE(form.Option2.selected);
    for (const CheckBox& band : form.Check1) EXPECT_FALSE(band.checked) << band.name;
}

TEST_F(SetMode, every_list_has_its_entries_in_order_and_its_name) {
    const frmMiscSetting form(radio_.store());
    ASSERT_EQ(form.settings().size(), setting_rows().size());
    for (std::size_t i = 0; i < setting_rows().size(); ++i) {
        const SettingRow& row = setting_rows()[i];
        const auto& setting = form.settings()[i];
        EXPECT_EQ(setting.list.name, row.name);
        EXPECT_EQ(setting.list.items.get(), row.entries) << row.name;
        EXPECT_EQ(setting.name(), row.caption);
    }
    EXPECT_EQ(&form.settings().front().list, &form.Combo1);
    EXPECT_EQ(&form.settings().back().list, &form.Combo14);
}

TEST_F(SetMode, buttons_and_boxes_have_their_captions) {
    const frmMiscSetting form(radio_.store());
    EXPECT_EQ(form.Option1.caption.get(), "&Bank");
    EXPECT_EQ(form.Option2.caption.get(), "&All");
    EXPECT_EQ(form.Command1.caption.get(), "&OK");
    EXPECT_EQ(form.Command2.caption.get(), "&Cancel");
    ASSERT_EQ(form.Check1.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(form.Check1[i].name, "Check1(" + std::to_string(i) + ")");
        EXPECT_EQ(form.Check1[i].caption.get(), "&" + std::to_string(i));
    }
}

TEST_F(SetMode, every_stored_value_shows_its_entry_whatever_stands_around_it) {
    SeededRandom random;
    for (const SettingRow& row : setting_rows()) {
        for (std::size_t position = 0; position < row.entries.size(); ++position) {
            make_valid(random);
            put(row, static_cast<int>(position));
            const frmMiscSetting form(radio_.store());
            EXPECT_EQ(list_of(form, row).text.get(), row.entries[position]) << row.caption;
        }
    }
}

TEST_F(SetMode, every_linked_band_shows_its_bit_alone) {
    for (int band = 0; band < 10; ++band) {
        zero();
        radio_.put_bit(linked_band_bit(band).offset, linked_band_bit(band).bit, 1);
        const frmMiscSetting form(radio_.store());
        for (int other = 0; other < 10; ++other) {
            EXPECT_EQ(form.Check1[static_cast<std::size_t>(other)].checked.get(), other == band)
                << band << " " << other;
        }
    }
    zero();
    radio_.put(6689, 0xFC);  // bits that no box has
    const frmMiscSetting form(radio_.store());
    for (const CheckBox& band : form.Check1) EXPECT_FALSE(band.checked) << band.name;
}

TEST_F(SetMode, the_scan_mode_is_Bank_for_a_set_bit_and_All_for_a_clear_one) {
    radio_.put_bit(kScanModeBit.offset, kScanModeBit.bit, 1);
    const frmMiscSetting bank(radio_.store());
    EXPECT_TRUE(bank.Option1.selected);
    EXPECT_FALSE(bank.Option2.selected);
    radio_.put(kScanModeBit.offset, 0xF7);
    const frmMiscSetting all(radio_.store());
    EXPECT_FALSE(all.Option1.selected);
    EXPECT_TRUE(all.Option2.selected);
}

TEST_F(SetMode, with_the_shared_bit_set_it_opens_with_Bank_and_key_beep_OFF) {
    radio_.put(6676, 0x08);
    const frmMiscSetting form(radio_.store());
    EXPECT_TRUE(form.Option1.selected);
    EXPECT_EQ(form.Combo7.text.get(), "OFF");
}

TEST_F(SetMode, of_the_shared_bit_the_key_beep_remains) {
    for (const bool bank : {false, true}) {
        for (const int beep : {0, 1}) {
            for (const int before : {0x00, 0xFF}) {
                radio_.put(6676, before);
                in_dialog([&](frmMiscSetting& form) {
                    select_bank(form, bank);
                    form.Combo7.text = beep == 1 ? "OFF" : "ON";
                });
                EXPECT_EQ(radio_.byte(6676), before == 0 ? beep << 3 : 0xF7 | beep << 3)
                    << bank << beep;
            }
        }
    }
}

TEST_F(SetMode, OK_with_nothing_changed_leaves_every_byte_of_ten_thousand_images) {
    SeededRandom random;
    for (int round = 0; round < 10000; ++round) {
        make_valid(random, round % 100 == 0 ? 0 : layout::kRadioSettings);
        ASSERT_THAT(changes(change_nothing), IsEmpty()) << round;
    }
}

TEST_F(SetMode, every_entry_of_every_list_changes_its_own_bits_alone) {
    SeededRandom random;
    for (int round = 0; round < 40; ++round) {
        for (const SettingRow& row : setting_rows()) {
            for (std::size_t position = 0; position < row.entries.size(); ++position) {
                make_valid(random, layout::kRadioSettings);
                const Texts expected = changes_to([&] { put(row, static_cast<int>(position)); });
                ASSERT_EQ(changes([&](frmMiscSetting& form) {
                              list_of(form, row).text = row.entries[position];
                          }),
                          expected)
                    << row.caption << " " << position;
            }
        }
    }
}

TEST_F(SetMode, every_box_changes_its_own_bit_alone) {
    SeededRandom random;
    for (int round = 0; round < 40; ++round) {
        for (int band = 0; band < 10; ++band) {
            for (const bool on : {false, true}) {
                make_valid(random, layout::kRadioSettings);
                const auto [offset, bit] = linked_band_bit(band);
                const Texts expected = changes_to([&] { radio_.put_bit(offset, bit, on ? 1 : 0); });
                ASSERT_EQ(changes([&](frmMiscSetting& form) {
                              form.Check1[static_cast<std::size_t>(band)].checked = on;
                          }),
                          expected)
                    << band << on;
            }
        }
    }
}

TEST_F(SetMode, the_option_buttons_alone_change_nothing) {
    SeededRandom random;
    for (int round = 0; round < 200; ++round) {
        make_valid(random, layout::kRadioSettings);
        const bool bank = random.coin();
        ASSERT_THAT(changes([&](frmMiscSetting& form) { select_bank(form, bank); }), IsEmpty());
    }
}

TEST_F(SetMode, everything_at_once_arrives_where_it_belongs) {
    SeededRandom random;
    for (int round = 0; round < 2000; ++round) {
        make_valid(random, layout::kRadioSettings);
        std::vector<std::size_t> positions;
        for (const SettingRow& row : setting_rows()) {
            positions.push_back(static_cast<std::size_t>(
                random.between(0, static_cast<int>(row.entries.size()) - 1)));
        }
        const int bands = random.between(0, 0x3FF);
        const bool bank = random.coin();
        const Texts expected = changes_to([&] {
            for (std::size_t i = 0; i < positions.size(); ++i) {
                put(setting_rows()[i], static_cast<int>(positions[i]));
            }
            radio_.put(6688, bands & 0xFF);
            radio_.put(6689, (radio_.byte(6689) & 0xFC) | bands >> 8);
        });
        ASSERT_EQ(changes([&](frmMiscSetting& form) {
                      for (std::size_t i = 0; i < positions.size(); ++i) {
                          const SettingRow& row = setting_rows()[i];
                          list_of(form, row).text = row.entries[positions[i]];
                      }
                      for (std::size_t i = 0; i < 10; ++i) form.Check1[i].checked = bands >> i & 1;
                      select_bank(form, bank);
                  }),
                  expected);
    }
}

TEST_F(SetMode, Cancel_leaves_every_byte_whatever_was_changed) {
    SeededRandom random;
    for (int round = 0; round < 200; ++round) {
        make_valid(random);
        const MemoryImage before = radio_.image();
        in_dialog(
            [&](frmMiscSetting& form) {
                for (const SettingRow& row : setting_rows()) {
                    list_of(form, row).text = row.entries[static_cast<std::size_t>(
                        random.between(0, static_cast<int>(row.entries.size()) - 1))];
                }
                for (CheckBox& band : form.Check1) band.checked = !band.checked;
                select_bank(form, random.coin());
            },
            &frmMiscSetting::Command2);
        ASSERT_THAT(radio_.changes_from(before), IsEmpty());
    }
}

TEST_F(SetMode, opening_changes_nothing) {
    SeededRandom random;
    make_valid(random);
    const MemoryImage before = radio_.image();
    { const frmMiscSetting form(radio_.store()); }
    EXPECT_THAT(radio_.changes_from(before), IsEmpty());
}

TEST_F(SetMode, a_stored_byte_past_the_end_of_its_list_ends_the_opening) {
    SeededRandom random;
    for (const SettingRow& row : setting_rows()) {
        if (row.bit != kWholeByte) continue;
        for (int value = static_cast<int>(row.entries.size()); value < 256; ++value) {
            make_valid(random, layout::kRadioSettings);
            radio_.put(row.offset, value);
            const MemoryImage before = radio_.image();
            EXPECT_THAT(opening_error(),
                        AllOf(HasSubstr('"' + std::string(row.caption) + '"'),
                              HasSubstr("offset " + std::to_string(row.offset) + " "),
                              HasSubstr(" is " + std::to_string(value) + ",")))
                << row.caption << " " << value;
            EXPECT_THAT(radio_.changes_from(before), IsEmpty());
        }
    }
}

TEST_F(SetMode, the_error_says_what_the_choices_are_and_what_to_do) {
    radio_.put(6669, 12);
    EXPECT_EQ(opening_error(),
              "The settings cannot be shown: \"Scan Resume\", at offset 6669 of the memory image, "
              "is 12, and its choices are 0 (1 Sec) to 11 (12 Sec).\nNothing was changed. Choose "
              "\"Scan Resume\" on the radio and read it again, or open another image.");
}

TEST_F(SetMode, of_several_bytes_without_an_entry_the_first_list_is_named) {
    radio_.put(6662, 5);    // Fast Step, the last of them
    radio_.put(6666, 255);  // Lamp
    EXPECT_THAT(opening_error(), HasSubstr("\"Lamp\""));
    radio_.put(6671, 4);
    EXPECT_THAT(opening_error(), HasSubstr("\"Search Width\""));
    radio_.put(6667, 6);
    EXPECT_THAT(opening_error(), HasSubstr("\"Battery Save\""));
    radio_.put(6669, 12);
    EXPECT_THAT(opening_error(), HasSubstr("\"Scan Resume\""));
}

TEST_F(SetMode, bytes_of_which_a_list_has_but_one_bit_are_never_refused) {
    for (const int offset : {6673, 6676, 6677, 6688, 6689}) {
        for (int value = 0; value < 256; ++value) {
            zero();
            radio_.put(offset, value);
            ASSERT_THAT(changes(change_nothing), IsEmpty()) << offset << " " << value;
        }
    }
}

}  // namespace
}  // namespace memwright
