// The dialog of the set-mode settings, with keys and mouse.

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include "app/frm_misc_setting.h"
#include "app/setting_rows.h"
#include "gui/support/dialog_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

std::string band_name(int band) { return "Check1(" + std::to_string(band) + ")"; }

class SettingsDialog : public DialogTest {
  protected:
    void open(const Reply& work) {
        frmMiscSetting form(radio_.store());
        show(form, work);
    }
    // Opens it for a look, and closes it.
    void look_at(const std::function<void(QDialog&)>& at) {
        open(look(at, [](QDialog& dialog) { key(dialog, Qt::Key_Escape); }));
    }
    // What the image looks like after the work.
    Texts changes(const Reply& work) {
        const MemoryImage before = radio_.image();
        open(work);
        return radio_.changes_from(before);
    }
    int stored(const SettingRow& row) const {
        const int byte = radio_.byte(row.offset);
        return row.bit == kWholeByte ? byte : byte >> row.bit & 1;
    }

    // The letter that is underlined in the label of a list.
    static char letter_of(const QDialog& dialog, const std::string& name) {
        for (const auto& [letter, widget] : mnemonics(dialog)) {
            if (widget == name) return letter;
        }
        throw std::runtime_error(name + " has no mnemonic");
    }
    static void choose_entry(QDialog& dialog, const std::string& list, std::size_t entry) {
        alt(dialog, letter_of(dialog, list));
        ASSERT_EQ(focused(), list);
        key(dialog, Qt::Key_Home);
        for (std::size_t i = 0; i < entry; ++i) key(dialog, Qt::Key_Down);
    }
    RadioImage radio_;
};

TEST_F(SettingsDialog, has_a_list_with_its_entries_for_every_setting) {
    look_at([&](QDialog& dialog) {
        for (const SettingRow& row : setting_rows()) {
            const auto& list = part<QComboBox>(dialog, row.name);
            Texts entries;
            for (int i = 0; i < list.count(); ++i) {
                entries.push_back(qt::to_utf8(list.itemText(i)));
            }
            EXPECT_EQ(entries, row.entries) << row.name;
            EXPECT_FALSE(list.isEditable());
        }
        EXPECT_EQ(part<QRadioButton>(dialog, "Option1").text(), "&Bank");
        EXPECT_EQ(part<QRadioButton>(dialog, "Option2").text(), "&All");
        for (int band = 0; band < 10; ++band) {
            EXPECT_EQ(part<QCheckBox>(dialog, band_name(band)).text(), "&" + QString::number(band));
        }
    });
}

TEST_F(SettingsDialog, every_list_stands_beside_its_label_and_the_groups_have_their_titles) {
    look_at([&](QDialog& dialog) {
        for (const SettingRow& row : setting_rows()) {
            const auto& list = part(dialog, row.name);
            const QLabel* its_label = nullptr;
            for (const auto* label : dialog.findChildren<QLabel*>()) {
                if (label->buddy() == &list) its_label = label;
            }
            ASSERT_NE(its_label, nullptr) << row.name;
            EXPECT_EQ(qt::to_utf8(its_label->text().remove('&')), row.caption);
            const QPoint middle = its_label->mapTo(&dialog, its_label->rect().center());
            const QPoint corner = list.mapTo(&dialog, QPoint(0, 0));
            EXPECT_GT(corner.x(), middle.x()) << row.name;
            EXPECT_GT(middle.y(), corner.y()) << row.name;
            EXPECT_LT(middle.y(), corner.y() + list.height()) << row.name;
        }
        EXPECT_EQ(dynamic_cast<QGroupBox&>(*part(dialog, "Option1").parent()).title(), "Scan Mode");
        EXPECT_EQ(part(dialog, "Option1").parent(), part(dialog, "Option2").parent());
        for (int band = 0; band < 10; ++band) {
            auto& group = dynamic_cast<QGroupBox&>(*part(dialog, band_name(band)).parent());
            EXPECT_EQ(group.title(), "Linked Scan Bands");
        }
    });
}

TEST_F(SettingsDialog, shows_what_the_image_holds) {
    SeededRandom random;
    for (int round = 0; round < 2; ++round) {
        make_valid(radio_, random);
        look_at([&](QDialog& dialog) {
            for (const SettingRow& row : setting_rows()) {
                EXPECT_EQ(part<QComboBox>(dialog, row.name).currentIndex(), stored(row))
                    << row.name;
            }
            const bool bank = radio_.byte(kScanModeBit.offset) >> kScanModeBit.bit & 1;
            EXPECT_EQ(part<QRadioButton>(dialog, "Option1").isChecked(), bank);
            EXPECT_EQ(part<QRadioButton>(dialog, "Option2").isChecked(), !bank);
            for (int band = 0; band < 10; ++band) {
                const auto [offset, bit] = linked_band_bit(band);
                EXPECT_EQ(part<QCheckBox>(dialog, band_name(band)).isChecked(),
                          (radio_.byte(offset) >> bit & 1) == 1)
                    << band;
            }
        });
    }
}

TEST_F(SettingsDialog, an_entry_of_every_list_is_chosen_with_the_keyboard_and_stored) {
    MemoryImage expected = radio_.image();
    open([&](QDialog& dialog) {
        for (const SettingRow& row : setting_rows()) {
            const std::size_t last = row.entries.size() - 1;
            const int bits = row.bit == kWholeByte
                                 ? static_cast<int>(last)
                                 : expected.get(row.offset) | static_cast<int>(last) << row.bit;
            expected.set(row.offset, static_cast<std::uint8_t>(bits));
            choose_entry(dialog, row.name, last);
            EXPECT_EQ(qt::to_utf8(part<QComboBox>(dialog, row.name).currentText()),
                      row.entries[last]);
        }
        key(dialog, Qt::Key_Return);
    });
    EXPECT_THAT(radio_.changes_from(expected), IsEmpty());
}

TEST_F(SettingsDialog, an_entry_is_chosen_from_the_open_list_with_the_mouse) {
    EXPECT_THAT(changes([](QDialog& dialog) {
                    pick_with_mouse(dialog, "Combo2", 5);
                    click(dialog, "Command1");
                }),
                ElementsAre("6667: 0 > 5"));
}

TEST_F(SettingsDialog, every_box_is_toggled_by_its_digit_by_space_and_by_a_click) {
    using Toggle = std::function<void(QDialog&, int)>;
    const std::vector<Toggle> ways = {
        [](QDialog& dialog, int band) { alt(dialog, static_cast<char>('0' + band)); },
        [](QDialog& dialog, int band) {
            part(dialog, band_name(band)).setFocus();
            key(dialog, Qt::Key_Space);
        },
        [](QDialog& dialog, int band) { click(dialog, band_name(band)); }};
    for (const Toggle& toggle : ways) {
        look_at([&](QDialog& dialog) {
            for (int band = 0; band < 10; ++band) {
                const auto& box = part<QCheckBox>(dialog, band_name(band));
                toggle(dialog, band);
                EXPECT_TRUE(box.isChecked()) << band;
                toggle(dialog, band);
                EXPECT_FALSE(box.isChecked()) << band;
            }
        });
    }
}

TEST_F(SettingsDialog, every_box_is_stored_in_a_bit_of_its_own) {
    for (int band = 0; band < 10; ++band) {
        const auto [offset, bit] = linked_band_bit(band);
        radio_.store().set_image(MemoryImage{});
        EXPECT_THAT(changes([&](QDialog& dialog) {
                        click(dialog, band_name(band));
                        key(dialog, Qt::Key_Return);
                    }),
                    ElementsAre(std::to_string(offset) + ": 0 > " + std::to_string(1 << bit)));
    }
}

TEST_F(SettingsDialog, of_the_option_buttons_one_is_selected_however_it_is_chosen) {
    look_at([](QDialog& dialog) {
        const auto selected = [&] {
            const bool bank = part<QRadioButton>(dialog, "Option1").isChecked();
            EXPECT_NE(bank, part<QRadioButton>(dialog, "Option2").isChecked());
            return bank ? "Bank" : "All";
        };
        EXPECT_STREQ(selected(), "All");
        alt(dialog, 'B');
        EXPECT_STREQ(selected(), "Bank");
        EXPECT_EQ(focused(), "Option1");
        key(dialog, Qt::Key_Right);
        EXPECT_STREQ(selected(), "All");
        key(dialog, Qt::Key_Left);
        EXPECT_STREQ(selected(), "Bank");
        click(dialog, "Option2");
        EXPECT_STREQ(selected(), "All");
        alt(dialog, 'A');
        EXPECT_STREQ(selected(), "All");
    });
}

TEST_F(SettingsDialog, of_scan_mode_and_key_beep_the_key_beep_is_stored_and_the_dialog_says_so) {
    EXPECT_THAT(changes([](QDialog& dialog) {
                    alt(dialog, 'B');
                    key(dialog, Qt::Key_Return);
                }),
                IsEmpty());
    radio_.put(6676, 0x08);
    EXPECT_THAT(changes([](QDialog& dialog) {
                    EXPECT_TRUE(part<QRadioButton>(dialog, "Option1").isChecked());
                    EXPECT_EQ(part<QComboBox>(dialog, "Combo7").currentText(), "OFF");
                    const auto& group = dynamic_cast<QWidget&>(*part(dialog, "Option1").parent());
                    EXPECT_THAT(qt::to_utf8(group.toolTip()), HasSubstr("Key Beep is stored"));
                    EXPECT_EQ(part(dialog, "Option1").accessibleDescription(), group.toolTip());
                    EXPECT_EQ(part(dialog, "Option2").accessibleDescription(), group.toolTip());
                    alt(dialog, 'A');
                    key(dialog, Qt::Key_Return);
                }),
                IsEmpty());
    EXPECT_THAT(changes([](QDialog& dialog) {
                    choose_entry(dialog, "Combo7", 0);
                    key(dialog, Qt::Key_Return);
                }),
                ElementsAre("6676: 8 > 0"));
}

TEST_F(SettingsDialog, tab_goes_down_the_left_column_then_down_the_right_one) {
    look_at([](QDialog& dialog) {
        QPoint last;
        for (const std::string& name : tab_tour(dialog)) {
            const QPoint here = part(dialog, name).mapTo(&dialog, QPoint(0, 0));
            const bool below = here.y() > last.y() && here.x() < dialog.width() / 2;
            const bool right_of = here.x() > last.x();
            EXPECT_TRUE(below || right_of || here.y() > last.y()) << name;
            last = here;
        }
    });
}

TEST_F(SettingsDialog, tab_goes_to_the_option_button_that_is_selected) {
    radio_.put_bit(kScanModeBit.offset, kScanModeBit.bit, 1);
    look_at([](QDialog& dialog) {
        const auto option_of_the_tour = [&] {
            part(dialog, "Combo13").setFocus();
            key(dialog, Qt::Key_Tab);
            const std::string option = focused();
            key(dialog, Qt::Key_Tab);
            EXPECT_EQ(focused(), "Check1(0)");
            return option;
        };
        EXPECT_EQ(option_of_the_tour(), "Option1");
        alt(dialog, 'A');
        EXPECT_EQ(option_of_the_tour(), "Option2");
        key(dialog, Qt::Key_Backtab);
        key(dialog, Qt::Key_Left);
        EXPECT_EQ(option_of_the_tour(), "Option1");
    });
}

TEST_F(SettingsDialog, a_screen_reader_says_the_captions) {
    look_at([](QDialog& dialog) {
        for (const SettingRow& row : setting_rows()) {
            EXPECT_EQ(spoken_name(part(dialog, row.name)), row.caption);
        }
        EXPECT_EQ(spoken_name(part(dialog, "Option1")), "Bank");
        EXPECT_EQ(spoken_name(part(dialog, "Check1(7)")), "Band 7");
    });
}

}  // namespace
}  // namespace memwright::gui
