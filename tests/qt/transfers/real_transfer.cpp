#include "qt/transfers/real_transfer.h"

#include <gmock/gmock.h>
#include <time.h>

#include <algorithm>
#include <random>

namespace memwright::transfer_tests {
namespace {

using radio::Fault;
using radio::FaultKind;
using testing::AnyOf;
using testing::HasSubstr;

constexpr int kLookInterval = 50;           // milliseconds
constexpr qint64 kInVain = 2000;            // a status that is the same for so long waits in vain
constexpr qint64 kTooLong = 2 * 60 * 1000;  // nothing takes so long
// Of a core, once nothing goes on any more.
constexpr double kIdleShare = 0.01;
// And while it waits in vain; the sanitizers make each look at the port dearer.
#ifdef __SANITIZE_ADDRESS__
constexpr double kWaitingShare = 0.02;
#else
constexpr double kWaitingShare = kIdleShare;
#endif

MemoryImage random_image() {
    std::mt19937 random(7);
    MemoryImage image;
    for (int i = 0; i < layout::kImageSize; ++i) {
        image.set(i, static_cast<std::uint8_t>(random() >> 24));
    }
    return image;
}

double processor_time() {
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

Bytes bytes_of(const MemoryImage& image) {
    const auto bytes = image.bytes();
    return {bytes.begin(), bytes.end()};
}

}  // namespace

double NoonClock::seconds_since_midnight() {
    constexpr double kNoon = 12 * 3600;
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    return kNoon + passed.count();
}

RealTransfer::RealTransfer(const Plan& plan)
    : plan_(plan), held_(random_image()), expected_(expected()) {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] { look(); });
    folder_.put("held.120", bytes_of(held_));
    bench_.while_a_report_is_shown([this] { rest("while the report is shown"); });
}

// How many slow bytes come in time is for the line and the machine to say, and what of a hang-up is
// noticed first.
Expected RealTransfer::expected() const {
    const auto expected_of = [this](const Plan& plan) {
        return plan.reads() ? expected_read(plan, held_, bench_.owned())
                            : expected_write(plan, bench_.owned());
    };
    Expected expected = expected_of(plan_);
    if (expected.outcome.end != End::reported) return expected;
    for (const Fault& fault : plan_.faults) {
        const bool hangs_up = fault.kind == FaultKind::hang_up;
        const bool slow = fault.kind == FaultKind::trickle;
        if (hangs_up || slow) expected.outcome.report = "";
        // A line drops when its last bytes were taken, or 0.2 seconds later: two frames of a write.
        const bool late = hangs_up && fault.block >= radio::kClosing - 2 && !plan_.reads();
        if (slow || late) expected.otherwise = expected_of({.radio_is = plan_.radio_is}).outcome;
    }
    return expected;
}

void RealTransfer::plug_in(const std::vector<Fault>& faults) {
    std::vector<std::string> words = {"--pace",        "none",
                                      "--short-frame", "none",
                                      "--image",       folder_.file("held.120"),
                                      "--save",        folder_.file("taken.120"),
                                      "--mode",        plan_.reads() ? "auto" : "receive"};
    for (const Fault& fault : faults) {
        words.emplace_back("--fault");
        words.push_back(radio::text_of(fault));
    }
    radio_.emplace(words);
    path_ = radio_->line().value_or("");
}

void RealTransfer::run() {
    plug_in(plan_.faults);
    running_.start();
    unchanged_.start();
    look_.start(kLookInterval);
    EXPECT_EQ(bench_.transfer(plan_, expected_), "");
    look_.stop();
    check_report();
    if (!plan_.reads()) check_what_the_radio_has();
    rest("after the transfer");
    check_that_the_port_opens_again();
    EXPECT_EQ(bench_.check_what_is_kept(), "");
}

// Who waits in vain costs little, and ends when the user says so.
void RealTransfer::look() {
    if (!bench_.running()) return;
    if (bench_.status() != last_status_) {
        last_status_ = bench_.status();
        unchanged_.restart();
        used_then_ = processor_time();
    }
    const bool in_vain = expected_.waits && unchanged_.elapsed() > kInVain;
    if (in_vain && !only_begin_) {
        const double seconds = static_cast<double>(unchanged_.elapsed()) / 1000;
        EXPECT_LE(processor_time() - used_then_, kWaitingShare * seconds) << "while it waits";
    }
    const bool begun = only_begin_ && last_status_.find('%') != std::string::npos;
    if (in_vain || begun || running_.elapsed() > kTooLong) bench_.escape();
}

// What the program costs when it has nothing to do.
void RealTransfer::rest(const char* when) {
    constexpr qint64 kRest = 1500;
    look_.stop();
    const double before = processor_time();
    QElapsedTimer resting;
    resting.start();
    while (resting.elapsed() < kRest) {
        loop_.wait(std::chrono::milliseconds(kRest - resting.elapsed()));
    }
    const double seconds = static_cast<double>(resting.elapsed()) / 1000;
    EXPECT_LE(processor_time() - before, kIdleShare * seconds) << when;
}

void RealTransfer::check_report() const {
    if (bench_.ended() != End::reported || !expected_.outcome.report.empty()) return;
    EXPECT_THAT(bench_.report(), AnyOf(HasSubstr("COM 1 (" + path_ + ")"),
                                       HasSubstr("bytes arrived instead of 41")));
}

// It has told when the transfer was over.
void RealTransfer::check_what_the_radio_has() {
    std::optional<std::string> line = radio_->line();
    while (line && line->rfind("received", 0) != 0 && *line != "hung up") line = radio_->line();
    ASSERT_TRUE(line) << "the radio does not tell";
    const bool taken = std::filesystem::exists(folder_.file("taken.120"));
    EXPECT_EQ(taken, bench_.ended() == End::complete && expected_.outcome.radio_takes_it);
    if (taken) {
        EXPECT_EQ(folder_.get("taken.120"), bytes_of(expected_.outcome.image));
    }
}

void RealTransfer::check_that_the_port_opens_again() {
    const bool hung_up = std::ranges::any_of(
        plan_.faults, [](const Fault& fault) { return fault.kind == FaultKind::hang_up; });
    if (hung_up) plug_in({});
    expected_ = {};
    expected_.outcome.end = End::cancelled;
    only_begin_ = true;
    running_.restart();
    look_.start(kLookInterval);
    EXPECT_EQ(bench_.transfer({.radio_is = plan_.radio_is}, expected_), "") << "the one after it";
    look_.stop();
    EXPECT_THAT(bench_.status(), HasSubstr("cancelled"));
}

}  // namespace memwright::transfer_tests
