// What the whole program keeps of what comes from a radio and goes to one.

#include <gmock/gmock.h>

#include <filesystem>

#include "app/notice_texts.h"
#include "app/runs_test.h"

namespace memwright {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

using ProgramArchive = RunsTest;

TEST_F(ProgramArchive, opens_dialog_offers_the_folder_of_the_archive) {
    const auto run = start();
    run->dialogs.names = {std::nullopt};
    run->form.mnuOpen.clicked();
    EXPECT_THAT(run->dialogs.asked.at(0).request.places,
                ElementsAre(folder.file("data/radio images")));
}

TEST_F(ProgramArchive, without_a_data_folder_every_file_is_the_users_own) {
    folders.data.clear();
    const auto run = start_with_a_file();
    run->dialogs.names = {std::nullopt};
    run->form.mnuOpen.clicked();
    EXPECT_THAT(run->dialogs.asked.at(0).request.places, IsEmpty());
    type(*run, "A");
    run->form.mnuSaveOnly.clicked();
    EXPECT_EQ(folder.get("mem.120")[0], 0x14) << "no other name is asked for";
}

TEST_F(ProgramArchive, what_was_read_is_archived) {
    const auto run = start();
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    ASSERT_THAT(archived(), ElementsAre("2026-11-21 12.34.56 read.120"));
    EXPECT_EQ(archived(archived()[0]), bytes(radio::demonstration_memory()));
    EXPECT_EQ(run->form.Text1.text.get(), "");
}

TEST_F(ProgramArchive, a_read_that_does_not_complete_is_not_archived) {
    const auto run = start();
    run->messages.answers = {Answer::ok};
    run->time.after(3s, [&] { run->program.escape_pressed(); });
    run->form.mnuRead.clicked();
    EXPECT_THAT(archived(), IsEmpty());
}

TEST_F(ProgramArchive,
       a_read_whose_closing_frame_misses_a_byte_is_archived_and_completed_by_cancel) {
    const auto run = start({{radio::FaultKind::missing_byte, radio::kClosing, 3}});
    run->messages.answers = {Answer::ok};
    run->time.after(50s, [&] {
        EXPECT_THAT(archived(), ElementsAre("2026-11-21 12.34.56 read.120"));
        run->program.escape_pressed();
    });
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    EXPECT_EQ(archived("2026-11-21 12.34.56 read.120"), bytes(radio::demonstration_memory()));
}

TEST_F(ProgramArchive,
       closing_in_the_closing_exchange_of_a_read_saves_the_table_that_was_asked_about) {
    const auto run = start_with_a_file({{radio::FaultKind::silence, radio::kClosing}});
    std::filesystem::create_directories(folder.file("data/radio images"));
    std::filesystem::copy_file(folder.file("mem.120"), folder.file("data/radio images/my.120"));
    run->program.open_named(folder.file("data/radio images/my.120"));
    type(*run, "A");
    bool closed = false;
    run->window.when_closed = [&] { closed = run->program.close_allowed(); };
    run->messages.answers = {Answer::no, Answer::ok};
    run->messages.leaves_questions_open = true;
    run->dialogs.names = {folder.file("named.120")};
    run->time.after(50s, [&] { run->program.close_allowed(); });
    run->time.after(51s, [&] { run->messages.answer_open_question(Answer::yes); });
    run->form.mnuRead.clicked();
    EXPECT_TRUE(closed);
    EXPECT_EQ(folder.get("named.120")[layout::kLabels], 'A');
    EXPECT_THAT(archived(), testing::Contains("2026-11-21 12.34.56 read.120"));
}

TEST_F(ProgramArchive, what_was_typed_into_a_table_that_a_read_replaces_is_set_aside) {
    const auto run = start_with_a_file();
    run->time.after(5s, [&] { type(*run, "A"); });
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    ASSERT_THAT(archived(),
                ElementsAre("2026-11-21 12.34.56 read.120", "2026-11-21 12.34.56 set aside.120"));
    EXPECT_EQ(archived("2026-11-21 12.34.56 set aside.120")[0], 0x14);
    EXPECT_TRUE(run->program.close_allowed());
    EXPECT_THAT(archived(), SizeIs(2)) << "what was read is there already";
}

TEST_F(ProgramArchive, what_is_about_to_be_written_is_archived_before_the_first_byte) {
    const auto run = start_with_a_file({}, radio::Mode::receive);
    type(*run, "A");
    std::vector<std::string> before_first;
    run->port.sending = [&](const fakes::SimulatedPort::Sent& /*bytes*/) {
        if (before_first.empty()) before_first = archived();
    };
    run->messages.answers = {Answer::ok};
    run->form.mnuWrite.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Write To VR-120 complete.");
    ASSERT_THAT(before_first, ElementsAre("2026-11-21 12.34.56 written.120"));
    EXPECT_EQ(archived(before_first[0])[0], 0x14) << "with what was typed last";
    EXPECT_THAT(archived(), SizeIs(1));
}

TEST_F(ProgramArchive, an_archive_that_cannot_be_written_stands_in_no_transfers_way) {
    folder.put("data", {});
    auto run = start();
    run->messages.answers = {Answer::ok};
    run->form.mnuRead.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Read from VR-120 complete.");
    EXPECT_EQ(run->form.MSFlexGrid1.TextMatrix(1, columns::kTag), "TOWER");
    EXPECT_THAT(waiting(run->program.notices),
                ElementsAre(StartsWith("No copy of the image was kept. Cannot ")));
    EXPECT_EQ(run->form.Text1.text.get(), "");
    EXPECT_THAT(run->messages.shown, SizeIs(1));

    run = start_with_a_file({}, radio::Mode::receive);
    run->messages.answers = {Answer::ok};
    run->form.mnuWrite.clicked();
    EXPECT_EQ(run->form.Label1.caption.get(), "Write To VR-120 complete.");
    EXPECT_THAT(waiting(run->program.notices),
                ElementsAre(StartsWith("No copy of the image was kept. Cannot ")));
}

}  // namespace
}  // namespace memwright
