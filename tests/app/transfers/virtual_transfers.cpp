#include "app/transfers/virtual_transfers.h"

#include <algorithm>

namespace memwright::transfer_tests {
namespace {

constexpr int kThoroughly = 17;

}  // namespace

std::string VirtualTransfers::run(const Plan& plan, const MemoryImage& held) {
    const Expected expected = plan.reads() ? expected_read(plan, held, bench_.owned())
                                           : expected_write(plan, bench_.owned());
    radio::SimulatedRadio radio(held, plan.options());
    std::string wrong = run(plan, expected, radio);
    if (!plan.reads()) wrong += check_written(expected, held, radio);
    port_.plug(none_);
    if (transfers_ % kThoroughly == 0) wrong += bench_.check_what_is_kept();
    return wrong.empty() ? "" : text_of(plan) + ":\n" + wrong;
}

std::string VirtualTransfers::run_good(const MemoryImage& held) {
    const bool reads = transfers_ % kThoroughly == 0;
    return run({.radio_is = reads ? radio::Direction::sending : radio::Direction::receiving}, held);
}

std::string VirtualTransfers::run(const Plan& plan, const Expected& expected,
                                  radio::SimulatedRadio& radio) {
    // A pause over midnight would last a day.
    constexpr double kNoon = 12 * 3600;
    time_.set_time_of_day(kNoon);
    port_.plug(radio);
    port_.bytes_end_waits = plan.bytes_wake_it;
    port_.sent.clear();
    const Time cancel_at =
        plan.cancelled_at ? Time(static_cast<Time::rep>(*plan.cancelled_at * 1000)) : kPatience;
    const int number = ++transfers_;
    // Whoever waits in vain has to wait till then, and not a moment longer.
    time_.after(cancel_at, [this, number] {
        if (number == transfers_ && bench_.running()) bench_.escape();
    });
    time_.end = time_.now() + 2 * kPatience;
    const Time start = time_.now();
    std::string wrong = bench_.transfer(plan, expected);
    if (expected.waits && time_.now() - start < kPatience) wrong += "it did not wait\n";
    if (bench_.ended() == End::cancelled && time_.now() - start > cancel_at) {
        wrong += "it went on after it was cancelled\n";
    }
    return wrong;
}

// What was sent is a beginning of the one right sequence, all of it if the write is complete;
// the radio has taken it as a whole or not at all.
std::string VirtualTransfers::check_written(const Expected& expected, const MemoryImage& held,
                                            radio::SimulatedRadio& radio) {
    std::vector<std::uint8_t> sent;
    for (const auto& piece : port_.sent) {
        sent.insert(sent.end(), piece.bytes.begin(), piece.bytes.end());
    }
    const auto& right = right_;
    const bool whole = bench_.ended() == End::complete;
    std::string wrong;
    if (sent.size() > right.size() || (whole && sent.size() != right.size()) ||
        !std::equal(sent.begin(), sent.end(), right.begin())) {
        wrong += "other bytes were sent\n";
    }
    time_.run_for(std::chrono::seconds(1));
    const bool taken = whole && expected.outcome.radio_takes_it;
    if (radio.memory() != (taken ? expected.outcome.image : held)) {
        wrong += taken ? "the radio did not take it\n" : "the radio took it\n";
    }
    return wrong;
}

}  // namespace memwright::transfer_tests
