#pragma once

// A VR-120 in clone mode, at the other end of a cable with a single wire: whatever the computer
// sends comes back to it as an echo before anything that the radio answers. Time is the caller's:
// microseconds since any moment, which never go back; every call brings the radio up to its `now`.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "image/memory_image.h"
#include "radio/faults.h"
#include "radio/reception.h"
#include "radio/report.h"
#include "radio/wire.h"

namespace memwright::radio {

// automatic: the radio sends when the line has been open and silent for a second, and receives when
// an opening frame arrives, be it in the middle of its own sending.
// send: it sends as soon as the line is opened. receive: it only receives.
// Once a transfer has begun, another sending begins only when the line is opened anew.
enum class Mode { automatic, send, receive };

struct Options {
    Mode mode = Mode::automatic;
    Pace pace = Pace::line;
    std::vector<Fault> faults = {};
    // The blocks, 0 to 239, before which the radio answers an acknowledgement with eight bytes
    // that are no block. Listed twice, twice.
    std::vector<int> short_frames_before = {40, 120, 200};
};

class SimulatedRadio {
  public:
    // ConversionError for a fault that cannot happen, IndexError for a block that does not exist.
    SimulatedRadio(MemoryImage memory, Options options);

    // The computer opens and closes its end of the line.
    void line_opened(Time now);
    void line_closed(Time now);

    // The computer puts bytes on the line (which it thereby has opened).
    void receive(std::span<const std::uint8_t> bytes, Time now);

    // The bytes that have reached the computer since the last call, echoes included.
    Bytes transmit(Time now);

    // When something happens next if the computer does nothing: call transmit() then.
    std::optional<Time> next_event() const;

    // The radio has dropped the line; there is no more to come.
    bool hung_up() const { return hung_up_; }

    // What the radio holds: what it was given, or what the last complete transfer to it brought.
    const MemoryImage& memory() const { return memory_; }

    const Report& report() const { return report_; }

  private:
    enum class State { idle, sending, silent, receiving };

    void advance(Time now);
    void handle(const Wire::Item& item);
    void on_opened(Time now);
    void on_closed(Time now);
    void hear(std::uint8_t byte, Time now);
    void look_for_acknowledgement_or_opening(Time now);

    void begin_sending(Time now);
    void send_next(Time now);
    void send_frame(int place, Time now);
    std::vector<Fault> take_faults(int place);

    void begin_receiving(std::span<const std::uint8_t> opening_frame, Time now);
    void take_byte_of_transfer(std::uint8_t byte, Time now);
    void take_byte(std::uint8_t byte, Time now);
    bool damage_is_due(int place) const;
    void take_damaged_frame(int place, Time now);
    bool take_hang_up(int place, int bytes);

    Transfer& begin_transfer(Direction direction);
    Transfer& transfer() { return report_.transfers.back(); }
    void end_transfer();
    void drop_line();

    MemoryImage memory_;
    Options options_;  // its faults are those that have not happened yet
    Wire wire_;
    State state_ = State::idle;
    Report report_;

    bool line_open_ = false;
    bool hung_up_ = false;
    std::optional<Time> send_at_;  // if nothing arrives before
    Bytes arrived_;                // at the computer, not yet taken by transmit()
    Bytes heard_;                  // the last bytes that are part of nothing yet, at most eight

    int next_place_ = kOpening;
    std::vector<int> short_frames_left_;
    std::optional<Reception> reception_;
    Bytes held_;  // the bytes of a frame that is to be damaged before it is received
};

}  // namespace memwright::radio
