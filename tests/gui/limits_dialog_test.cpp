// The dialog of the search limits, with keys and mouse.

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>

#include "app/frm_limit_search.h"
#include "app/radio_image.h"
#include "gui/support/dialog_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
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

TEST_F(LimitsDialog, shows_a_frequency_and_a_mode_for_every_limit) {
    look_at([&](QDialog& dialog) {
        for (int limit = 0; limit < kLimits; ++limit) {
            const auto& box = part<QLineEdit>(dialog, box_name(limit));
            const auto& list = part<QComboBox>(dialog, list_name(limit));
            EXPECT_EQ(qt::to_utf8(box.text()), std::to_string(100 + limit) + ".00000");
            EXPECT_EQ(list.currentText(), limit % 2 == 0 ? "NFM" : "AM");
            Texts modes;
            for (int i = 0; i < list.count(); ++i) modes.push_back(qt::to_utf8(list.itemText(i)));
            EXPECT_THAT(modes, ElementsAre("AUTO", "NFM", "WFM", "AM")) << limit;
        }
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
    MemoryImage expected = radio_.image();
    open([&](QDialog& dialog) {
        for (int limit = 0; limit < kLimits; ++limit) {
            const int mode = limit % 4;
            const int wanted[] = {0x43, 0x31, limit / 10 << 4 | limit % 10, mode};
            for (int i = 0; i < 4; ++i) {
                expected.set(offset_of(limit) + i, static_cast<std::uint8_t>(wanted[i]));
            }
            fill(dialog, limit, QString("433.1%1").arg(limit, 2, 10, QChar('0')));
            key(dialog, Qt::Key_Tab);
            EXPECT_EQ(focused(), list_name(limit));
            key(dialog, Qt::Key_Home);
            for (int i = 0; i < mode; ++i) key(dialog, Qt::Key_Down);
            EXPECT_EQ(part<QComboBox>(dialog, list_name(limit)).currentText(), modes[mode]);
        }
        key(dialog, Qt::Key_Return);
    });
    EXPECT_THAT(radio_.changes_from(expected), IsEmpty());
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
            EXPECT_EQ(leave("339.5"), "340.00000") << way.name;
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
        radio_.put(offset_of(17), {0x11, 0x70, 0x00, 0x03});
        open(look([&](QDialog& dialog) { fill(dialog, 17, "339.5"); }, press_ok));
        EXPECT_THAT(record(17), ElementsAre(0x34, 0x00, 0x00, 0x03));
    }
}

TEST_F(LimitsDialog, a_tour_of_all_boxes_changes_no_byte) {
    EXPECT_THAT(changes([](QDialog& dialog) {
                    EXPECT_THAT(tab_tour(dialog), SizeIs(38));
                    click(dialog, "Command1");
                }),
                IsEmpty());
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

TEST_F(LimitsDialog, opens_in_its_first_box_with_the_text_selected) {
    look_at([](QDialog& dialog) {
        EXPECT_EQ(focused(), "Text1(0)");
        EXPECT_EQ(part<QLineEdit>(dialog, "Text1(0)").selectedText(), "100.00000");
        type(dialog, "5");
        EXPECT_EQ(text(dialog, 0), "5");
    });
}

TEST_F(LimitsDialog, a_screen_reader_says_which_limit_it_is) {
    look_at([](QDialog& dialog) {
        EXPECT_EQ(spoken_name(part(dialog, "Text1(0)")), "L00, lower limit");
        EXPECT_EQ(spoken_name(part(dialog, "Combo1(1)")), "L00, upper limit, mode");
        EXPECT_EQ(spoken_name(part(dialog, "Text1(17)")), "L--, upper limit");
    });
}

}  // namespace
}  // namespace memwright::gui
