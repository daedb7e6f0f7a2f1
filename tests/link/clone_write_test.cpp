#include "link/clone_write.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "link/clone_bench.h"
#include "table/columns.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string write_progress(int percent) {
    return "Writing To VR-120: " + std::to_string(percent) + "% complete...";
}

// A whole write, frame by frame.
std::vector<Bytes> frames_of(const MemoryImage& image) {
    std::vector<Bytes> frames{{0x0C, 0x01, 0x41, 0x31, 0x38, 0x12, 0x00, 0xC9}};
    for (int n = 0; n < 240; ++n) {
        Bytes frame{0x03, 0x03, 0x00, 0x00, static_cast<std::uint8_t>(n)};
        unsigned sum = 6 + static_cast<unsigned>(n);
        for (int i = 0; i < 32; ++i) {
            const std::uint8_t byte = n <= 230 ? image.get(n * 32 + i) : 0xFF;
            frame.push_back(byte);
            sum += byte;
        }
        frame.push_back(static_cast<std::uint8_t>(sum & 0xFFU));
        frames.push_back(frame);
    }
    frames.insert(frames.end(), 2, {0x0C, 0x02, 0x41, 0x31, 0x38, 0x00, 0x00, 0xB8});
    return frames;
}

std::vector<Bytes> sent_by(const CloneBench& bench) {
    std::vector<Bytes> pieces;
    for (const auto& piece : bench.port.sent) pieces.push_back(piece.bytes);
    return pieces;
}

void expect_written(CloneBench& bench, const MemoryImage& image) {
    EXPECT_EQ(sent_by(bench), frames_of(image));
    bench.settle();
    ASSERT_EQ(bench.radio.report().transfers.size(), 1U);
    EXPECT_TRUE(bench.radio.report().transfers.front().complete);
    EXPECT_EQ(bench.radio.memory(), image);
}

TEST(CloneWrite, every_frame_goes_out_to_the_byte_and_in_one_piece) {
    CloneBench bench(receiving());
    bench.store.set_image(random_image(41));
    EXPECT_EQ(bench.run({Answer::ok}, [&] { bench.write.WriteToVR120(); }), "");
    expect_written(bench, random_image(41));
}

TEST(CloneWrite, block_0_begins_with_its_header_and_sums_the_first_32_bytes_of_the_image) {
    CloneBench bench(receiving());
    for (int i = 0; i < 32; ++i) bench.store.set_byte(i, static_cast<std::uint8_t>(i + 1));
    bench.click_write();
    ASSERT_EQ(bench.port.sent.size(), 243U);
    EXPECT_EQ(hexadecimal(bench.port.sent[1].bytes),
              "03 03 00 00 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10 11 12 13 14 15 16 17 "
              "18 19 1A 1B 1C 1D 1E 1F 20 16");  // 6 + 528 = 534
}

TEST(CloneWrite, the_last_32_bytes_of_the_image_travel_in_block_230) {
    CloneBench bench(receiving());
    for (int i = 7360; i < 7392; ++i) {
        bench.store.set_byte(i, static_cast<std::uint8_t>(i - 7360 + 0x80));
    }
    bench.click_write();
    EXPECT_EQ(hexadecimal(bench.port.sent[231].bytes),
              "03 03 00 00 E6 80 81 82 83 84 85 86 87 88 89 8A 8B 8C 8D 8E 8F 90 91 92 93 94 95 96 "
              "97 98 99 9A 9B 9C 9D 9E 9F DC");
}

TEST(CloneWrite, blocks_from_231_on_are_filler) {
    CloneBench bench(receiving());
    bench.click_write();
    std::string filler;
    for (int i = 0; i < 32; ++i) filler += " FF";
    EXPECT_EQ(hexadecimal(bench.port.sent[232].bytes), "03 03 00 00 E7" + filler + " CD");
    EXPECT_EQ(hexadecimal(bench.port.sent[240].bytes), "03 03 00 00 EF" + filler + " D5");
}

TEST(CloneWrite, a_tenth_of_a_second_passes_behind_every_frame_but_the_last) {
    CloneBench bench(receiving());
    bench.click_write();
    const auto& sent = bench.port.sent;
    ASSERT_EQ(sent.size(), 243U);
    for (std::size_t i = 1; i < sent.size(); ++i) {
        ASSERT_GE(sent[i].at - sent[i - 1].at, 100ms) << "frame " << i;
        ASSERT_LE(sent[i].at - sent[i - 1].at, 101ms) << "frame " << i;
    }
    EXPECT_GE(bench.time.now(), 24s);
    EXPECT_LE(bench.time.now(), 25s);
}

TEST(CloneWrite, the_window_is_locked_before_the_instructions_and_the_port_opened_behind_them) {
    CloneBench bench(receiving());
    bench.Text1.text = "old\r\n";
    bench.Label1.caption = "old";
    bench.journal.clear();
    bench.click_write();
    const std::vector<std::string> expected = {"Text1 \"\"",
                                               "Label1 \"\"",
                                               "DisableGui",
                                               "box Write To VR-120",
                                               "CommPort = 1",
                                               "Settings = \"9600,E,8,1\"",
                                               "DTREnable = True",
                                               "EOFEnable = False",
                                               "Handshaking = 0",
                                               "InBufferSize = 30000",
                                               "InputLen = 0",
                                               "InputMode = 1",
                                               "NullDiscard = False",
                                               "OutBufferSize = 30000",
                                               "ParityReplace = \"\"",
                                               "RThreshold = 8",
                                               "RTSEnable = True",
                                               "SThreshold = 0",
                                               "PortOpen = True",
                                               "Output of 8",
                                               "Input of 8",
                                               "Output of 38",
                                               "Label1 \"" + write_progress(0) + "\"",
                                               "Output of 38"};
    ASSERT_GE(bench.journal.size(), expected.size());
    bench.journal.resize(expected.size());
    EXPECT_EQ(bench.journal, expected);
}

TEST(CloneWrite, it_ends_by_telling_so_then_closing_the_port_then_unlocking_the_window) {
    CloneBench bench(receiving());
    bench.click_write();
    const std::vector<std::string> end(bench.journal.end() - 7, bench.journal.end());
    EXPECT_THAT(
        end, ElementsAre("Output of 38", "Label1 \"" + write_progress(100) + "\"", "Output of 8",
                         "Output of 8", "Label1 \"Write To VR-120 complete.\"", "PortOpen = False",
                         "EnableGui"));
    EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "EnableGui"));
    bench.expect_idle();
}

TEST(CloneWrite, the_instructions_tell_three_steps) {
    CloneBench bench(receiving());
    bench.click_write();
    ASSERT_EQ(bench.messages.shown.size(), 1U);
    const Message& box = bench.messages.shown.front();
    EXPECT_EQ(box.title, "Write To VR-120");
    EXPECT_EQ(box.text,
              "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\r\n"
              "2. Press [Scan] on the VR-120. It should say R.\r\n"
              "3. Click OK on this box to begin.");
    EXPECT_EQ(box.buttons, Buttons::ok_cancel);
}

TEST(CloneWrite, cancel_in_the_instructions_sends_every_frame_all_the_same) {
    CloneBench bench(receiving());
    bench.store.set_image(random_image(42));
    EXPECT_EQ(bench.run({Answer::cancel}, [&] { bench.write.WriteToVR120(); }), "");
    EXPECT_EQ(bench.Label1.caption.get(), "Write To VR-120 complete.");
    expect_written(bench, random_image(42));
}

TEST(CloneWrite, each_of_the_240_blocks_is_told_with_its_share) {
    CloneBench bench(receiving());
    std::vector<std::string> statuses;
    std::vector<int> percents;
    bench.port.sending = [&](const auto&) {
        statuses.push_back(bench.Label1.caption);
        percents.push_back(bench.progress.percent);
    };
    bench.click_write();
    ASSERT_EQ(statuses.size(), 243U);
    EXPECT_EQ(statuses[0], "");
    EXPECT_EQ(statuses[1], "");
    // What stands there after block n is there when the next frame goes out.
    for (int n = 0; n < 240; ++n) {
        const int percent = static_cast<int>(std::floor(n / 2.39 + 1e-9));
        ASSERT_EQ(statuses[static_cast<std::size_t>(n) + 2], write_progress(percent)) << n;
        ASSERT_EQ(percents[static_cast<std::size_t>(n) + 2], percent) << n;
    }
    EXPECT_EQ(statuses[2], write_progress(0));
    EXPECT_EQ(statuses[2 + 3], write_progress(1));
    EXPECT_EQ(statuses[2 + 238], write_progress(99));
    EXPECT_EQ(statuses[2 + 239], write_progress(100));
}

TEST(CloneWrite, the_table_is_what_is_written) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.grid.set_text(1, columns::kTag, "NEW");
    const auto change_check = bench.table.ChangeCheckSum();
    EXPECT_EQ(bench.click_write(), "");
    bench.settle();
    modVR120 written(bench.files);
    written.set_image(bench.radio.memory());
    EXPECT_EQ(written.GetMemTag(0, 0), "NEW");
    EXPECT_EQ(written.GetMemTag(0, 1), "TOWER2");
    // Written is not saved.
    EXPECT_EQ(bench.table.ChangeCheckSum(), change_check);
    EXPECT_TRUE(bench.table.IsDataChanged());
}

TEST(CloneWrite, what_is_written_is_the_image_as_it_was_at_the_beginning) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.time.after(5s, [&] {
        bench.grid.Clear();
        bench.table.SaveVR120Data();
        ASSERT_NE(bench.store.MemoryImage, image_of_user());
    });
    EXPECT_EQ(bench.click_write(), "");
    expect_written(bench, image_of_user());
}

TEST(CloneWrite, nothing_is_asked_about_unsaved_changes) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.grid.set_text(1, columns::kTag, "NEW");
    bench.click_write();
    ASSERT_EQ(bench.messages.shown.size(), 1U);
    EXPECT_EQ(bench.messages.shown.front().title, "Write To VR-120");
}

TEST(CloneWrite, the_table_is_not_shown_anew) {
    CloneBench bench(receiving());
    bench.open_file(image_of_user());
    bench.click_write();
    EXPECT_THAT(bench.journal, testing::Not(testing::Contains("table")));
}

TEST(CloneWrite, a_radio_that_does_not_listen_goes_unnoticed) {
    CloneBench bench(sending({{radio::FaultKind::silence, radio::kOpening}}));
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_EQ(bench.port.sent.size(), 243U);
    EXPECT_EQ(bench.Label1.caption.get(), "Write To VR-120 complete.");
}

TEST(CloneWrite, what_the_radio_sends_meanwhile_is_not_looked_at) {
    CloneBench bench(sending(), random_image(43));
    bench.store.set_image(random_image(44));
    EXPECT_EQ(bench.run({Answer::ok}, [&] { bench.write.WriteToVR120(); }), "");
    EXPECT_EQ(sent_by(bench), frames_of(random_image(44)));
    EXPECT_EQ(bench.store.MemoryImage, random_image(44));
}

// The second closing frame needs 9.2 ms, and the device may hold what the system has handed over.
TEST(CloneWrite, the_line_is_set_back_when_the_last_byte_has_left) {
    CloneBench bench(receiving());
    std::optional<Time> completed, closed;
    bench.port.told = [&](const std::string& what) {
        if (what == "PortOpen = False") closed = bench.time.now();
    };
    const Connection watch = bench.Label1.caption.changed.connect([&] {
        if (bench.Label1.caption.get() == "Write To VR-120 complete.") completed = bench.time.now();
    });
    EXPECT_EQ(bench.click_write(), "");
    const Time last = bench.port.sent.back().at;
    ASSERT_TRUE(completed && closed);
    EXPECT_GE(*completed - last, 9168us);
    EXPECT_GE(*closed - last, 9168us);
    EXPECT_LT(*closed - last, 20ms);
}

TEST(CloneWrite, a_line_that_stops_taking_bytes_fails_it_with_their_number) {
    constexpr std::size_t kAll = 8 + 240 * 38 + 2 * 8;
    for (const std::size_t taken : {std::size_t{0}, std::size_t{540}, kAll - 8, kAll - 1}) {
        CloneBench bench(receiving());
        bench.port.stops_after = taken;
        const std::string error = bench.click_write();
        EXPECT_THAT(error, testing::StartsWith("The serial port has stopped taking bytes: only " +
                                               std::to_string(taken) + " of "));
        std::size_t output = 0;
        for (const auto& piece : bench.port.sent) output += piece.bytes.size();
        EXPECT_THAT(error,
                    testing::HasSubstr(" of " + std::to_string(output) + " bytes were sent."));
        EXPECT_LE(output, taken + 22 * 38) << "it goes on for two seconds";
        EXPECT_NE(bench.Label1.caption.get(), "Write To VR-120 complete.");
        bench.expect_offers_unlock();
    }
}

TEST(CloneWrite, a_line_that_stops_for_a_moment_fails_nothing) {
    CloneBench bench(receiving());
    bench.port.stops_after = 540;
    bench.time.after(3s, [&] { bench.port.stops_after = 700; });
    bench.time.after(4500ms, [&] { bench.port.stops_after.reset(); });
    EXPECT_EQ(bench.click_write(), "");
    EXPECT_EQ(bench.port.sent.size(), 243U);
    EXPECT_EQ(bench.Label1.caption.get(), "Write To VR-120 complete.");
}

TEST(CloneWrite, the_controls_show_a_share_from_the_first_block_on) {
    CloneBench bench(receiving());
    bench.messages.while_shown = [&] {
        EXPECT_FALSE(bench.button.visible);
        EXPECT_FALSE(bench.progress.visible);
    };
    bench.time.after(50ms, [&] {
        EXPECT_TRUE(bench.progress.visible);
        EXPECT_TRUE(bench.progress.busy);
        EXPECT_FALSE(bench.received.visible);
        EXPECT_EQ(bench.button.caption.get(), "Cancel");
        EXPECT_TRUE(bench.button.visible);
    });
    bench.time.after(12s, [&] {
        EXPECT_FALSE(bench.progress.busy);
        EXPECT_GE(bench.progress.percent.get(), 47);
        EXPECT_LE(bench.progress.percent.get(), 49);
        EXPECT_FALSE(bench.received.visible);
    });
    bench.click_write();
    bench.expect_idle();
}

}  // namespace
}  // namespace memwright::link_tests
