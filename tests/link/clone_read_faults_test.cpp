// Every fault of the radio in a read, early, in the middle, around the end of the image and late:
// the read ends as a plain reading of the frames that were sent foretells, or with one PortError.

#include <gtest/gtest.h>

#include <optional>

#include "link/clone_bench.h"
#include "radio/frames.h"

namespace memwright::link_tests {
namespace {

using radio::Fault;
using radio::FaultKind;
using testing::ElementsAre;
using testing::StartsWith;

constexpr int kPlaces[] = {0, 115, 230, 231, 239};

// No byte of this memory passes for the number of a block past the image.
MemoryImage memory_of_radio() { return random_image(21, 230); }

// What 240 frames make of an image; none if they cannot be read.
std::optional<MemoryImage> reading(const Fault& fault, MemoryImage image) {
    int position = 0;
    for (int place = 0; place < 240; ++place) {
        Bytes frame = radio::block_frame(memory_of_radio(), place);
        if (place == fault.block) radio::damage(frame, fault);
        if (frame[4] >= 231) continue;
        if (frame.size() < 38 || position == 7392) return std::nullopt;
        for (std::size_t i = 5; i < 37; ++i) image.set(position++, frame[i]);
    }
    return image;
}

void expect_outcome(const Fault& fault) {
    SCOPED_TRACE(text_of(fault));
    const MemoryImage old = image_of_user();
    CloneBench bench(sending({fault}), memory_of_radio());
    bench.open_file(old);
    const auto before = bench.kept();
    const std::string error = bench.click_read();
    if (const auto image = reading(fault, old)) {
        EXPECT_EQ(error, "");
        EXPECT_EQ(bench.store.MemoryImage, *image);
        EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 complete.");
        EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "EnableGui"));
        bench.expect_idle();
    } else {
        EXPECT_THAT(error, StartsWith("The read from the VR-120 failed at block " +
                                      std::to_string(fault.block + 1) + " of 240: "));
        EXPECT_EQ(bench.kept(), before);
        bench.expect_offers_unlock();
    }
    bench.settle();
    EXPECT_THAT(bench.radio.report().transfers.front().faults, ElementsAre(fault));
}

bool can_be_read(const Fault& fault) { return reading(fault, MemoryImage{}).has_value(); }

TEST(CloneReadFaults, wrong_checksums) {
    for (const int place : kPlaces) {
        expect_outcome({FaultKind::checksum, place});
        EXPECT_TRUE(can_be_read({FaultKind::checksum, place}));
    }
}

TEST(CloneReadFaults, missing_bytes) {
    for (const int place : kPlaces) {
        for (const int byte : {0, 4, 5, 20, 37}) {
            expect_outcome({FaultKind::missing_byte, place, byte});
            EXPECT_EQ(can_be_read({FaultKind::missing_byte, place, byte}), place > 230);
        }
    }
}

TEST(CloneReadFaults, extra_bytes) {
    for (const int place : kPlaces) {
        for (const int byte : {0, 4, 5, 20, 37, 38}) {
            expect_outcome({FaultKind::extra_byte, place, byte});
        }
        // Behind the number an extra byte does no more than shift the data.
        EXPECT_TRUE(can_be_read({FaultKind::extra_byte, place, 38}));
        EXPECT_TRUE(can_be_read({FaultKind::extra_byte, place, 5}));
        EXPECT_EQ(can_be_read({FaultKind::extra_byte, place, 0}), place <= 230);
    }
}

TEST(CloneReadFaults, garbage) {
    for (const int place : kPlaces) expect_outcome({FaultKind::garbage, place});
}

TEST(CloneReadFaults, block_numbers_past_the_image) {
    for (const int place : {0, 115, 230}) expect_outcome({FaultKind::block_number, place});
}

TEST(CloneReadFaults, bytes_that_trickle_within_the_time_that_a_block_has) {
    for (const int place : kPlaces) {
        expect_outcome({FaultKind::trickle, place});
        EXPECT_TRUE(can_be_read({FaultKind::trickle, place}));
    }
}

TEST(CloneReadFaults, a_block_that_trickles_for_longer_is_an_error) {
    for (const int place : {0, 115, 230}) {
        CloneBench bench(sending({{FaultKind::trickle, place, 38}}), memory_of_radio());
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        EXPECT_THAT(bench.click_read(),
                    testing::MatchesRegex("The read from the VR-120 failed at block " +
                                          std::to_string(place + 1) +
                                          " of 240: [12][0-9] bytes arrived instead of 41\\..*"));
        EXPECT_EQ(bench.kept(), before);
        bench.expect_offers_unlock();
    }
}

TEST(CloneReadFaults, silence_waits_until_the_user_cancels) {
    for (const int place : {radio::kOpening, 0, 115, 230, 231, 239}) {
        SCOPED_TRACE(place);
        CloneBench bench(sending({{FaultKind::silence, place}}), memory_of_radio());
        bench.open_file(image_of_user());
        const auto before = bench.kept();
        bench.time.after(20min - 1us, [&] { EXPECT_TRUE(bench.control.running()); });
        bench.press_after(20min);
        EXPECT_EQ(bench.click_read(), "");
        EXPECT_EQ(bench.time.now(), 20min);
        EXPECT_EQ(bench.Label1.caption.get(), "Read from VR-120 cancelled.");
        EXPECT_EQ(bench.kept(), before);
        EXPECT_THAT(bench.lock_calls, ElementsAre("DisableGui", "unlock_gui"));
        bench.expect_idle();
    }
}

TEST(CloneReadFaults, any_eight_bytes_are_taken_for_an_opening_frame) {
    CloneBench bench(sending({{FaultKind::garbage, radio::kOpening}}), memory_of_radio());
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.store.MemoryImage, memory_of_radio());
}

TEST(CloneReadFaults, an_opening_of_fewer_or_more_than_eight_bytes_is_not_taken) {
    for (const auto& [kind, text] : {std::pair(FaultKind::missing_byte, "7 bytes received"),
                                     std::pair(FaultKind::extra_byte, "9 bytes received")}) {
        const std::string shown = text;
        // Nine bytes that came one by one would be eight for a moment.
        auto options = sending({{kind, radio::kOpening}});
        options.pace = radio::Pace::none;
        CloneBench bench(options, memory_of_radio());
        bench.time.after(10min, [&] {
            EXPECT_EQ(bench.Label1.caption.get(), "Listening...");
            EXPECT_EQ(bench.received.caption.get(), shown);
            EXPECT_TRUE(bench.received.visible);
        });
        bench.press_after(10min);
        EXPECT_EQ(bench.click_read(), "");
        EXPECT_EQ(bench.time.now(), 10min);
        EXPECT_TRUE(bench.port.sent.empty());
    }
}

TEST(CloneReadFaults, the_closing_frame_is_any_that_brings_the_response_to_eleven_bytes) {
    for (const Fault& fault :
         {Fault{FaultKind::garbage, radio::kClosing}, Fault{FaultKind::checksum, radio::kClosing},
          Fault{FaultKind::extra_byte, radio::kClosing}}) {
        CloneBench bench(sending({fault}), memory_of_radio());
        EXPECT_EQ(bench.click_read(), "") << text_of(fault);
        EXPECT_EQ(bench.store.MemoryImage, memory_of_radio());
    }
}

TEST(CloneReadFaults, a_closing_frame_of_seven_bytes_is_waited_for) {
    CloneBench bench(sending({{FaultKind::missing_byte, radio::kClosing}}), memory_of_radio());
    bench.time.after(10min - 1us, [&] { EXPECT_TRUE(bench.control.running()); });
    bench.press_after(10min);
    EXPECT_EQ(bench.click_read(), "");
    EXPECT_EQ(bench.time.now(), 10min);
    EXPECT_EQ(bench.store.MemoryImage, memory_of_radio());
}

}  // namespace
}  // namespace memwright::link_tests
