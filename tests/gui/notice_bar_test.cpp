// The bar that shows notices.

#include <gmock/gmock.h>

#include <QAccessible>

#include "base/error.h"
#include "gui/support/appearance.h"
#include "gui/support/notice_test.h"

namespace memwright::gui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NoticeBarTest : public NoticeTest {
  protected:
    // All that the form's lengths give.
    struct Lengths {
        double height, grid, label_top, text_top;
        friend bool operator==(const Lengths&, const Lengths&) = default;
    };
    Lengths lengths() {
        return {window().height(), form().MSFlexGrid1.height, form().Label1.top, form().Text1.top};
    }
    int whole_height() { return window().frameGeometry().height(); }
};

TEST_F(NoticeBarTest, is_not_there_without_a_notice_and_takes_no_room) {
    EXPECT_FALSE(shown());
    EXPECT_FALSE(area().isVisible());
    press(Qt::Key_F6);
    EXPECT_FALSE(shown());
}

TEST_F(NoticeBarTest, makes_the_window_higher_and_leaves_the_forms_lengths_as_they_were) {
    const Lengths before = lengths();
    const int height = whole_height();
    const QRect canvas = widget<QWidget>("Canvas").geometry();
    add("one");
    ASSERT_TRUE(shown());
    EXPECT_EQ(whole_height(), height + area().height());
    EXPECT_GT(area().height(), 20);
    EXPECT_EQ(lengths(), before);
    EXPECT_EQ(widget<QWidget>("Canvas").geometry(), canvas);
    EXPECT_EQ(area().geometry().top(), canvas.bottom() + 1);
    notices().dismiss();
    EXPECT_FALSE(shown());
    EXPECT_EQ(whole_height(), height);
    EXPECT_EQ(lengths(), before);
}

TEST_F(NoticeBarTest, the_lengths_follow_the_window_below_the_bar_as_they_do_without) {
    add("one");
    window().resize(900, 500 + area().height());
    ASSERT_TRUE(wait_until([&] { return widget<QWidget>("Canvas").width() == 900; }));
    const Lengths with = lengths();
    notices().dismiss();
    EXPECT_EQ(window().size(), QSize(900, 500));
    EXPECT_EQ(lengths(), with);
}

TEST_F(NoticeBarTest, the_stored_height_is_without_the_bar) {
    const double height = window().height();
    add("one");
    static_cast<QWidget&>(window()).close();
    EXPECT_EQ(std::stod(setting("Height")), height);
    restart();
    EXPECT_EQ(window().height(), height);
    EXPECT_FALSE(shown());
}

TEST_F(NoticeBarTest, a_maximised_window_stays_as_it_is_and_the_form_gets_lower) {
    window().showMaximized();
    ASSERT_TRUE(wait_until([&] { return window().isMaximized(); }));
    QCoreApplication::processEvents();
    const int height = whole_height();
    const double grid_height = form().MSFlexGrid1.height;
    add("one");
    QCoreApplication::processEvents();
    EXPECT_EQ(whole_height(), height);
    EXPECT_LT(form().MSFlexGrid1.height, grid_height);
    const QRect label = widget<QWidget>("Label1").geometry();
    EXPECT_LE(label.bottom(), widget<QWidget>("Canvas").height()) << "the status line is in sight";
    notices().dismiss();
    QCoreApplication::processEvents();
    EXPECT_EQ(form().MSFlexGrid1.height, grid_height);
}

TEST_F(NoticeBarTest, a_window_that_reaches_the_edge_of_the_screen_does_not_grow_beyond_it) {
    const QRect screen = window().screen()->availableGeometry();
    window().move(window().x(), screen.bottom() + 1 - whole_height());
    QCoreApplication::processEvents();
    const Lengths before = lengths();
    const int bottom = window().frameGeometry().bottom();
    ASSERT_EQ(bottom, screen.bottom());
    add("one");
    QCoreApplication::processEvents();
    EXPECT_EQ(window().frameGeometry().bottom(), bottom);
    EXPECT_EQ(lengths().height, before.height);
    EXPECT_LE(widget<QWidget>("Label1").geometry().bottom(), widget<QWidget>("Canvas").height());
    notices().dismiss();
    QCoreApplication::processEvents();
    EXPECT_EQ(lengths(), before);
}

TEST_F(NoticeBarTest, the_smallest_window_is_higher_by_the_bar_too) {
    add("one");
    window().resize(10, 10);
    EXPECT_EQ(window().size(), QSize(580, 340 + area().height()));
    notices().dismiss();
    EXPECT_EQ(window().minimumSize(), QSize(580, 340));
    EXPECT_EQ(window().size(), QSize(580, 340));
}

TEST_F(NoticeBarTest, shows_one_after_the_other_and_how_many_there_are) {
    add("one");
    EXPECT_EQ(text(), "one");
    EXPECT_FALSE(widget<QLabel>("NoticeCount").isVisible());
    add("two");
    add("three");
    EXPECT_EQ(text(), "one");
    EXPECT_EQ(widget<QLabel>("NoticeCount").text(), "1 of 3");
    QTest::mouseClick(&button("NoticeDismiss"), Qt::LeftButton);
    EXPECT_EQ(text(), "two");
    EXPECT_EQ(widget<QLabel>("NoticeCount").text(), "1 of 2");
    QTest::mouseClick(&button("NoticeDismiss"), Qt::LeftButton);
    QTest::mouseClick(&button("NoticeDismiss"), Qt::LeftButton);
    EXPECT_FALSE(shown());
}

TEST_F(NoticeBarTest, f6_goes_to_it_and_back_and_takes_the_keys_from_nobody_by_itself) {
    open_some_image();
    widget<QPushButton>("Command3").setFocus();
    add("one");
    EXPECT_EQ(focused(), "Command3");
    press(Qt::Key_F6);
    EXPECT_EQ(focused(), "NoticeDismiss");
    press(Qt::Key_F6);
    EXPECT_EQ(focused(), "Command3");
    EXPECT_TRUE(shown());
}

TEST_F(NoticeBarTest, f6_leaves_the_editor_of_a_cell_with_what_was_typed) {
    open_some_image();
    form().MSFlexGrid1.set_col(1);
    add("one");
    press(Qt::Key_X);
    ASSERT_EQ(focused(), "TxtGrid");
    press(Qt::Key_F6);
    EXPECT_EQ(focused(), "NoticeDismiss");
    EXPECT_FALSE(widget<QWidget>("TxtGrid").isVisible());
    EXPECT_EQ(form().MSFlexGrid1.TextMatrix(1, 1).substr(0, 1), "X");
    press(Qt::Key_Escape);
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(NoticeBarTest, enter_does_what_the_notice_offers) {
    open_some_image();
    int acted = 0;
    notices().add({.text = "one", .action = "&Go to Memory", .act = [&] {
                       ++acted;
                       form().MSFlexGrid1.focus_wanted();
                   }});
    press(Qt::Key_F6);
    EXPECT_EQ(focused(), "NoticeAction");
    press(Qt::Key_Return);
    EXPECT_EQ(acted, 1);
    EXPECT_EQ(focused(), "MSFlexGrid1");
    EXPECT_TRUE(shown()) << "it stays until it is dismissed";
    QTest::keyClick(&window(), Qt::Key_G, Qt::AltModifier);
    EXPECT_TRUE(wait_until([&] { return acted == 2; }));
}

TEST_F(NoticeBarTest, an_action_that_fails_is_reported_and_the_program_goes_on) {
    notices().add(
        {.text = "one", .action = "&Undo", .act = [] { throw Error("It cannot be undone."); }});
    press(Qt::Key_F6);
    const auto seen = answering({press_key(Qt::Key_Return)}, [&] { press(Qt::Key_Return); });
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].text, "It cannot be undone.");
}

TEST_F(NoticeBarTest, escape_in_it_dismisses_one_after_the_other_and_then_gives_the_keys_back) {
    open_some_image();
    add("one");
    notices().add({.text = "two", .action = "&Undo", .act = [] {}});
    press(Qt::Key_F6);
    press(Qt::Key_Escape);
    EXPECT_EQ(text(), "two");
    EXPECT_TRUE(bar().isAncestorOf(QApplication::focusWidget()));
    press(Qt::Key_Escape);
    EXPECT_FALSE(shown());
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(NoticeBarTest, escape_elsewhere_means_what_it_always_has) {
    open_some_image();
    add("one");
    form().TransferButton.visible = true;
    int cancelled = 0;
    const auto clicks = form().TransferButton.clicked.connect([&] { ++cancelled; });
    press(Qt::Key_Escape);
    EXPECT_EQ(cancelled, 1);
    EXPECT_TRUE(shown());
    press(Qt::Key_F6);
    press(Qt::Key_Escape);
    EXPECT_EQ(cancelled, 1) << "the notice was meant";
    EXPECT_FALSE(shown());
}

TEST_F(NoticeBarTest, a_notice_that_no_longer_holds_gives_the_keys_back_too) {
    open_some_image();
    notices().add({.text = "one", .about = "it"});
    press(Qt::Key_F6);
    notices().withdraw("it");
    EXPECT_FALSE(shown());
    EXPECT_EQ(focused(), "MSFlexGrid1");
}

TEST_F(NoticeBarTest, tab_visits_it_after_everything_else) {
    open_some_image();
    notices().add({.text = "one", .action = "&Undo", .act = [] {}});
    std::vector<std::string> visited;
    do {
        press(Qt::Key_Tab);
        visited.push_back(focused());
    } while (focused() != "MSFlexGrid1" && visited.size() < 20);
    EXPECT_THAT(visited,
                ElementsAre("Command2", "Command1", "Command3", "Command4", "Command5", "Text1",
                            "NoticeAction", "NoticeListButton", "NoticeDismiss", "MSFlexGrid1"));
}

TEST_F(NoticeBarTest,
       a_text_that_is_too_long_or_has_markup_or_breaks_is_one_plain_line_with_a_tip) {
    const std::string words = "<b>all</b> & more\nof it ";
    std::string text_of_it = words;
    for (int i = 0; i < 50; ++i) text_of_it += "and more ";
    add(text_of_it);
    auto& label = widget<QLabel>("NoticeText");
    EXPECT_LT(label.width(), window().QWidget::width());
    EXPECT_EQ(text().find("<b>all</b> & more of it and"), 0U);
    EXPECT_TRUE(label.toolTip().contains("&lt;b&gt;all&lt;/b&gt; &amp; more of it and"));
    auto clipped = clipped_texts(bar());
    std::erase(clipped, "NoticeText");
    EXPECT_THAT(clipped, IsEmpty());
}

TEST_F(NoticeBarTest, a_screen_reader_is_told_what_came_last_in_the_role_of_a_notification) {
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&bar());
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::Notification);
    add("one");
    EXPECT_EQ(spoken->text(QAccessible::Name), "Notice: one");
    add("two\nlines");
    EXPECT_EQ(spoken->text(QAccessible::Name), "Notice: two lines");
    notices().dismiss();
    EXPECT_EQ(spoken->text(QAccessible::Name), "Notice: two lines");
}

TEST_F(NoticeBarTest, can_be_read_in_a_dark_palette) {
    const WithPalette dark(dark_palette());
    add("The text of a notice");
    QCoreApplication::processEvents();
    auto& label = widget<QLabel>("NoticeText");
    const QImage picture = picture_of(label, label.rect());
    EXPECT_GT(contrast(background_of(picture), ink_of(picture)), 4.5);
    EXPECT_LT(background_of(picture).lightness(), 128);
}

TEST_F(NoticeBarTest, from_right_to_left_the_text_stands_on_the_right) {
    window().setLayoutDirection(Qt::RightToLeft);
    add("one");
    QCoreApplication::processEvents();
    EXPECT_GT(widget<QLabel>("NoticeText").geometry().left(),
              button("NoticeDismiss").geometry().right());
}

class FirstStart : public WindowTest {};

TEST_F(FirstStart, says_how_to_begin_once) {
    QFile::remove(qt::from_file_name(folder_.file("settings/Memwright/Memwright.ini")));
    start();
    ASSERT_TRUE(wait_until([&] { return widget<QWidget>("NoticeBar").isVisible(); }));
    EXPECT_TRUE(widget<QLabel>("NoticeText").text().startsWith("To begin, "));
    EXPECT_EQ(window().height(), 7050);
    program().notices.dismiss();
    restart();
    QCoreApplication::processEvents();
    EXPECT_FALSE(widget<QWidget>("NoticeBar").isVisible());
}

}  // namespace
}  // namespace memwright::gui
