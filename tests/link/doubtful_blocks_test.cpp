// What the blocks of the image carry, as the user is told it.

#include "link/doubtful_blocks.h"

#include <gmock/gmock.h>

#include "link/clone_bench.h"

namespace memwright::link_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DoubtfulBlocks, carry_records_of_eight_memories_each_up_to_block_79) {
    EXPECT_EQ(contents_of_block(0),
              "frequencies, modes and preferences of Bank 0 - 0 to Bank 0 - 7");
    EXPECT_EQ(contents_of_block(1),
              "frequencies, modes and preferences of Bank 0 - 8 to Bank 0 - 15");
    EXPECT_EQ(contents_of_block(12),
              "frequencies, modes and preferences of Bank 1 - 32 to Bank 1 - 39");
    EXPECT_EQ(contents_of_block(79),
              "frequencies, modes and preferences of Bank 9 - 56 to Bank 9 - 63");
}

TEST(DoubtfulBlocks, carry_labels_whole_or_in_part_up_to_block_199) {
    EXPECT_EQ(contents_of_block(80), "labels of Bank 0 - 0 to Bank 0 - 5");
    EXPECT_EQ(contents_of_block(81), "labels of Bank 0 - 5 to Bank 0 - 10");
    EXPECT_EQ(contents_of_block(91), "labels of Bank 0 - 58 to Bank 0 - 63");
    EXPECT_EQ(contents_of_block(92), "labels of Bank 1 - 0 to Bank 1 - 5");
    EXPECT_EQ(contents_of_block(199), "labels of Bank 9 - 58 to Bank 9 - 63");
}

TEST(DoubtfulBlocks, carry_settings_and_limits_from_block_200_on) {
    EXPECT_EQ(contents_of_block(200), "settings or search limits (bytes 6400 to 6431)");
    EXPECT_EQ(contents_of_block(230), "settings or search limits (bytes 7360 to 7391)");
}

// Bytes of the image alone: a byte belongs to a memory's record or label, or to none.
TEST(DoubtfulBlocks, name_the_memories_of_every_byte_of_every_block) {
    const auto memory_of = [](int byte) {
        if (byte >= 6400) return -1;
        return byte < 2560 ? byte / 4 : (byte - 2560) / 6;
    };
    const auto name = [](int memory) {
        return "Bank " + std::to_string(memory / 64) + " - " + std::to_string(memory % 64);
    };
    for (int block = 0; block <= 230; ++block) {
        const int first = memory_of(block * 32), last = memory_of(block * 32 + 31);
        if (first < 0) continue;
        const std::string text = contents_of_block(block);
        EXPECT_TRUE(text.ends_with(" of " + name(first) + " to " + name(last))) << text;
        EXPECT_EQ(text.starts_with("labels"), block >= 80) << text;
    }
}

TEST(DoubtfulBlocks, have_a_line_each) {
    EXPECT_THAT(doubts_about({}), IsEmpty());
    EXPECT_THAT(doubts_about({0, 80, 230}),
                ElementsAre("Block 0 came with a wrong checksum. Doubtful: frequencies, modes and "
                            "preferences of Bank 0 - 0 to Bank 0 - 7.",
                            "Block 80 came with a wrong checksum. Doubtful: labels of Bank 0 - 0 "
                            "to Bank 0 - 5.",
                            "Block 230 came with a wrong checksum. Doubtful: settings or search "
                            "limits (bytes 7360 to 7391)."));
}

using radio::Fault;
using radio::FaultKind;

class DoubtsOfRead : public testing::Test {
  protected:
    // The blocks that a read with these faults leaves in doubt, as it tells when all are there.
    static std::vector<int> doubts(const std::vector<Fault>& faults) {
        CloneBench bench(sending(faults), random_image(21, 230));
        bench.open_file(image_of_user());
        int received = 0;
        std::vector<int> told;
        const Connection listening = bench.read.received.connect([&](const MemoryImage&) {
            ++received;
            told = bench.read.doubtful_blocks();
        });
        EXPECT_EQ(bench.click_read(), "");
        EXPECT_EQ(received, 1);
        return told;
    }
};

TEST_F(DoubtsOfRead, are_none_after_a_clean_read) { EXPECT_THAT(doubts({}), IsEmpty()); }

TEST_F(DoubtsOfRead, are_the_blocks_with_wrong_checksums_in_their_order) {
    EXPECT_THAT(doubts({{FaultKind::checksum, 0},
                        {FaultKind::checksum, 79},
                        {FaultKind::checksum, 80},
                        {FaultKind::checksum, 230}}),
                ElementsAre(0, 79, 80, 230));
}

TEST_F(DoubtsOfRead, are_none_for_what_is_not_kept) {
    EXPECT_THAT(doubts({{FaultKind::checksum, 231}, {FaultKind::checksum, 239}}), IsEmpty());
}

// The image is filled in the order of arrival: what follows a block that was left out moves up.
TEST_F(DoubtsOfRead, are_told_by_where_the_bytes_went) {
    EXPECT_THAT(doubts({{FaultKind::block_number, 5}, {FaultKind::checksum, 9}}), ElementsAre(8));
}

TEST_F(DoubtsOfRead, of_one_read_are_not_those_of_the_next) {
    CloneBench bench(sending({{FaultKind::checksum, 3}}), random_image(21, 230));
    bench.open_file(image_of_user());
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_THAT(bench.read.doubtful_blocks(), ElementsAre(3));
    bench.run({Answer::no, Answer::cancel}, [&] { bench.read.mnuRead_Click(); });
    EXPECT_THAT(bench.read.doubtful_blocks(), IsEmpty());
}

}  // namespace
}  // namespace memwright::link_tests
