#include "app/transfers/transfer_model.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "radio/frames.h"

namespace memwright::transfer_tests {
namespace {

using radio::Fault;
using radio::FaultKind;
using radio::kBlocks;
using radio::kClosing;
using radio::kOpening;

constexpr double kNever = std::numeric_limits<double>::infinity();
constexpr double kByte = 11'000.0 / 9600;
constexpr double kSettle = 100;
// A pause of 0.1 seconds may end a millisecond late, and a look comes every ten.
constexpr double kLate = 1.5, kLook = 10;

// The bytes that come to a reader, and the radio that puts them on the wire.
class Line {
  public:
    Line(const Plan& plan, const MemoryImage& held)
        : plan_(plan),
          held_(held),
          faults_(plan.faults),
          short_frames_(plan.short_frames_before),
          byte_(plan.pace == radio::Pace::line ? kByte : 0) {
        send_frame(0);
    }

    // When the n-th byte that is waiting comes.
    double arrival(std::size_t n) const {
        return n <= waiting_.size() ? waiting_[n - 1].at : kNever;
    }

    // When the line drops.
    double drop = kNever;

    Bytes take(double until) {
        Bytes taken;
        const auto end = std::ranges::find_if(waiting_, [&](auto& a) { return a.at > until; });
        for (auto it = waiting_.begin(); it != end; ++it) taken.push_back(it->value);
        waiting_.erase(waiting_.begin(), end);
        return taken;
    }

    void acknowledge(double now) {
        put(Bytes{3, 6, 9}, now, 0, 0);
        if (!silent_ && place_ <= kClosing) send_frame(free_);
    }

  private:
    struct Arrival {
        double at;
        std::uint8_t value;
    };

    void put(const Bytes& bytes, double now, std::size_t slow, double gap) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            free_ = std::max(now, free_ + (i < slow ? gap : 0)) + byte_;
            waiting_.push_back({free_, bytes[i]});
        }
    }

    void send_frame(double now) {
        const auto short_frame = std::ranges::find(short_frames_, place_);
        if (place_ != kOpening && short_frame != short_frames_.end()) {
            short_frames_.erase(short_frame);
            put({radio::kShortFrame.begin(), radio::kShortFrame.end()}, now, 0, 0);
            return;
        }
        Bytes frame = radio::frame_at(held_, place_);
        int slow = 0;
        bool drops = false;
        for (const Fault& fault : faults_) {
            if (fault.block != place_) continue;
            radio::damage(frame, fault);
            const auto byte = static_cast<std::size_t>(fault.byte);
            if (fault.kind == FaultKind::trickle) slow = fault.byte == 0 ? 7 : fault.byte;
            if (fault.kind == FaultKind::silence || fault.kind == FaultKind::hang_up) {
                frame.resize(std::min(frame.size(), byte));
                silent_ = true;
                drops = drops || fault.kind == FaultKind::hang_up;
            }
        }
        ++place_;
        const double gap = slow == 0 ? 0 : std::min(350.0 / slow, 50.0);
        put(frame, now, static_cast<std::size_t>(slow), gap);
        if (drops) drop = std::max(now, free_);
    }

    const Plan& plan_;
    const MemoryImage& held_;
    std::vector<Fault> faults_;
    std::vector<int> short_frames_;
    double byte_;
    double free_ = -kNever;
    int place_ = kOpening;
    bool silent_ = false;
    std::vector<Arrival> waiting_;
};

class Reader {
  public:
    Reader(const Plan& plan, const MemoryImage& held, const MemoryImage& owned)
        : plan_(plan), line_(plan, held), image_(owned) {}

    Expected run() {
        read();
        const double slack = plan_.bytes_wake_it ? 300 : 3000;
        const bool planned = plan_.cancelled_at && (waits_ || *plan_.cancelled_at < now_);
        if (planned || waits_) end_by_user();
        expected_.waits = waits_ && !planned;
        if (plan_.cancelled_at && !waits_ && std::abs(*plan_.cancelled_at - now_) < slack) {
            expected_.close_call = true;
        }
        if (plan_.cancelled_at && std::abs(*plan_.cancelled_at - all_received_at_) < slack) {
            expected_.close_call = true;
        }
        return expected_;
    }

  private:
    // Once all blocks are there, cancelling the rest of the exchange completes the read.
    void end_by_user() {
        const double at = plan_.cancelled_at.value_or(kNever);
        if (all_received_at_ <= at && all_received_at_ != kNever) {
            expected_.outcome.end = End::complete;
        } else {
            expected_.outcome = {.end = End::cancelled, .report = {}, .image = {}, .doubtful = {}};
        }
    }

    void read() {
        if (!take_opening()) return;
        for (int count = 1; count <= kBlocks; ++count) {
            Bytes response(11);
            while (response.size() == 11) {
                if (!wait_for_eleven()) return;
                if (!settle()) return;
                response = line_.take(now_);
            }
            if (!keep(response, count)) return;
        }
        all_received_at_ = now_;
        expected_.outcome.all_received = true;
        expected_.outcome.image = image_;
        if (!wait_for_eleven()) return;
        expected_.outcome.end = End::complete;
    }

    // Exactly eight bytes, at a moment at which the program looks.
    bool take_opening() {
        const double eight = line_.arrival(8), nine = line_.arrival(9);
        bool seen = nine > eight;
        if (nine != kNever && !plan_.bytes_wake_it) {
            seen = seen && std::ceil(eight / kLook) * kLook < nine;
            expected_.close_call = seen;
        }
        if (!wait_until(seen ? eight : kNever)) return false;
        line_.take(now_);
        return true;
    }

    bool wait_for_eleven() {
        line_.acknowledge(now_);
        return wait_until(line_.arrival(11));
    }

    bool settle() {
        const double late = kLate + (plan_.bytes_wake_it ? 0 : kLook);
        const double end = now_ + kSettle;
        for (std::size_t n = 1; line_.arrival(n) != kNever; ++n) {
            const double at = line_.arrival(n);
            if (at > end - kLate && at < end + late) expected_.close_call = true;
        }
        return wait_until(end);
    }

    // False if that never comes, or the line drops before.
    bool wait_until(double time) {
        if (line_.drop <= time) {
            now_ = std::max(now_, line_.drop);
            if (line_.drop == kNever) {
                waits_ = true;
                return false;
            }
            return report("hung up");
        }
        now_ = std::max(now_, time);
        return true;
    }

    bool keep(const Bytes& response, int count) {
        const std::string where = "failed at block " + std::to_string(count) + " of 240: ";
        if (response[7] >= 231) return true;
        if (response.size() < 41) {
            return report(where + std::to_string(response.size()) +
                          " bytes arrived instead of 41.");
        }
        if (position_ == 7392) return report(where + "the memory was complete already.");
        const int sum = std::accumulate(response.begin() + 3, response.begin() + 40, 0);
        if (sum % 256 != response[40]) expected_.outcome.doubtful.push_back(position_ / 32);
        for (std::size_t i = 8; i < 40; ++i) image_.set(position_++, response[i]);
        return true;
    }

    bool report(const std::string& text) {
        expected_.outcome.end = End::reported;
        expected_.outcome.report = text;
        return false;
    }

    const Plan& plan_;
    Line line_;
    MemoryImage image_;
    int position_ = 0;
    double now_ = 0;
    double all_received_at_ = kNever;
    bool waits_ = false;
    Expected expected_;
};

// A block's data if a radio can take the block for a whole one, damaged as it is: garbage has the
// right sum once in 256 times.
std::optional<Bytes> data_of(const Bytes& frame, int number) {
    constexpr std::size_t kSize = 38, kSum = 37, kData = 5;
    if (frame.size() != kSize || frame[4] != number) return {};
    if (!std::equal(frame.begin(), frame.begin() + 4, Bytes{3, 3, 0, 0}.begin())) return {};
    if (std::accumulate(frame.begin(), frame.begin() + kSum, 0) % 256 != frame[kSum]) return {};
    Bytes data(frame.begin() + kData, frame.begin() + kSum);
    const bool filler = std::ranges::all_of(data, [](int byte) { return byte == 0xFF; });
    if (number >= 231 && !filler) return {};
    return data;
}

// What a fault makes of what the radio takes.
void let_happen(const Fault& fault, const MemoryImage& owned, Outcome& outcome) {
    if (fault.kind == FaultKind::trickle) return;
    Bytes frame = radio::frame_at(owned, fault.block);
    if (fault.kind == FaultKind::silence || fault.kind == FaultKind::hang_up) frame.clear();
    if (!frame.empty()) radio::damage(frame, fault);
    if (fault.block == kClosing) {
        // A radio that has both closing frames is done.
        const Bytes right = radio::frame_at(owned, kClosing);
        const bool twice = frame.size() == 2 * right.size();
        if (frame != right && !twice) outcome.radio_takes_it = false;
        return;
    }
    const auto data = fault.block == kOpening ? std::nullopt : data_of(frame, fault.block);
    if (!data) outcome.radio_takes_it = false;
    if (!data || fault.block >= 231) return;
    for (std::size_t i = 0; i < data->size(); ++i) {
        outcome.image.set(fault.block * 32 + static_cast<int>(i), (*data)[i]);
    }
}

}  // namespace

radio::Options Plan::options() const {
    return {.mode = reads() ? radio::Mode::send : radio::Mode::receive,
            .pace = pace,
            .faults = faults,
            .short_frames_before = short_frames_before};
}

std::string text_of(const Plan& plan) {
    std::string text = plan.reads() ? "read" : "write";
    for (const Fault& fault : plan.faults) text += " " + radio::text_of(fault);
    for (const int block : plan.short_frames_before) {
        text += " short-frame@" + std::to_string(block);
    }
    if (plan.pace == radio::Pace::line) text += ", at the pace of the line";
    if (!plan.bytes_wake_it) text += ", looked for";
    if (plan.cancelled_at) text += ", cancelled at " + std::to_string(*plan.cancelled_at);
    return text;
}

Expected expected_read(const Plan& plan, const MemoryImage& held, const MemoryImage& owned) {
    return Reader(plan, held, owned).run();
}

// Nothing that comes back is looked at: a write ends well unless the line drops.
Expected expected_write(const Plan& plan, const MemoryImage& owned) {
    constexpr double kFrame = kSettle + kLate;
    constexpr double kFrames = 1 + kBlocks + 1;
    Expected expected;
    expected.outcome.radio_takes_it = true;
    expected.outcome.image = owned;
    double earliest = kSettle * kFrames, latest = kFrame * kFrames;
    int silent_from = kClosing + 1;
    for (const Fault& fault : plan.faults) {
        if (fault.kind == FaultKind::silence) silent_from = std::min(silent_from, fault.block);
    }
    for (const Fault& fault : plan.faults) {
        let_happen(fault, owned, expected.outcome);
        if (fault.kind != FaultKind::hang_up) continue;
        // A radio whose count of blocks was confused does not know where it is.
        if (plan.faults.size() > 1) expected.close_call = true;
        // Nor does one that hears nothing any more.
        if (fault.block > silent_from) continue;
        const double sent = fault.block + 1;
        expected.outcome.end = End::reported;
        expected.outcome.report = "hung up";
        earliest = std::min(earliest, sent * kSettle);
        latest = std::min(latest, (sent + 1) * kFrame);
    }
    if (!plan.cancelled_at || *plan.cancelled_at > latest) return expected;
    if (*plan.cancelled_at > earliest - kLate) expected.close_call = true;
    expected.outcome.end = End::cancelled;
    return expected;
}

}  // namespace memwright::transfer_tests
