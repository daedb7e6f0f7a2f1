#include "link/clone_read.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "link/clone_bench.h"
#include "table/columns.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::vector<std::string> kPortSetUp = {"CommPort = 1",         "Settings = \"9600,E,8,1\"",
                                             "DTREnable = True",     "EOFEnable = False",
                                             "Handshaking = 0",      "InBufferSize = 30000",
                                             "InputLen = 0",         "InputMode = 1",
                                             "NullDiscard = False",  "OutBufferSize = 30000",
                                             "ParityReplace = \"\"", "RThreshold = 8",
                                             "RTSEnable = True",     "SThreshold = 0"};

std::vector<std::string> with_set_up(std::vector<std::string> before,
                                     const std::vector<std::string>& after) {
    before.insert(before.end(), kPortSetUp.begin(), kPortSetUp.end());
    before.insert(before.end(), after.begin(), after.end());
    return before;
}

std::vector<std::string> first(const std::vector<std::string>& all, std::size_t count) {
    return {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(std::min(count, all.size()))};
}

std::vector<std::string> last(const std::vector<std::string>& all, std::size_t count) {
    return {all.end() - static_cast<std::ptrdiff_t>(std::min(count, all.size())), all.end()};
}

std::int32_t byte_sum(const MemoryImage& image) {
    return std::accumulate(image.bytes().begin(), image.bytes().end(), std::int32_t{0});
}

// What an earlier transfer left in the status line and window.
void leave_traces(CloneBench& bench) {
    bench.Text1.text = "old\r\n";
    bench.Label1.caption = "old";
    bench.journal.clear();
}

TEST(CloneRead, the_instructions_come_once_the_port_is_set_up_and_before_anything_is_locked) {
    CloneBench bench(sending());
    leave_traces(bench);
    EXPECT_EQ(bench.click_read(), "");
    const auto expected =
        with_set_up({"Text1 \"\"", "Label1 \"\""},
                    {"box Read From VR-120", "DisableGui", "PortOpen = True",
                     "Label1 \"Listening...\"", "Input of 8", "Output of 3", "Input of 41"});
    EXPECT_EQ(first(bench.journal, expected.size()), expected);
}

TEST(CloneRead, the_instructions_tell_three_steps) {
    CloneBench bench(sending());
    bench.click_read();
    ASSERT_EQ(bench.messages.shown.size(), 1U);
    const Message& box = bench.messages.shown.front();
    EXPECT_EQ(box.title, "Read From VR-120");
    EXPECT_EQ(box.text,
              "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\r\n"
              "2. Click OK to close this box.\r\n"
              "3. Press [Mode] on the VR-120 to start the read.");
    EXPECT_EQ(box.buttons, Buttons::ok_cancel);
}

TEST(CloneRead, cancel_in_the_instructions_only_clears_the_status_and_shows_the_table_anew) {
    CloneBench bench(sending());
    bench.open_file(image_of_user());
    leave_traces(bench);
    const auto before = bench.kept();
    bench.grid.set_text(640, columns::kMasked, "True");
    bench.messages.while_shown = [&] {
        bench.journal.emplace_back("box");
        bench.Label1.caption = "while the box was open";
    };
    bench.journal.clear();
    EXPECT_EQ(bench.run({Answer::cancel}, [&] { bench.read.mnuRead_Click(); }), "");
    EXPECT_THAT(bench.journal,
                ElementsAreArray(with_set_up(
                    {"Text1 \"\"", "Label1 \"\""},
                    {"box", "Label1 \"while the box was open\"", "Label1 \"\"", "table"})));
    EXPECT_EQ(bench.port.openings, 0);
    EXPECT_EQ(bench.kept(), before);
    bench.expect_idle();
    bench.settle();
    EXPECT_THAT(bench.radio.report().transfers, IsEmpty());
}

TEST(CloneRead, it_ends_by_closing_the_port_then_unlocking_the_window_then_showing_the_table) {
    CloneBench bench(sending());
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_THAT(last(bench.journal, 8),
                ElementsAre("Label1 \"Reading from VR-120: 100% complete...\"", "Output of 3",
                            "Input of 11", "Output of 3", "PortOpen = False",
                            "Label1 \"Read from VR-120 complete.\"", "EnableGui", "table"));
    EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "EnableGui"));
    bench.expect_idle();
}

TEST(CloneRead, the_radio_is_sent_nothing_but_acknowledgements_each_in_one_piece) {
    CloneBench bench(sending());
    bench.click_read();
    ASSERT_EQ(bench.port.sent.size(), 242U);
    for (const auto& piece : bench.port.sent) {
        ASSERT_EQ(hexadecimal(piece.bytes), "03 06 09");
    }
    bench.settle();
    ASSERT_EQ(bench.radio.report().transfers.size(), 1U);
    EXPECT_TRUE(bench.radio.report().transfers.front().complete);
    EXPECT_EQ(bench.radio.report().transfers.front().stray_bytes, 0);
}

TEST(CloneRead, every_block_is_given_a_tenth_of_a_second_from_its_eleventh_byte_on) {
    CloneBench bench(sending());
    bench.click_read();
    const auto& sent = bench.port.sent;
    ASSERT_EQ(sent.size(), 242U);
    // Eleven bytes of eleven bits at 9600 baud take 12.6 ms.
    for (std::size_t i = 1; i <= 240; ++i) {
        ASSERT_GE(sent[i].at - sent[i - 1].at, 112604us) << "block " << i;
        ASSERT_LE(sent[i].at - sent[i - 1].at, 114ms) << "block " << i;
    }
    EXPECT_GE(sent[241].at - sent[240].at, 12604us);
    EXPECT_LE(sent[241].at - sent[240].at, 12605us);
    EXPECT_GE(bench.time.now(), 27s);
    EXPECT_LE(bench.time.now(), 28s);
}

TEST(CloneRead, the_image_the_table_and_the_change_check_are_what_the_radio_sent) {
    const MemoryImage memory = image_of_user();
    CloneBench bench(sending(), memory);
    bench.click_read();
    EXPECT_EQ(bench.store.MemoryImage, memory);
    EXPECT_EQ(bench.table.ChangeCheckSum(), byte_sum(memory));
    EXPECT_FALSE(bench.table.IsDataChanged());
    EXPECT_EQ(bench.grid.TextMatrix(1, columns::kFreq), "118.10000");
    EXPECT_EQ(bench.grid.TextMatrix(1, columns::kTag), "TOWER");
}

TEST(CloneRead, a_read_leaves_the_path_and_the_caption_as_they_are) {
    CloneBench bench(sending(), random_image(5));
    bench.open_file(image_of_user());
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.image_files.current_path(), "/radio/old.120");
    EXPECT_EQ(bench.caption.caption.get(), "Memwright - /radio/old.120");
    EXPECT_EQ(bench.store.MemoryImage, random_image(5));
}

TEST(CloneRead, unsaved_changes_are_asked_about_and_cancel_ends_the_command) {
    CloneBench bench(sending());
    bench.open_file(image_of_user());
    leave_traces(bench);
    bench.grid.set_text(1, columns::kTag, "NEW");
    bench.journal.clear();
    EXPECT_EQ(bench.run({Answer::cancel}, [&] { bench.read.mnuRead_Click(); }), "");
    EXPECT_THAT(bench.journal, ElementsAre("box Memwright"));
    EXPECT_EQ(bench.grid.TextMatrix(1, columns::kTag), "NEW");
    const Message& box = bench.messages.shown.front();
    EXPECT_EQ(box.text, "The VR120 data has changed.\r\nDo you want to save the changes?");
    EXPECT_EQ(box.buttons, Buttons::yes_no_cancel);
    EXPECT_EQ(box.icon, Icon::exclamation);
}

TEST(CloneRead, unsaved_changes_can_be_saved_or_dropped_before_the_read) {
    for (const Answer answer : {Answer::yes, Answer::no}) {
        CloneBench bench(sending(), random_image(6));
        bench.open_file(image_of_user());
        const Bytes old_file = bench.files.files.at("/radio/old.120");
        bench.grid.set_text(1, columns::kTag, "NEW");
        EXPECT_EQ(bench.run({answer, Answer::ok}, [&] { bench.read.mnuRead_Click(); }), "");
        EXPECT_EQ(bench.files.files.at("/radio/old.120") != old_file, answer == Answer::yes);
        EXPECT_EQ(bench.store.MemoryImage, random_image(6));
    }
}

TEST(CloneRead, the_user_sees_whether_anything_arrives_at_all_while_it_listens) {
    CloneBench bench({.mode = radio::Mode::automatic});
    bench.time.after(500ms, [&] {
        EXPECT_EQ(bench.Label1.caption.get(), "Listening...");
        EXPECT_TRUE(bench.received.visible);
        EXPECT_EQ(bench.received.caption.get(), "Nothing received yet");
        EXPECT_TRUE(bench.progress.visible);
        EXPECT_TRUE(bench.progress.busy);
        EXPECT_EQ(bench.button.caption.get(), "Cancel");
        EXPECT_TRUE(bench.button.visible);
    });
    bench.time.after(1004ms, [&] { EXPECT_EQ(bench.received.caption.get(), "3 bytes received"); });
    bench.time.after(1050ms, [&] {
        EXPECT_FALSE(bench.received.visible);
        EXPECT_TRUE(bench.progress.busy);
    });
    bench.time.after(10s, [&] {
        EXPECT_FALSE(bench.received.visible);
        EXPECT_FALSE(bench.progress.busy);
        EXPECT_EQ(bench.progress.percent.get(), 32);
        EXPECT_TRUE(bench.button.visible);
    });
    EXPECT_EQ(bench.click_read(), "");
    bench.expect_idle();
}

TEST(CloneRead, the_result_is_Success_and_empty_when_the_instructions_are_cancelled) {
    CloneBench bench(sending());
    bench.messages.answers = {Answer::cancel, Answer::ok, Answer::cancel};
    EXPECT_EQ(bench.read.ReadFromVR120(), "");
    EXPECT_EQ(bench.read.ReadFromVR120(), "Success");
    EXPECT_EQ(bench.read.ReadFromVR120(), "") << "not the one before";
}

TEST(CloneRead, a_second_read_replaces_the_first) {
    CloneBench bench(sending(), random_image(7));
    bench.click_read();
    bench.mnuSaveOnly.enabled = false;  // keeps the table out of it
    radio::SimulatedRadio other(random_image(8), sending());
    bench.port.plug(other);
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, random_image(8));
}

}  // namespace
}  // namespace memwright::link_tests
