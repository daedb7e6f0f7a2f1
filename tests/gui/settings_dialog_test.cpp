// The dialog of the set-mode settings, with keys and mouse.

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "app/frm_misc_setting.h"
#include "app/setting_rows.h"
#include "gui/support/appearance.h"
#include "gui/support/dialog_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

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
    static void change_everything(QDialog& dialog) {
        for (const SettingRow& row : setting_rows()) choose_entry(dialog, row.name, 1);
        for (int band = 0; band < 10; ++band) click(dialog, band_name(band));
        click(dialog, "Option1");
    }
    // What change_everything and OK make of an image of zeros.
    static const Texts& everything_changed() {
        static const Texts changed = {
            "6662: 0 > 1",  "6666: 0 > 1",  "6667: 0 > 1",   "6669: 0 > 1",   "6671: 0 > 1",
            "6673: 0 > 68", "6676: 0 > 25", "6677: 0 > 108", "6688: 0 > 255", "6689: 0 > 3"};
        return changed;
    }

    RadioImage radio_;
};

const Texts kTour = {"Combo1",    "Combo14",   "Combo3",    "Combo11",   "Combo13",   "Option2",
                     "Check1(0)", "Check1(1)", "Check1(2)", "Check1(3)", "Check1(4)", "Check1(5)",
                     "Check1(6)", "Check1(7)", "Check1(8)", "Check1(9)", "Combo4",    "Combo5",
                     "Combo6",    "Combo9",    "Combo7",    "Combo8",    "Combo12",   "Combo10",
                     "Combo2",    "Command1",  "Command2"};

TEST_F(SettingsDialog, has_its_title_and_a_widget_for_every_control) {
    look_at([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmMiscSetting");
        EXPECT_EQ(dialog.windowTitle(), "Settings");
        EXPECT_EQ(dialog.parentWidget(), &owner_);
        EXPECT_TRUE(dialog.isModal());
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
        EXPECT_EQ(part<QPushButton>(dialog, "Command1").text(), "&OK");
        EXPECT_EQ(part<QPushButton>(dialog, "Command2").text(), "&Cancel");
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
    for (int round = 0; round < 10; ++round) {
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

TEST_F(SettingsDialog, every_entry_of_every_list_can_be_chosen_with_the_keyboard_and_is_stored) {
    SeededRandom random;
    for (const SettingRow& row : setting_rows()) {
        for (std::size_t entry = 0; entry < row.entries.size(); ++entry) {
            make_valid(radio_, random);
            MemoryImage expected = radio_.image();
            const int byte = row.bit == kWholeByte ? static_cast<int>(entry)
                                                   : (expected.get(row.offset) & ~(1 << row.bit)) |
                                                         static_cast<int>(entry) << row.bit;
            expected.set(row.offset, static_cast<std::uint8_t>(byte));
            open([&](QDialog& dialog) {
                choose_entry(dialog, row.name, entry);
                EXPECT_EQ(qt::to_utf8(part<QComboBox>(dialog, row.name).currentText()),
                          row.entries[entry]);
                key(dialog, Qt::Key_Return);
            });
            EXPECT_THAT(radio_.changes_from(expected), IsEmpty()) << row.name << " " << entry;
        }
    }
}

TEST_F(SettingsDialog, an_entry_is_chosen_from_the_open_list_with_the_mouse) {
    EXPECT_THAT(changes([](QDialog& dialog) {
                    pick_with_mouse(dialog, "Combo2", 5);
                    click(dialog, "Command1");
                }),
                ElementsAre("6667: 0 > 5"));
}

TEST_F(SettingsDialog, every_box_is_toggled_by_its_digit_by_space_and_by_a_click) {
    for (int band = 0; band < 10; ++band) {
        const auto [offset, bit] = linked_band_bit(band);
        const std::vector<Reply> ways = {
            [&](QDialog& dialog) { alt(dialog, static_cast<char>('0' + band)); },
            [&](QDialog& dialog) {
                part(dialog, band_name(band)).setFocus();
                key(dialog, Qt::Key_Space);
            },
            [&](QDialog& dialog) { click(dialog, band_name(band)); }};
        for (const Reply& toggle : ways) {
            radio_.image() = MemoryImage{};
            const auto accept = [](QDialog& dialog) { key(dialog, Qt::Key_Return); };
            EXPECT_THAT(changes(look(toggle, accept)),
                        ElementsAre(std::to_string(offset) + ": 0 > " + std::to_string(1 << bit)));
            open(look(toggle, accept));
            EXPECT_EQ(radio_.byte(offset), 0) << band;
        }
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

TEST_F(SettingsDialog, every_mnemonic_is_unique_and_leads_to_its_control) {
    look_at([](QDialog& dialog) {
        std::map<std::string, char> letters;
        char before = '\0';
        for (const auto& [letter, name] : mnemonics(dialog)) {
            EXPECT_NE(letter, before) << name;
            before = letter;
            EXPECT_TRUE(letters.emplace(name, letter).second) << name;
        }
        EXPECT_THAT(letters, SizeIs(14 + 2 + 10 + 2));
        for (const auto& [name, letter] : letters) {
            if (name.starts_with("Command")) continue;  // these close it
            alt(dialog, letter);
            EXPECT_EQ(focused(), name);
        }
    });
}

TEST_F(SettingsDialog, tab_goes_down_the_left_column_then_down_the_right_one_and_back) {
    look_at([](QDialog& dialog) {
        EXPECT_THAT(tab_tour(dialog), ElementsAreArray(kTour));
        Texts back(kTour.rbegin(), kTour.rend());
        std::ranges::rotate(back, back.end() - 1);
        EXPECT_THAT(tab_tour(dialog, Qt::Key_Backtab), ElementsAreArray(back));
        // The order in which they stand.
        QPoint last;
        for (const std::string& name : kTour) {
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

TEST_F(SettingsDialog, opens_with_the_keys_in_its_first_list) {
    look_at([](QDialog& dialog) {
        EXPECT_EQ(focused(), "Combo1");
        key(dialog, Qt::Key_Down);
        EXPECT_EQ(part<QComboBox>(dialog, "Combo1").currentText(), "2 Sec");
    });
}

TEST_F(SettingsDialog, ok_stores_everything_however_it_is_pressed) {
    const std::vector<Reply> ways = {
        [](QDialog& dialog) { key(dialog, Qt::Key_Return); },
        [](QDialog& dialog) { key(dialog, Qt::Key_Enter, Qt::KeypadModifier); },
        [](QDialog& dialog) { alt(dialog, 'O'); },
        [](QDialog& dialog) { click(dialog, "Command1"); },
        [](QDialog& dialog) {
            part(dialog, "Command1").setFocus();
            key(dialog, Qt::Key_Space);
        }};
    for (const Reply& press_ok : ways) {
        radio_.image() = MemoryImage{};
        EXPECT_THAT(changes(look(change_everything, press_ok)),
                    ElementsAreArray(everything_changed()));
    }
}

TEST_F(SettingsDialog, enter_presses_ok_from_within_every_control_but_cancel) {
    for (const std::string& name : kTour) {
        if (name == "Command2") continue;
        radio_.image() = MemoryImage{};
        EXPECT_THAT(changes([&](QDialog& dialog) {
                        choose_entry(dialog, "Combo10", 2);
                        part(dialog, name).setFocus();
                        key(dialog, Qt::Key_Return);
                        EXPECT_FALSE(dialog.isVisible()) << name;
                        dialog.reject();
                    }),
                    ElementsAre("6666: 0 > 2"))
            << name;
    }
}

TEST_F(SettingsDialog, nothing_is_changed_however_it_is_cancelled) {
    const std::vector<Reply> ways = {[](QDialog& dialog) { key(dialog, Qt::Key_Escape); },
                                     [](QDialog& dialog) { alt(dialog, 'C'); },
                                     [](QDialog& dialog) { click(dialog, "Command2"); },
                                     [](QDialog& dialog) {
                                         part(dialog, "Command2").setFocus();
                                         key(dialog, Qt::Key_Return);
                                     },
                                     [](QDialog& dialog) { dialog.close(); }};
    SeededRandom random;
    for (const Reply& cancel : ways) {
        make_valid(radio_, random);
        EXPECT_THAT(changes(look(change_everything, cancel)), IsEmpty());
    }
}

TEST_F(SettingsDialog, a_screen_reader_has_a_name_of_its_own_for_every_control) {
    look_at([](QDialog& dialog) {
        std::map<std::string, std::string> names;
        for (const std::string& control : kTour) {
            const std::string name = spoken_name(part(dialog, control));
            EXPECT_FALSE(name.empty()) << control;
            EXPECT_EQ(name.find('&'), std::string::npos) << name;
            EXPECT_TRUE(names.emplace(name, control).second) << name;
        }
        for (const SettingRow& row : setting_rows()) {
            EXPECT_EQ(spoken_name(part(dialog, row.name)), row.caption);
        }
        EXPECT_EQ(spoken_name(part(dialog, "Option1")), "Bank");
        EXPECT_EQ(spoken_name(part(dialog, "Check1(7)")), "Band 7");
    });
}

TEST_F(SettingsDialog, is_as_large_as_its_contents_and_readable_in_either_palette) {
    look_at([](QDialog& dialog) { expect_good_looks(dialog); });
    const WithPalette dark(dark_palette());
    look_at([](QDialog& dialog) { expect_good_looks(dialog); });
}

}  // namespace
}  // namespace memwright::gui
