// What becomes of each of the 240 blocks of a read.

#include <gtest/gtest.h>

#include <cmath>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

using radio::FaultKind;

constexpr int kImageBytesOfBlock = 32;

std::string read_progress(int percent) {
    return "Reading from VR-120: " + std::to_string(percent) + "% complete...";
}

// The status line at every acknowledgement, the first of which goes out before any block is there.
std::vector<std::string> statuses_of_read(CloneBench& bench) {
    std::vector<std::string> statuses;
    bench.port.sending = [&](const auto&) { statuses.push_back(bench.Label1.caption); };
    EXPECT_EQ(bench.click_read(), "");
    return statuses;
}

// Where, in the whole of what arrives, byte `byte` of the response with block `block` stands, if no
// short frame comes before it.
std::size_t position(int block, int byte) {
    return 8 + static_cast<std::size_t>(block) * 41 + static_cast<std::size_t>(byte);
}

TEST(CloneReadBlocks, each_of_the_240_blocks_is_told_with_its_share) {
    CloneBench bench(sending());
    const auto statuses = statuses_of_read(bench);
    ASSERT_EQ(statuses.size(), 242U);
    EXPECT_EQ(statuses[0], "Listening...");
    for (int count = 1; count <= 240; ++count) {
        const int percent = static_cast<int>(std::floor(count / 2.4 + 1e-9));
        ASSERT_EQ(statuses[static_cast<std::size_t>(count)], read_progress(percent)) << count;
    }
    EXPECT_EQ(statuses[1], read_progress(0));
    EXPECT_EQ(statuses[3], read_progress(1));
    EXPECT_EQ(statuses[239], read_progress(99));
    EXPECT_EQ(statuses[240], read_progress(100));
    EXPECT_EQ(statuses[241], read_progress(100));
}

TEST(CloneReadBlocks, the_progress_bar_goes_with_the_text) {
    CloneBench bench(sending());
    std::vector<int> percents;
    bench.port.sending = [&](const auto&) { percents.push_back(bench.progress.percent); };
    bench.click_read();
    ASSERT_EQ(percents.size(), 242U);
    EXPECT_EQ(percents[2], 0);
    EXPECT_EQ(percents[12], 5);
    EXPECT_EQ(percents[120], 50);
    EXPECT_EQ(percents[240], 100);
}

TEST(CloneReadBlocks, a_response_of_11_bytes_advances_neither_count_nor_progress) {
    const MemoryImage memory = random_image(11);
    auto options = sending();
    options.short_frames_before = {0, 3, 3, 115, 231, 239};
    CloneBench bench(options, memory);
    const auto statuses = statuses_of_read(bench);
    ASSERT_EQ(statuses.size(), 242U + 6);
    EXPECT_EQ(statuses[1], "Listening...");
    // Blocks 1 to 3 are there, then come two short frames, then block 4.
    for (const std::size_t i : {4U, 5U, 6U}) EXPECT_EQ(statuses[i], read_progress(1));
    EXPECT_EQ(bench.store.MemoryImage, memory);
    EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
    bench.settle();
    EXPECT_TRUE(bench.radio.report().transfers.front().complete);
}

TEST(CloneReadBlocks, a_block_with_a_wrong_checksum_is_kept_and_nobody_is_told) {
    const MemoryImage memory = random_image(12);
    for (const int block : {0, 115, 230}) {
        SCOPED_TRACE(block);
        CloneBench bench(sending({{FaultKind::checksum, block}}), memory);
        EXPECT_EQ(bench.click_read(), "");
        EXPECT_EQ(bench.store.MemoryImage, memory);
        EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
        EXPECT_EQ(bench.messages.shown.size(), 1U);
        EXPECT_EQ(bench.port.sent.size(), 242U);
    }
}

TEST(CloneReadBlocks, the_result_is_Success_even_after_a_wrong_checksum) {
    CloneBench bench(sending({{FaultKind::checksum, 17}, {FaultKind::checksum, 239}}));
    bench.messages.answers = {Answer::ok};
    EXPECT_EQ(bench.read.ReadFromVR120(), "Success");
}

TEST(CloneReadBlocks, neither_the_leading_bytes_nor_the_header_decide_anything) {
    const MemoryImage memory = random_image(13);
    CloneBench bench(sending(), memory);
    for (int byte = 0; byte < 7; ++byte) bench.port.replaced[position(100, byte)] = 0xEE;
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, memory);
}

TEST(CloneReadBlocks, blocks_are_stored_as_they_come_whatever_their_numbers_below_231) {
    const MemoryImage memory = random_image(14);
    CloneBench bench(sending(), memory);
    for (int block = 0; block < 231; ++block) {
        bench.port.replaced[position(block, 7)] = static_cast<std::uint8_t>(230 - block);
    }
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, memory);
}

TEST(CloneReadBlocks, a_block_numbered_231_or_more_is_counted_and_not_kept) {
    const MemoryImage old = image_of_user();
    const MemoryImage memory = random_image(15);
    for (const int number : {231, 232, 239, 255}) {
        for (const int block : {0, 115, 230}) {
            SCOPED_TRACE(std::to_string(number) + " at " + std::to_string(block));
            CloneBench bench(sending({{FaultKind::block_number, block, number}}), memory);
            bench.open_file(old);
            const auto statuses = statuses_of_read(bench);
            ASSERT_EQ(statuses.size(), 242U);
            EXPECT_EQ(statuses[120], read_progress(50));

            // The blocks behind it move up; the last place keeps what it held.
            MemoryImage expected = old;
            int position = 0;
            for (int i = 0; i < layout::kImageSize; ++i) {
                if (i / kImageBytesOfBlock == block) continue;
                expected.set(position++, memory.get(i));
            }
            EXPECT_EQ(position, layout::kImageSize - kImageBytesOfBlock);
            EXPECT_EQ(bench.store.MemoryImage, expected);
        }
    }
}

TEST(CloneReadBlocks, a_radio_that_numbers_every_block_past_the_image_changes_nothing) {
    const MemoryImage old = image_of_user();
    CloneBench bench(sending(), random_image(16));
    bench.open_file(old);
    for (int block = 0; block < 231; ++block) bench.port.replaced[position(block, 7)] = 0xE7;
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, old);
    EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
}

TEST(CloneReadBlocks, the_checksum_and_data_of_blocks_past_the_image_are_not_looked_at) {
    const MemoryImage memory = random_image(17);
    CloneBench bench(sending({{FaultKind::checksum, 231}, {FaultKind::checksum, 239}}), memory);
    for (int byte = 8; byte < 40; ++byte) bench.port.replaced[position(235, byte)] = 0x11;
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, memory);
}

TEST(CloneReadBlocks, a_232nd_block_below_231_is_an_error_and_changes_nothing) {
    CloneBench bench(sending(), random_image(18));
    bench.open_file(image_of_user());
    const auto before = bench.kept();
    bench.port.replaced[position(231, 7)] = 230;
    EXPECT_EQ(bench.click_read(),
              "The read from the VR-120 failed at block 232 of 240: the memory was complete "
              "already.\nThe table is as it was before. Check the plugs of the clone cable, press "
              "Unlock, and read again.");
    EXPECT_EQ(bench.kept(), before);
    bench.expect_offers_unlock();
    EXPECT_EQ(bench.Label1.caption.get(), read_progress(96));
}

TEST(CloneReadBlocks, a_last_block_that_takes_the_place_of_one_that_was_skipped_is_kept) {
    const MemoryImage memory = random_image(19);
    CloneBench bench(sending({{FaultKind::block_number, 230}}), memory);
    bench.port.replaced[position(239, 7)] = 230;
    EXPECT_EQ(bench.click_read(), "");
    MemoryImage expected = memory;
    for (int i = 230 * kImageBytesOfBlock; i < layout::kImageSize; ++i) expected.set(i, 0xFF);
    EXPECT_EQ(bench.store.MemoryImage, expected);
}

}  // namespace
}  // namespace memwright::link_tests
