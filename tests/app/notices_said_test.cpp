// What the whole program gives notice of, and that nothing of it is where the original texts are.

#include <gmock/gmock.h>

#include "app/notice_texts.h"
#include "app/runs_test.h"
#include "link/doubtful_blocks.h"

namespace memwright {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DoubtfulReads : public RunsTest {
  protected:
    static radio::Fault wrong_sum(int block) { return {radio::FaultKind::checksum, block}; }

    static void read(Running& run) {
        run.messages.answers = {Answer::ok};
        run.form.mnuRead.clicked();
    }
    static const Notice& current(Running& run) {
        const Notices& notices = run.program.notices;
        return notices.of_this_run().at(notices.current().value()).notice;
    }
};

TEST_F(DoubtfulReads, are_one_notice_that_names_the_memories) {
    const auto run = start({wrong_sum(0), wrong_sum(100)});
    read(*run);
    EXPECT_THAT(waiting(run->program.notices),
                ElementsAre("2 blocks came with a wrong checksum. Doubtful: " +
                            contents_of_block(0) + "; " + contents_of_block(100) + "."));
    const auto lines = doubts_about({0, 100});
    EXPECT_EQ(current(*run).details, lines[0] + "\n" + lines[1]);
    EXPECT_EQ(run->form.Text1.text.get(), "");
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_THAT(run->messages.shown, SizeIs(1)) << "nobody is stopped by it";
}

TEST_F(DoubtfulReads, with_many_blocks_name_a_few_and_all_in_the_details) {
    const auto run = start({wrong_sum(1), wrong_sum(2), wrong_sum(3), wrong_sum(230)});
    read(*run);
    EXPECT_THAT(current(*run).text, StartsWith("4 blocks came with a wrong checksum. "));
    EXPECT_THAT(current(*run).text, testing::EndsWith("; and more."));
    EXPECT_THAT(current(*run).details, HasSubstr("Block 230 "));
}

TEST_F(DoubtfulReads, lead_to_the_first_memory_that_is_doubtful) {
    const auto run = start({wrong_sum(100), wrong_sum(230)});
    read(*run);
    int focused = 0;
    const auto focus = run->form.MSFlexGrid1.focus_wanted.connect([&] { ++focused; });
    run->program.act_on_notice(*run->program.notices.current());
    // Block 100 is bytes 3200 to 3231, the labels of memories 106 to 111.
    EXPECT_EQ(run->form.MSFlexGrid1.Row(), 107);
    EXPECT_EQ(run->form.MSFlexGrid1.Col(), columns::kTag);
    EXPECT_EQ(focused, 1);
}

TEST_F(DoubtfulReads, lead_to_the_frequency_where_that_is_doubtful_and_leave_the_cells_editor) {
    const auto run = start({wrong_sum(3)});
    read(*run);
    run->form.TxtGrid.visible = true;
    run->program.act_on_notice(*run->program.notices.current());
    EXPECT_EQ(run->form.MSFlexGrid1.Row(), 25);
    EXPECT_EQ(run->form.MSFlexGrid1.Col(), columns::kFreq);
    EXPECT_FALSE(run->form.TxtGrid.visible);
}

TEST_F(DoubtfulReads, of_settings_alone_lead_nowhere) {
    const auto run = start({wrong_sum(230)});
    read(*run);
    EXPECT_THAT(waiting(run->program.notices), ElementsAre(doubts_about({230})[0]));
    EXPECT_FALSE(run->program.notices.can_act(*run->program.notices.current()));
}

TEST_F(DoubtfulReads, lead_nowhere_while_the_table_is_locked) {
    const auto run = start({wrong_sum(100)});
    read(*run);
    run->form.MSFlexGrid1.set_row(1);
    run->form.DisableGui();
    run->program.act_on_notice(*run->program.notices.current());
    EXPECT_EQ(run->form.MSFlexGrid1.Row(), 1);
}

TEST_F(DoubtfulReads, are_forgotten_when_another_table_is_opened) {
    const auto run = start_with_a_file({wrong_sum(0)});
    read(*run);
    ASSERT_THAT(waiting(run->program.notices), SizeIs(1));
    run->messages.answers = {Answer::no};
    run->program.open_named(folder.file("mem.120"));
    EXPECT_THAT(waiting(run->program.notices), IsEmpty());
    EXPECT_FALSE(run->program.notices.can_act(0));
}

TEST_F(DoubtfulReads, are_forgotten_with_the_next_read_that_is_complete_and_not_before) {
    const auto run = start({wrong_sum(0)});
    read(*run);
    ASSERT_THAT(waiting(run->program.notices), SizeIs(1));
    run->time.after(3s, [&] { run->program.escape_pressed(); });
    read(*run);
    EXPECT_THAT(waiting(run->program.notices), SizeIs(1)) << "the table is the first read's";
    read(*run);
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_THAT(waiting(run->program.notices), IsEmpty());
}

class FirstStepsTest : public RunsTest {
  protected:
    static constexpr const char* kSetting = "Memwright/Notices/FirstSteps";
};

TEST_F(FirstStepsTest, are_told_at_the_first_start_until_they_are_dismissed) {
    const auto run = start();
    run->program.say_first_steps();
    EXPECT_THAT(waiting(run->program.notices), ElementsAre(StartsWith("To begin, read the ")));
    EXPECT_FALSE(run->settings.values.contains(kSetting));
    run->program.notices.dismiss();
    EXPECT_EQ(run->settings.values.at(kSetting), "dismissed");
}

TEST_F(FirstStepsTest, are_done_with_as_soon_as_there_is_an_image) {
    const auto run = start();
    run->program.say_first_steps();
    run->program.open_named(folder.put("zeros.120", Bytes(layout::kImageSize, 0)));
    EXPECT_THAT(waiting(run->program.notices), IsEmpty());
    EXPECT_EQ(run->settings.values.at(kSetting), "dismissed");
}

TEST_F(FirstStepsTest, are_not_told_to_who_starts_with_a_file_nor_again) {
    const auto run = start_with_a_file();
    run->program.say_first_steps();
    EXPECT_THAT(noted(run->program.notices), IsEmpty());
    EXPECT_EQ(run->settings.values.at(kSetting), "dismissed");

    const auto next = start();
    next->settings.values[kSetting] = "dismissed";
    next->program.say_first_steps();
    EXPECT_THAT(noted(next->program.notices), IsEmpty());
}

}  // namespace
}  // namespace memwright
