// The message boxes on the screen: icons, buttons, keys, and texts as they are.

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <vector>

#include "gui/support/appearance.h"
#include "gui/support/robot.h"
#include "qt/message_boxes.h"

namespace memwright::gui {
namespace {

using ::testing::IsEmpty;

Message asking(Buttons buttons) { return {.text = "a", .title = "b", .buttons = buttons}; }

class MessageBoxes : public ::testing::Test {
  protected:
    MessageBoxes() { owner_.show(); }

    Answer answer_to(const Message& message, Reply reply) {
        Answer answer = Answer::ok;
        seen_ = answering({std::move(reply)}, [&] { answer = boxes_.show(message); });
        return answer;
    }

    QWidget owner_;
    qt::QtMessageBox boxes_{owner_};
    std::vector<Seen> seen_;
};

TEST_F(MessageBoxes, every_button_gives_its_answer) {
    const Message three = asking(Buttons::yes_no_cancel);
    EXPECT_EQ(answer_to(three, press(QMessageBox::Yes)), Answer::yes);
    EXPECT_EQ(answer_to(three, press(QMessageBox::No)), Answer::no);
    EXPECT_EQ(answer_to(three, press(QMessageBox::Cancel)), Answer::cancel);
    const Message two = asking(Buttons::ok_cancel);
    EXPECT_EQ(answer_to(two, press(QMessageBox::Ok)), Answer::ok);
    EXPECT_EQ(answer_to(two, press(QMessageBox::Cancel)), Answer::cancel);
    const Message yes_no = asking(Buttons::yes_no);
    EXPECT_EQ(answer_to(yes_no, press(QMessageBox::Yes)), Answer::yes);
    EXPECT_EQ(answer_to(yes_no, press(QMessageBox::No)), Answer::no);
}

TEST_F(MessageBoxes, closing_a_box_is_its_most_careful_answer) {
    const auto close = [](QDialog& box) { box.close(); };
    for (const Reply& reply : {Reply(close), press_key(Qt::Key_Escape)}) {
        EXPECT_EQ(answer_to(asking(Buttons::ok), reply), Answer::ok);
        EXPECT_EQ(answer_to(asking(Buttons::ok_cancel), reply), Answer::cancel);
        EXPECT_EQ(answer_to(asking(Buttons::yes_no), reply), Answer::no);
        EXPECT_EQ(answer_to(asking(Buttons::yes_no_cancel), reply), Answer::cancel);
    }
}

// A box that is asked without waiting.
class AskedMessageBoxes : public MessageBoxes {
  protected:
    QMessageBox* box() { return owner_.findChild<QMessageBox*>("MessageBox"); }
    void ask(Buttons buttons) {
        open_ = boxes_.ask(asking(buttons), [this](Answer answer) { answers_.push_back(answer); });
        ASSERT_NE(box(), nullptr);
        EXPECT_TRUE(box()->isVisible());
        EXPECT_TRUE(box()->isModal());
        EXPECT_THAT(answers_, IsEmpty());
    }
    // What was to be deleted is.
    void expect_gone() {
        EXPECT_TRUE(wait_until([this] { return box() == nullptr; }));
    }

    Connection open_;
    std::vector<Answer> answers_;
};

TEST_F(AskedMessageBoxes, stay_open_and_tell_the_answer_when_it_comes) {
    ask(Buttons::yes_no);
    QCoreApplication::processEvents();
    EXPECT_THAT(answers_, IsEmpty());
    press(QMessageBox::Yes)(*box());
    EXPECT_THAT(answers_, ::testing::ElementsAre(Answer::yes));
    open_.reset();
    expect_gone();
    EXPECT_THAT(answers_, ::testing::SizeIs(1));
}

TEST_F(AskedMessageBoxes, go_without_an_answer_when_nobody_wants_one) {
    ask(Buttons::yes_no_cancel);
    open_.reset();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    expect_gone();
    EXPECT_THAT(answers_, IsEmpty());
}

TEST_F(AskedMessageBoxes, may_go_while_they_tell_their_answer) {
    Answer answer = Answer::ok;
    open_ = boxes_.ask(asking(Buttons::yes_no_cancel), [&](Answer given) {
        open_.reset();
        answer = given;
    });
    press_key(Qt::Key_Escape)(*box());
    EXPECT_EQ(answer, Answer::cancel);
    expect_gone();
}

TEST_F(MessageBoxes, icons_are_those_that_were_asked_for) {
    const std::pair<Icon, QMessageBox::Icon> icons[] = {
        {Icon::none, QMessageBox::NoIcon},
        {Icon::information, QMessageBox::Information},
        {Icon::question, QMessageBox::Question},
        {Icon::exclamation, QMessageBox::Warning},
        {Icon::critical, QMessageBox::Critical}};
    for (const auto& [asked, shown] : icons) {
        answer_to({.text = "a", .title = "Save As", .icon = asked}, press_key(Qt::Key_Escape));
        EXPECT_EQ(seen_[0].icon, shown);
        EXPECT_EQ(seen_[0].title, "Save As");
    }
}

TEST_F(MessageBoxes, texts_are_no_markup_and_both_kinds_of_line_breaks_break_lines) {
    const auto check = [](QDialog& box) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(box).textFormat(), Qt::PlainText);
    };
    answer_to({.text = "<b>1</b> & 2\r\n3\n4", .title = "t"},
              look(check, press_key(Qt::Key_Escape)));
    EXPECT_EQ(seen_[0].text, "<b>1</b> & 2\n3\n4");
}

TEST_F(MessageBoxes, lines_are_broken_where_the_text_has_it) {
    const std::string line =
        "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.";
    const auto check = [&](QDialog& box) {
        const auto& label = *box.findChild<QLabel*>("qt_msgbox_label");
        EXPECT_THAT(clipped_texts(box), IsEmpty());
        EXPECT_LT(label.heightForWidth(label.width()), label.fontMetrics().lineSpacing() * 7 / 2);
    };
    answer_to({.text = line + "\r\nb\r\nc", .title = "t", .buttons = Buttons::ok_cancel},
              look(check, press_key(Qt::Key_Escape)));
}

TEST_F(MessageBoxes, no_text_is_clipped_in_either_palette) {
    std::string text = "Cannot open COM 1 (/dev/ttyUSB0): permission denied.";
    for (int i = 0; i < 12; ++i) text += " Your user is not in the group 'dialout'.";
    for (const bool dark : {false, true}) {
        std::optional<WithPalette> palette;
        if (dark) palette.emplace(dark_palette());
        const auto check = [&](QDialog& box) {
            EXPECT_THAT(clipped_texts(box), IsEmpty());
            auto& label = *box.findChild<QLabel*>("qt_msgbox_label");
            const QImage shown = picture_of(label, label.rect());
            EXPECT_GE(contrast(ink_of(shown), background_of(shown)), 7);
        };
        for (const Buttons buttons : {Buttons::ok, Buttons::yes_no_cancel}) {
            answer_to({.text = text, .title = "t", .buttons = buttons, .icon = Icon::critical},
                      look(check, press_key(Qt::Key_Escape)));
        }
    }
}

TEST_F(MessageBoxes, the_text_can_be_selected_to_be_sent_to_somebody) {
    const auto check = [](QDialog& box) {
        EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).textInteractionFlags() &
                    Qt::TextSelectableByMouse);
    };
    answer_to({.text = "a", .title = "t"}, look(check, press_key(Qt::Key_Escape)));
}

TEST_F(MessageBoxes, enter_presses_the_first_button) {
    EXPECT_EQ(answer_to(asking(Buttons::ok_cancel), press_key(Qt::Key_Return)), Answer::ok);
    EXPECT_EQ(answer_to(asking(Buttons::yes_no_cancel), press_key(Qt::Key_Return)), Answer::yes);
}

}  // namespace
}  // namespace memwright::gui
