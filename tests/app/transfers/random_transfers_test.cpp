// Ten thousand transfers with random images, faults and moments of cancelling.

#include <gtest/gtest.h>

#include <array>
#include <map>

#include "app/transfers/virtual_transfers.h"
#include "fakes/seeded_random.h"

namespace memwright::transfer_tests {
namespace {

using radio::Fault;
using radio::FaultKind;

#ifdef __SANITIZE_ADDRESS__
constexpr int kTransfers = 1000;
#else
constexpr int kTransfers = 10000;
#endif

Fault random_fault(SeededRandom& random) {
    for (;;) {
        Fault fault{static_cast<FaultKind>(random.between(0, static_cast<int>(FaultKind::doubled))),
                    random.between(radio::kOpening, radio::kClosing)};
        fault.byte = random.between(0, radio::frame_size_at(fault.block));
        if (fault.kind == FaultKind::checksum) fault.byte = 0;
        if (fault.kind == FaultKind::block_number) fault.byte = random.between(231, 255);
        try {
            radio::check(fault);
            return fault;
        } catch (const ConversionError&) {
        }
    }
}

// One fault at a frame: what several damages do together depends on their order.
void add_faults(std::vector<Fault>& faults, SeededRandom& random) {
    for (int wanted = random.between(0, 3); wanted > 0; --wanted) {
        const Fault fault = random_fault(random);
        const bool taken = std::ranges::any_of(
            faults, [&](const Fault& other) { return other.block == fault.block; });
        if (!taken) faults.push_back(fault);
    }
}

Plan random_plan(SeededRandom& random) {
    Plan plan{.radio_is = random.coin() ? radio::Direction::sending : radio::Direction::receiving};
    // Most in a hurry, some byte by byte.
    const int way = random.between(0, 9);
    if (way < 2) plan.pace = radio::Pace::line;
    if (way == 1) plan.bytes_wake_it = false;
    add_faults(plan.faults, random);
    for (int n = random.between(0, 3); n > 0 && plan.reads(); --n) {
        plan.short_frames_before.push_back(random.between(0, 239));
    }
    constexpr int kLongest = 40'000'000;  // microseconds
    if (random.between(0, 4) == 0) plan.cancelled_at = random.between(1, kLongest) / 1000.0;
    return plan;
}

TEST(RandomTransfers, come_to_what_the_rules_make_of_them) {
    SeededRandom random;
    VirtualTransfers transfers;
    std::array<MemoryImage, 16> images;
    for (MemoryImage& image : images) {
        for (int i = 0; i < layout::kImageSize; ++i) image.set(i, random.byte());
    }
    std::map<End, int> ends;
    for (int n = 0; n < kTransfers && !testing::Test::HasFailure(); ++n) {
        MemoryImage& held = images[static_cast<std::size_t>(n) % images.size()];
        for (int i = 0; i < 64; ++i) {
            held.set(random.between(0, layout::kImageSize - 1), random.byte());
        }
        EXPECT_EQ(transfers.run(random_plan(random), held), "") << "transfer " << n;
        ++ends[transfers.ended()];
    }
    std::cout << ends[End::complete] << " complete, " << ends[End::reported] << " reported, "
              << ends[End::cancelled] << " cancelled\n";
    for (const auto direction : {radio::Direction::sending, radio::Direction::receiving}) {
        EXPECT_EQ(transfers.run({.radio_is = direction}, images[0]), "");
    }
}

}  // namespace
}  // namespace memwright::transfer_tests
