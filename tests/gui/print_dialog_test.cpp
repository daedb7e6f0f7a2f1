// The print dialog.

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QRadioButton>

#include "app/frm_print.h"
#include "gui/support/window_test.h"
#include "qt/dialogs.h"

namespace memwright::gui {
namespace {

using Range = frmPrint::Range;

class PrintDialog : public ::testing::Test {
  protected:
    PrintDialog() { owner_.show(); }

    // Opens the dialog and works in it until it closes.
    void open(const Reply& work) {
        form_ = std::make_unique<frmPrint>();
        answering({work}, [&] { dialogs_.show_modal(*form_); });
    }
    // The same; closed with a key at the end.
    void open(const std::function<void(QDialog&)>& work, Qt::Key close) {
        open(look(work, press_key(close)));
    }

    template <class Widget>
    static Widget& find(QDialog& dialog, const char* name) {
        auto* const found = dialog.findChild<Widget*>(name);
        if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }
    static QLineEdit& box(QDialog& dialog, const char* name) {
        return find<QLineEdit>(dialog, name);
    }
    static void click(QDialog& dialog, const char* name) {
        QTest::mouseClick(&find<QWidget>(dialog, name), Qt::LeftButton);
    }
    // On the round mark: the widget may be wider than what can be clicked.
    static void click_option(QDialog& dialog, const char* name) {
        auto& button = find<QRadioButton>(dialog, name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, {button.height() / 2, button.height() / 2});
    }
    // Types over all that a box holds.
    static void retype(QLineEdit& line, const QString& keys) {
        QTest::mouseClick(&line, Qt::LeftButton);
        QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&line, keys);
    }
    static void empty(QLineEdit& line) {
        QTest::mouseClick(&line, Qt::LeftButton);
        while (!line.text().isEmpty()) {
            QTest::keyClick(&line, Qt::Key_End);
            QTest::keyClick(&line, Qt::Key_Backspace);
        }
    }
    // Any character, on whatever key the user's keyboard has it.
    static void press_character(QLineEdit& line, const QString& character) {
        QTest::sendKeyEvent(QTest::Click, &line, Qt::Key_unknown, character, Qt::NoModifier);
    }
    static void press_mnemonic(QDialog& dialog, Qt::Key letter) {
        QTest::keyClick(dialog.focusWidget(), letter, Qt::AltModifier);
    }
    void expect_selected(QDialog& dialog, bool all) const {
        EXPECT_EQ(find<QRadioButton>(dialog, "Option1").isChecked(), all);
        EXPECT_EQ(find<QRadioButton>(dialog, "Option2").isChecked(), !all);
        EXPECT_EQ(form_->Option1.selected, all);
        EXPECT_EQ(form_->Option2.selected, !all);
    }

    QWidget owner_;
    qt::QtDialogViews dialogs_{owner_};
    std::unique_ptr<frmPrint> form_;
};

TEST_F(PrintDialog, opens_with_its_captions_the_rows_1_to_35_and_all_selected) {
    open(
        [&](QDialog& dialog) {
            EXPECT_EQ(find<QRadioButton>(dialog, "Option1").text(), "&All");
            EXPECT_EQ(find<QRadioButton>(dialog, "Option2").text(), "&Memory Range:");
            EXPECT_EQ(box(dialog, "Text1").text(), "1");
            EXPECT_EQ(find<QLabel>(dialog, "Label1").text(), "to");
            EXPECT_EQ(box(dialog, "Text2").text(), "35");
            expect_selected(dialog, true);
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, what_changes_in_the_form_changes_in_the_window_and_the_other_way_round) {
    open(
        [&](QDialog& dialog) {
            form_->Text1.text = "12";
            form_->Text2.text = "34";
            form_->Label1.caption = "up to";
            EXPECT_EQ(box(dialog, "Text1").text(), "12");
            EXPECT_EQ(box(dialog, "Text2").text(), "34");
            EXPECT_EQ(find<QLabel>(dialog, "Label1").text(), "up to");
            retype(box(dialog, "Text1"), "56");
            retype(box(dialog, "Text2"), "78");
            EXPECT_EQ(form_->Text1.text.get(), "56");
            EXPECT_EQ(form_->Text2.text.get(), "78");
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, only_digits_and_backspace_reach_the_fields) {
    open(
        [&](QDialog& dialog) {
            for (const char* const name : {"Text1", "Text2"}) {
                auto& line = box(dialog, name);
                retype(line, "12");
                for (char key = ' '; key <= '~'; ++key) {
                    if (key >= '0' && key <= '9') continue;
                    press_character(line, QString(QLatin1Char(key)));
                    ASSERT_EQ(line.text(), "12") << name << ", " << key;
                }
                // Among them digits of other scripts.
                for (const char16_t foreign : {u'\u00E4', u'\u20AC', u'\u0663', u'\uFF13'}) {
                    press_character(line, QChar(foreign));
                }
                EXPECT_EQ(line.text(), "12") << name << ", foreign";
                QTest::keyClicks(&line, "34567890");
                EXPECT_EQ(line.text(), "1234567890") << name;
                QTest::keyClick(&line, Qt::Key_Backspace);
                EXPECT_EQ(line.text(), "123456789") << name;
                QTest::keyClick(&line, Qt::Key_Home);
                QTest::keyClick(&line, Qt::Key_Delete);
                EXPECT_EQ(line.text(), "23456789") << name;
            }
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, a_letter_in_the_first_field_does_nothing_not_even_select_the_range) {
    open(
        [&](QDialog& dialog) {
            box(dialog, "Text1").setFocus();
            QTest::keyClicks(&box(dialog, "Text1"), "xyz-");
            EXPECT_EQ(box(dialog, "Text1").text(), "1");
            expect_selected(dialog, true);
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, what_is_pasted_is_taken_if_all_of_it_could_have_been_typed) {
    open(
        [&](QDialog& dialog) {
            auto& line = box(dialog, "Text2");
            for (const char* const pasted : {"letters", "12x", "-5", " 7", "7\n8x", "1.5"}) {
                QGuiApplication::clipboard()->setText(pasted);
                retype(line, "9");
                QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
                EXPECT_EQ(line.text(), "9") << pasted;
                EXPECT_EQ(form_->Text2.text.get(), "9") << pasted;
            }
            QGuiApplication::clipboard()->setText("71");
            retype(line, "1");
            QTest::keyClick(&line, Qt::Key_V, Qt::ControlModifier);
            EXPECT_EQ(line.text(), "171");
            EXPECT_EQ(form_->Text2.text.get(), "171");
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, leaving_a_field_corrects_its_row_whichever_way_it_is_left) {
    const std::vector<std::pair<const char*, const char*>> kCorrections = {{"", "1"},
                                                                           {"999", "240"}};
    const std::vector<std::function<void(QDialog&, QLineEdit&)>> kWays = {
        [](QDialog&, QLineEdit& line) { QTest::keyClick(&line, Qt::Key_Tab); },
        [](QDialog&, QLineEdit& line) { QTest::keyClick(&line, Qt::Key_Tab, Qt::ShiftModifier); },
        [](QDialog& dialog, QLineEdit&) { click_option(dialog, "Option1"); },
        [](QDialog& dialog, QLineEdit&) {
            press_mnemonic(dialog, Qt::Key_M);
            // Until the button is up again, it takes no other press.
            wait_until([&] { return !find<QRadioButton>(dialog, "Option2").isDown(); });
        },
        [](QDialog& dialog, QLineEdit& line) {
            click(dialog, line.objectName() == "Text1" ? "Text2" : "Text1");
        }};
    open(
        [&](QDialog& dialog) {
            for (const char* const name : {"Text1", "Text2"}) {
                for (const auto& [typed, corrected] : kCorrections) {
                    for (std::size_t way = 0; way < kWays.size(); ++way) {
                        auto& line = box(dialog, name);
                        empty(line);
                        QTest::keyClicks(&line, typed);
                        ASSERT_EQ(line.text(), typed);
                        kWays[way](dialog, line);
                        ASSERT_FALSE(line.hasFocus());
                        EXPECT_EQ(line.text(), corrected)
                            << name << ", " << typed << ", way " << way;
                    }
                }
            }
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, the_fields_context_menu_and_another_window_do_not_leave_it) {
    open(
        [&](QDialog& dialog) {
            auto& line = box(dialog, "Text2");
            retype(line, "999");
            QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
            QCoreApplication::sendEvent(&line, &menu);
            QFocusEvent window(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
            QCoreApplication::sendEvent(&line, &window);
            EXPECT_EQ(line.text(), "999");
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, ok_corrects_the_field_that_is_being_typed_in_first) {
    const std::vector<std::function<void(QDialog&)>> kOk = {
        [](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); },
        [](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Enter); },
        [](QDialog& dialog) { press_mnemonic(dialog, Qt::Key_O); },
        [](QDialog& dialog) { click(dialog, "Command1"); }};
    for (std::size_t way = 0; way < kOk.size(); ++way) {
        open([&](QDialog& dialog) {
            retype(box(dialog, "Text1"), "0");
            retype(box(dialog, "Text2"), "999");
            kOk[way](dialog);
        });
        EXPECT_EQ(form_->wanted(), (Range{1, 240})) << "way " << way;
        EXPECT_EQ(form_->Text2.text.get(), "240") << "way " << way;
        EXPECT_TRUE(form_->Option2.selected) << "way " << way;
    }
}

TEST_F(PrintDialog, ok_wants_all_rows_or_the_range_by_mouse_enter_and_mnemonic) {
    open([](QDialog& dialog) { click(dialog, "Command1"); });
    EXPECT_EQ(form_->wanted(), (Range{1, 240}));
    open([](QDialog& dialog) {
        click_option(dialog, "Option2");
        press_mnemonic(dialog, Qt::Key_O);
    });
    EXPECT_EQ(form_->wanted(), (Range{1, 35}));
    open(
        [](QDialog& dialog) {
            retype(box(dialog, "Text1"), "7");
            retype(box(dialog, "Text2"), "71");
        },
        Qt::Key_Return);
    EXPECT_EQ(form_->wanted(), (Range{7, 71}));
    open(
        [](QDialog& dialog) {
            retype(box(dialog, "Text1"), "7");
            click_option(dialog, "Option1");
        },
        Qt::Key_Return);
    EXPECT_EQ(form_->wanted(), (Range{1, 240}));
}

TEST_F(PrintDialog, the_options_are_chosen_by_mouse_arrow_keys_and_mnemonic) {
    open(
        [&](QDialog& dialog) {
            click_option(dialog, "Option2");
            expect_selected(dialog, false);
            click_option(dialog, "Option1");
            expect_selected(dialog, true);
            click_option(dialog, "Option1");
            expect_selected(dialog, true);
            press_mnemonic(dialog, Qt::Key_M);
            EXPECT_TRUE(wait_until([&] { return bool(form_->Option2.selected); }));
            expect_selected(dialog, false);
            press_mnemonic(dialog, Qt::Key_A);
            EXPECT_TRUE(wait_until([&] { return bool(form_->Option1.selected); }));
            expect_selected(dialog, true);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
            expect_selected(dialog, false);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Up);
            expect_selected(dialog, true);
        },
        Qt::Key_Escape);
}

TEST_F(PrintDialog, typing_a_row_selects_the_range) {
    for (const char* const name : {"Text1", "Text2"}) {
        open(
            [&](QDialog& dialog) {
                box(dialog, name).setFocus();
                expect_selected(dialog, true);
                QTest::keyClick(&box(dialog, name), Qt::Key_2);
                expect_selected(dialog, false);
                click_option(dialog, "Option1");
                QTest::keyClick(&box(dialog, name), Qt::Key_Backspace);
                expect_selected(dialog, false);
            },
            Qt::Key_Escape);
    }
}

}  // namespace
}  // namespace memwright::gui
