// The dialog of the search limits, with keys and mouse.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/frm_limit_search.h"
#include "app/radio_image.h"
#include "gui/support/appearance.h"
#include "gui/support/dialog_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Texts = std::vector<std::string>;

constexpr int kLimits = 18;

std::string box_name(int limit) { return "Text1(" + std::to_string(limit) + ")"; }
std::string list_name(int limit) { return "Combo1(" + std::to_string(limit) + ")"; }

class LimitsDialog : public DialogTest {
  protected:
    // Limit 2k is 100 + 2k MHz, NFM; limit 2k + 1 is 100 + 2k + 1 MHz, AM.
    LimitsDialog() {
        for (int limit = 0; limit < kLimits; ++limit) {
            radio_.put(offset_of(limit),
                       {0x10 + limit / 10, limit % 10 << 4, 0, limit % 2 == 0 ? 0x01 : 0x03});
        }
    }
    static int offset_of(int limit) {
        return limit < 16 ? 6912 + 4 * limit : 7152 + 4 * (limit - 16);
    }
    std::vector<int> record(int limit) const {
        std::vector<int> bytes;
        for (int i = 0; i < 4; ++i) bytes.push_back(radio_.byte(offset_of(limit) + i));
        return bytes;
    }

    void open(const Reply& work) {
        frmLimitSearch form(radio_.store());
        show(form, work);
    }
    // Opens it for a look, and closes it.
    void look_at(const std::function<void(QDialog&)>& at) {
        open(look(at, [](QDialog& dialog) { key(dialog, Qt::Key_Escape); }));
    }
    Texts changes(const Reply& work) {
        const MemoryImage before = radio_.image();
        open(work);
        return radio_.changes_from(before);
    }

    static std::string text(const QDialog& dialog, int limit) {
        return qt::to_utf8(part<QLineEdit>(dialog, box_name(limit)).text());
    }
    // Types a text over what is in a box.
    static void fill(QDialog& dialog, int limit, const QString& typed) {
        part(dialog, box_name(limit)).setFocus();
        key(dialog, Qt::Key_A, Qt::ControlModifier);
        key(dialog, Qt::Key_Delete);
        type(dialog, typed);
        EXPECT_EQ(text(dialog, limit), qt::to_utf8(typed))
            << "nothing is corrected while it is typed";
    }

    RadioImage radio_;
};

// The ways out of a box, and whom they lead to.
struct WayOut {
    const char* name;
    Reply leave;
    const char* to;
};

const std::vector<WayOut>& ways_out() {
    static const std::vector<WayOut> ways = {
        {"Tab", [](QDialog& dialog) { key(dialog, Qt::Key_Tab); }, "Combo1(4)"},
        {"Backtab", [](QDialog& dialog) { key(dialog, Qt::Key_Backtab); }, "Combo1(3)"},
        {"a click on a box", [](QDialog& dialog) { click(dialog, "Text1(9)"); }, "Text1(9)"},
        {"a click on a list",
         [](QDialog& dialog) {
             click(dialog, "Combo1(9)");
             part<QComboBox>(dialog, "Combo1(9)").hidePopup();
             // Off the screen, a list that closes leaves no window active.
             QApplication::setActiveWindow(&dialog);
         },
         "Combo1(9)"},
        {"a mnemonic", [](QDialog& dialog) { alt(dialog, '5'); }, "Text1(10)"}};
    return ways;
}

Texts tour() {
    Texts names;
    for (int limit = 0; limit < kLimits; ++limit) {
        names.push_back(box_name(limit));
        names.push_back(list_name(limit));
    }
    names.insert(names.end(), {"Command1", "Command2"});
    return names;
}

TEST_F(LimitsDialog, has_its_title_and_a_widget_for_every_control) {
    look_at([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmLimitSearch");
        EXPECT_EQ(dialog.windowTitle(), "Search Band Memories");
        EXPECT_EQ(dialog.parentWidget(), &owner_);
        EXPECT_TRUE(dialog.isModal());
        for (int limit = 0; limit < kLimits; ++limit) {
            const auto& box = part<QLineEdit>(dialog, box_name(limit));
            const auto& list = part<QComboBox>(dialog, list_name(limit));
            EXPECT_EQ(qt::to_utf8(box.text()), std::to_string(100 + limit) + ".00000");
            EXPECT_EQ(list.currentText(), limit % 2 == 0 ? "NFM" : "AM");
            Texts modes;
            for (int i = 0; i < list.count(); ++i) modes.push_back(qt::to_utf8(list.itemText(i)));
            EXPECT_THAT(modes, ElementsAre("AUTO", "NFM", "WFM", "AM")) << limit;
        }
        EXPECT_EQ(part<QPushButton>(dialog, "Command1").text(), "&OK");
        EXPECT_EQ(part<QPushButton>(dialog, "Command2").text(), "&Cancel");
    });
}

TEST_F(LimitsDialog, two_limits_stand_beside_each_label_in_the_fixed_pitch_font) {
    const Texts captions = {"L00", "L01", "L02", "L03", "L04", "L05", "L06", "L07", "L--"};
    look_at([&](QDialog& dialog) {
        const QString fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
        for (int row = 0; row < 9; ++row) {
            const auto& label = part<QLabel>(dialog, "Label" + std::to_string(row + 1));
            EXPECT_EQ(qt::to_utf8(label.text().remove('&')),
                      captions[static_cast<std::size_t>(row)]);
            const int middle = label.mapTo(&dialog, label.rect().center()).y();
            int left = label.mapTo(&dialog, label.rect().topRight()).x();
            for (const std::string& name : {box_name(2 * row), list_name(2 * row),
                                            box_name(2 * row + 1), list_name(2 * row + 1)}) {
                const auto& widget = part(dialog, name);
                const QRect place(widget.mapTo(&dialog, QPoint(0, 0)), widget.size());
                EXPECT_GT(place.left(), left) << name;
                EXPECT_NEAR(place.center().y(), middle, 1) << name;
                EXPECT_EQ(widget.font().family(), fixed) << name;
                left = place.right();
            }
        }
    });
}

TEST_F(LimitsDialog, a_frequency_and_a_mode_of_every_limit_are_changed_by_keyboard_and_stored) {
    const QString modes[] = {"AUTO", "NFM", "WFM", "AM"};
    for (int limit = 0; limit < kLimits; ++limit) {
        const int mode = limit % 4;
        MemoryImage expected = radio_.image();
        const int wanted[] = {0x43, 0x31, 0x12, 0x80 + mode};
        for (int i = 0; i < 4; ++i) {
            expected.set(offset_of(limit) + i, static_cast<std::uint8_t>(wanted[i]));
        }
        open([&](QDialog& dialog) {
            fill(dialog, limit, "433.11275");
            key(dialog, Qt::Key_Tab);
            EXPECT_EQ(focused(), list_name(limit));
            key(dialog, Qt::Key_Home);
            for (int i = 0; i < mode; ++i) key(dialog, Qt::Key_Down);
            EXPECT_EQ(part<QComboBox>(dialog, list_name(limit)).currentText(), modes[mode]);
            key(dialog, Qt::Key_Return);
        });
        EXPECT_THAT(radio_.changes_from(expected), IsEmpty()) << limit;
    }
}

TEST_F(LimitsDialog, leaving_a_box_corrects_its_text_whichever_way) {
    for (const WayOut& way : ways_out()) {
        look_at([&](QDialog& dialog) {
            const auto leave = [&](const char* typed) {
                fill(dialog, 4, typed);
                way.leave(dialog);
                EXPECT_EQ(focused(), way.to) << way.name;
                return text(dialog, 4);
            };
            EXPECT_EQ(leave("2000"), "1299.00000") << way.name;
            EXPECT_EQ(leave("339.5"), "340.00000") << way.name;
            EXPECT_EQ(leave(""), "0.00000") << way.name;
            EXPECT_EQ(leave("145.51233"), "145.51200") << way.name;
            EXPECT_EQ(leave("145.5125"), "145.51250") << way.name;
            EXPECT_EQ(leave("abc"), "0.00000") << way.name;
        });
    }
}

TEST_F(LimitsDialog, another_window_does_not_correct_the_text_and_coming_back_goes_on_typing) {
    look_at([&](QDialog& dialog) {
        fill(dialog, 4, "339");
        QWidget other;
        other.show();
        QApplication::setActiveWindow(&other);
        ASSERT_FALSE(dialog.isActiveWindow());
        ASSERT_NE(focused(), box_name(4));
        EXPECT_EQ(text(dialog, 4), "339");
        other.hide();
        QApplication::setActiveWindow(&dialog);
        ASSERT_EQ(focused(), box_name(4));
        type(dialog, ".5");
        EXPECT_EQ(text(dialog, 4), "339.5");
        key(dialog, Qt::Key_Tab);
        EXPECT_EQ(text(dialog, 4), "340.00000");
    });
}

TEST_F(LimitsDialog, the_menu_of_a_box_does_not_correct_its_text) {
    look_at([&](QDialog& dialog) {
        fill(dialog, 4, "339.5");
        auto& box = part<QLineEdit>(dialog, box_name(4));
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(3, 3),
                                box.mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(&box, &asked);
        QWidget* const menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(text(dialog, 4), "339.5");
        QTest::keyClick(menu, Qt::Key_Escape);
        QApplication::setActiveWindow(&dialog);
        EXPECT_EQ(focused(), box_name(4));
        EXPECT_EQ(text(dialog, 4), "339.5");
    });
}

TEST_F(LimitsDialog, ok_corrects_the_text_that_is_being_typed_however_it_is_pressed) {
    const std::vector<Reply> ways = {
        [](QDialog& dialog) { key(dialog, Qt::Key_Return); },
        [](QDialog& dialog) { key(dialog, Qt::Key_Enter, Qt::KeypadModifier); },
        [](QDialog& dialog) { alt(dialog, 'O'); },
        [](QDialog& dialog) { click(dialog, "Command1"); }};
    for (const Reply& press_ok : ways) {
        for (const int limit : {0, 7, 17}) {
            open(look([&](QDialog& dialog) { fill(dialog, limit, "339.5"); }, press_ok));
            EXPECT_THAT(record(limit), ElementsAre(0x34, 0x00, 0x00, limit == 0 ? 0x01 : 0x03));
        }
    }
}

TEST_F(LimitsDialog, enter_presses_ok_from_within_every_control_but_cancel) {
    for (const std::string& name : tour()) {
        if (name == "Command2") continue;
        radio_.put(7152, {0x11, 0x60, 0x00, 0x01});
        EXPECT_THAT(changes([&](QDialog& dialog) {
                        fill(dialog, 16, "200");
                        part(dialog, name).setFocus();
                        key(dialog, Qt::Key_Return);
                        EXPECT_FALSE(dialog.isVisible()) << name;
                        dialog.reject();
                    }),
                    ElementsAre("7152: 17 > 32", "7153: 96 > 0"))
            << name;
    }
}

TEST_F(LimitsDialog, ok_with_nothing_changed_leaves_every_byte) {
    EXPECT_THAT(changes([](QDialog& dialog) { key(dialog, Qt::Key_Return); }), IsEmpty());
    EXPECT_THAT(changes([](QDialog& dialog) {
                    EXPECT_THAT(tab_tour(dialog), SizeIs(38));
                    click(dialog, "Command1");
                }),
                IsEmpty());
}

TEST_F(LimitsDialog, an_empty_limit_stays_empty_until_its_box_is_left_or_ok_is_pressed) {
    radio_.put(offset_of(4), {0xFF, 0xFF, 0xFF, 0x00});
    look_at([](QDialog& dialog) {
        EXPECT_EQ(text(dialog, 4), "");
        EXPECT_EQ(part<QComboBox>(dialog, list_name(4)).currentText(), "AUTO");
    });
    EXPECT_THAT(record(4), ElementsAre(0xFF, 0xFF, 0xFF, 0x00));
    open([](QDialog& dialog) { key(dialog, Qt::Key_Return); });
    EXPECT_THAT(record(4), ElementsAre(0x00, 0x00, 0x00, 0x00));
}

TEST_F(LimitsDialog, nothing_is_changed_however_it_is_cancelled) {
    const std::vector<Reply> ways = {[](QDialog& dialog) { key(dialog, Qt::Key_Escape); },
                                     [](QDialog& dialog) { alt(dialog, 'C'); },
                                     [](QDialog& dialog) { click(dialog, "Command2"); },
                                     [](QDialog& dialog) {
                                         part(dialog, "Command2").setFocus();
                                         key(dialog, Qt::Key_Return);
                                     },
                                     [](QDialog& dialog) { dialog.close(); }};
    for (const Reply& cancel : ways) {
        const auto change = [](QDialog& dialog) {
            for (const int limit : {16, 0}) {
                part(dialog, list_name(limit)).setFocus();
                key(dialog, Qt::Key_End);
                fill(dialog, limit, "433.5");
            }
        };
        EXPECT_THAT(changes(look(change, cancel)), IsEmpty());
    }
}

TEST_F(LimitsDialog, a_mode_is_chosen_by_its_first_letter_and_from_the_open_list) {
    open([](QDialog& dialog) {
        part(dialog, list_name(2)).setFocus();
        key(dialog, Qt::Key_W);
        EXPECT_EQ(part<QComboBox>(dialog, list_name(2)).currentText(), "WFM");
        part(dialog, list_name(5)).setFocus();
        auto& list = part<QComboBox>(dialog, list_name(5));
        key(dialog, Qt::Key_Down, Qt::AltModifier);
        ASSERT_TRUE(wait_until([&] { return list.view()->isVisible(); }));
        QTest::keyClick(list.view(), Qt::Key_Home);
        QTest::keyClick(list.view(), Qt::Key_Return);
        EXPECT_TRUE(wait_until([&] { return !list.view()->isVisible(); }));
        EXPECT_TRUE(dialog.isVisible()) << "Enter chose in the list";
        QApplication::setActiveWindow(&dialog);
        key(dialog, Qt::Key_Return);
    });
    EXPECT_THAT(record(2), ElementsAre(0x10, 0x20, 0x00, 0x02));
    EXPECT_THAT(record(5), ElementsAre(0x10, 0x50, 0x00, 0x00));
}

TEST_F(LimitsDialog, every_mnemonic_is_unique_and_leads_to_its_control) {
    look_at([](QDialog& dialog) {
        std::map<char, std::string> found;
        for (const auto& [letter, name] : mnemonics(dialog)) {
            EXPECT_TRUE(found.emplace(letter, name).second) << name;
        }
        const std::map<char, std::string> expected = {
            {'0', "Text1(0)"},  {'1', "Text1(2)"},  {'2', "Text1(4)"},  {'3', "Text1(6)"},
            {'4', "Text1(8)"},  {'5', "Text1(10)"}, {'6', "Text1(12)"}, {'7', "Text1(14)"},
            {'-', "Text1(16)"}, {'O', "Command1"},  {'C', "Command2"}};
        EXPECT_EQ(found, expected);
        for (const auto& [letter, name] : expected) {
            if (name.starts_with("Command")) continue;  // these close it
            alt(dialog, letter);
            EXPECT_EQ(focused(), name);
            EXPECT_TRUE(part<QLineEdit>(dialog, name).hasSelectedText());
        }
    });
}

TEST_F(LimitsDialog, tab_goes_along_the_rows_and_back) {
    look_at([](QDialog& dialog) {
        const Texts there = tour();
        EXPECT_THAT(tab_tour(dialog), ElementsAreArray(there));
        Texts back(there.rbegin(), there.rend());
        std::ranges::rotate(back, back.end() - 1);
        EXPECT_THAT(tab_tour(dialog, Qt::Key_Backtab), ElementsAreArray(back));
    });
}

TEST_F(LimitsDialog, opens_in_its_first_box_with_the_text_selected) {
    look_at([](QDialog& dialog) {
        EXPECT_EQ(focused(), "Text1(0)");
        EXPECT_EQ(part<QLineEdit>(dialog, "Text1(0)").selectedText(), "100.00000");
        type(dialog, "5");
        EXPECT_EQ(text(dialog, 0), "5");
    });
}

TEST_F(LimitsDialog, a_screen_reader_has_a_name_of_its_own_for_every_control) {
    look_at([](QDialog& dialog) {
        std::map<std::string, std::string> names;
        for (const std::string& control : tour()) {
            const std::string name = spoken_name(part(dialog, control));
            EXPECT_FALSE(name.empty()) << control;
            EXPECT_EQ(name.find('&'), std::string::npos) << name;
            EXPECT_TRUE(names.emplace(name, control).second) << name;
        }
        EXPECT_EQ(spoken_name(part(dialog, "Text1(0)")), "L00, lower limit");
        EXPECT_EQ(spoken_name(part(dialog, "Combo1(1)")), "L00, upper limit, mode");
        EXPECT_EQ(spoken_name(part(dialog, "Text1(17)")), "L--, upper limit");
    });
}

TEST_F(LimitsDialog, is_as_large_as_its_contents_and_readable_in_either_palette) {
    look_at([](QDialog& dialog) { expect_good_looks(dialog, "1299.00000"); });
    const WithPalette dark(dark_palette());
    look_at([](QDialog& dialog) { expect_good_looks(dialog, "1299.00000"); });
}

}  // namespace
}  // namespace memwright::gui
