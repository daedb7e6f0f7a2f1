// The rules of notices: what waits in which order, what counts once, what stays in the list.

#include "app/notices.h"

#include <gmock/gmock.h>

#include "app/idle_platform.h"
#include "app/notice_texts.h"

namespace memwright {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NoticesTest : public testing::Test {
  protected:
    std::string current() const {
        const auto number = notices.current();
        return number ? notices.of_this_run()[*number].notice.text : "(none)";
    }

    fakes::IdleLoop clock;
    Notices notices{clock};
    std::vector<std::string> announced;
    int changes = 0;
    const std::vector<Connection> connections{
        notices.came.connect([this](const Notice& notice) { announced.push_back(notice.text); }),
        notices.changed.connect([this] { ++changes; })};
};

TEST_F(NoticesTest, wait_in_the_order_in_which_they_came_until_each_is_dismissed) {
    notices.add({.text = "one"});
    notices.add({.text = "two"});
    notices.add({.text = "three"});
    for (const char* const text : {"one", "two", "three"}) {
        EXPECT_EQ(current(), text);
        notices.dismiss();
    }
    EXPECT_EQ(notices.waiting(), 0U);
    EXPECT_EQ(current(), "(none)");
    EXPECT_THAT(noted(notices), ElementsAre("one", "two", "three")) << "the list keeps them";
}

TEST_F(NoticesTest, are_told_as_they_come_and_changes_are_signalled) {
    notices.add({.text = "one"});
    notices.add({.text = "two"});
    EXPECT_THAT(announced, ElementsAre("one", "two"));
    EXPECT_EQ(changes, 2);
    notices.dismiss();
    EXPECT_EQ(changes, 3);
    notices.dismiss();
    notices.dismiss();
    EXPECT_EQ(changes, 4) << "there was none any more";
    EXPECT_THAT(announced, ElementsAre("one", "two"));
}

TEST_F(NoticesTest, carry_the_time_at_which_they_came) {
    notices.add({.text = "one"});
    EXPECT_EQ(notices.of_this_run()[0].when, clock.date_and_time());
}

TEST_F(NoticesTest, the_same_one_counts_once_keeps_its_place_and_is_not_told_again) {
    notices.add({.text = "one"});
    notices.add({.text = "two"});
    notices.add({.text = "one"});
    EXPECT_THAT(waiting(notices), ElementsAre("one", "two"));
    EXPECT_THAT(noted(notices), ElementsAre("one", "two"));
    EXPECT_THAT(announced, ElementsAre("one", "two"));
}

TEST_F(NoticesTest, the_same_one_takes_the_later_action) {
    std::string acted;
    notices.add({.text = "one", .act = [&] { acted += "first "; }});
    notices.add({.text = "one", .act = [&] { acted += "second "; }});
    notices.act(0);
    EXPECT_EQ(acted, "second ");
}

TEST_F(NoticesTest, one_that_was_dismissed_waits_anew_when_it_comes_again) {
    notices.add({.text = "one"});
    notices.dismiss();
    notices.add({.text = "one"});
    EXPECT_THAT(waiting(notices), ElementsAre("one"));
    EXPECT_THAT(announced, ElementsAre("one", "one"));
}

TEST_F(NoticesTest, one_about_the_same_replaces_what_was_said_and_comes_last) {
    notices.add({.text = "3 blocks", .about = "read"});
    notices.add({.text = "other"});
    notices.add({.text = "5 blocks", .about = "read"});
    EXPECT_THAT(waiting(notices), ElementsAre("other", "5 blocks"));
    EXPECT_THAT(noted(notices), ElementsAre("3 blocks", "other", "5 blocks"));
    EXPECT_THAT(announced, ElementsAre("3 blocks", "other", "5 blocks"));
}

TEST_F(NoticesTest, what_differs_in_details_alone_is_replaced_too) {
    notices.add({.text = "2 lines", .about = "import", .details = "1, 2"});
    notices.add({.text = "2 lines", .about = "import", .details = "3, 4"});
    ASSERT_EQ(notices.waiting(), 1U);
    EXPECT_EQ(notices.of_this_run()[*notices.current()].notice.details, "3, 4");
}

TEST_F(NoticesTest, one_that_no_longer_holds_waits_no_longer_and_stays_in_the_list) {
    notices.add({.text = "doubt", .about = "read"});
    notices.add({.text = "other"});
    notices.withdraw("read");
    EXPECT_THAT(waiting(notices), ElementsAre("other"));
    EXPECT_THAT(noted(notices), ElementsAre("doubt", "other"));
}

TEST_F(NoticesTest, what_the_user_has_seen_is_in_the_list_alone) {
    notices.record({.text = "seen"});
    EXPECT_THAT(waiting(notices), IsEmpty());
    EXPECT_THAT(noted(notices), ElementsAre("seen"));
    EXPECT_THAT(announced, IsEmpty());
    EXPECT_EQ(changes, 1);
}

TEST_F(NoticesTest, an_action_can_be_taken_while_it_holds_also_after_the_notice_was_dismissed) {
    int acted = 0;
    notices.add({.text = "one", .about = "a", .action = "&Go", .act = [&] { ++acted; }});
    EXPECT_TRUE(notices.can_act(0));
    notices.act(0);
    EXPECT_EQ(notices.waiting(), 1U) << "whoever gave it withdraws it";
    notices.dismiss();
    notices.act(0);
    EXPECT_EQ(acted, 2);
    notices.withdraw("a");
    EXPECT_FALSE(notices.can_act(0));
    notices.act(0);
    EXPECT_EQ(acted, 2);
}

TEST_F(NoticesTest, without_an_action_or_a_notice_nothing_is_done) {
    notices.add({.text = "one"});
    EXPECT_FALSE(notices.can_act(0));
    EXPECT_FALSE(notices.can_act(1));
    notices.act(0);
    notices.act(1);
    notices.withdraw("what was never said");
    EXPECT_THAT(waiting(notices), ElementsAre("one"));
}

TEST_F(NoticesTest, an_action_may_bring_notices_and_withdraw_its_own) {
    notices.add({.text = "undo?", .about = "change", .act = [&] {
                     notices.withdraw("change");
                     for (int i = 0; i < 100; ++i) notices.add({.text = std::to_string(i)});
                 }});
    notices.act(0);
    EXPECT_EQ(notices.waiting(), 100U);
    EXPECT_EQ(current(), "0");
}

TEST(OneLine, has_spaces_where_a_text_has_line_breaks) {
    EXPECT_EQ(one_line("a\nb\r\nc\n\n\nd"), "a b c d");
    EXPECT_EQ(one_line("\r\n a \n b\n"), " a  b");
    EXPECT_EQ(one_line(""), "");
}

}  // namespace
}  // namespace memwright
