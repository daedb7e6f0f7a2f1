// Every kind of fault at every frame of a read and of a write, at the frame's boundary and in its
// middle: the transfer comes to what the protocol's rules make of it, and after it the port opens
// again and a transfer in which nothing is wrong comes well.

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "app/transfers/virtual_transfers.h"

namespace memwright::transfer_tests {
namespace {

using radio::Fault;
using radio::FaultKind;

#ifdef __SANITIZE_ADDRESS__
constexpr int kStep = 13;
#else
constexpr int kStep = 1;
#endif

MemoryImage random_image(unsigned seed) {
    std::mt19937 random(seed);
    MemoryImage image;
    for (int i = 0; i < layout::kImageSize; ++i) {
        image.set(i, static_cast<std::uint8_t>(random() >> 24));
    }
    return image;
}

class TransferFaults : public testing::TestWithParam<FaultKind> {
  protected:
    // At the boundary and in the middle of each frame.
    void run_all(radio::Direction direction) {
        for (int place = radio::kOpening; place <= radio::kClosing; place += kStep) {
            const int size = radio::frame_size_at(place);
            for (const int byte : {0, size / 2}) run({GetParam(), place, byte}, direction);
        }
        // None of them is left out by steps.
        for (const int place : {radio::kOpening, 0, 230, 231, 239, radio::kClosing}) {
            if (kStep == 1) break;
            run({GetParam(), place, 0}, direction);
            run({GetParam(), place, radio::frame_size_at(place) / 2}, direction);
        }
        std::string told;
        for (const auto& [end, count] : ends_) told += std::to_string(count) + " " + end + " ";
        std::cout << radio::text_of({GetParam(), 0}) << ": " << told << '\n';
    }

    void run(const Fault& fault, radio::Direction direction) {
        const Plan plan{.radio_is = direction, .faults = {fault}};
        EXPECT_EQ(transfers_.run(plan, held_), "");
        ++ends_[transfers_.ended() == End::complete   ? "complete"
                : transfers_.ended() == End::reported ? "reported"
                                                      : "waited until cancelled"];
        if (transfers_.ended() == End::complete) return;
        EXPECT_EQ(transfers_.run_good(held_), "") << "after " << text_of(plan);
    }

    VirtualTransfers transfers_;
    MemoryImage held_ = random_image(7);
    std::map<std::string, int> ends_;
};

TEST_P(TransferFaults, at_every_frame_of_a_read) { run_all(radio::Direction::sending); }

TEST_P(TransferFaults, at_every_frame_of_a_write) { run_all(radio::Direction::receiving); }

std::string name_of(const testing::TestParamInfo<FaultKind>& info) {
    std::string name = radio::text_of({info.param, 0});
    name.resize(name.find('@'));
    std::ranges::replace(name, '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Kinds, TransferFaults,
                         testing::Values(FaultKind::hang_up, FaultKind::silence, FaultKind::garbage,
                                         FaultKind::trickle, FaultKind::extra_byte,
                                         FaultKind::missing_byte, FaultKind::flipped_bit,
                                         FaultKind::doubled),
                         name_of);

}  // namespace
}  // namespace memwright::transfer_tests
