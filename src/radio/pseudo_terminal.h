#pragma once

// A pseudo-terminal as the radio's end of a serial line: raw, with the comings and goings of
// whoever has the other end open. Waiting costs no processor time. Failures are PortErrors.

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/bytes.h"

namespace memwright::radio {

// From now on SIGTERM and SIGINT end a wait() and are told by stop_requested().
void stop_on_signals();
bool stop_requested();

// Asks for this thread to run as soon as its time has come, whatever else the computer has to do: a
// radio's bytes do not wait for programs. Does nothing where that is not allowed.
void be_punctual();

class PseudoTerminal {
  public:
    using Time = std::chrono::microseconds;  // of the steady clock
    static Time now();

    PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal();

    // What the computer opens.
    const std::string& path() const { return path_; }

    // What the computer did, in this order.
    struct Activity {
        Bytes bytes_before;
        bool closed = false;
        bool opened = false;
        Bytes bytes_after;
    };

    // Waits until the computer does something, `until` has come, or a signal asks to stop.
    Activity wait(std::optional<Time> until);

    // The number of bytes that got lost because the computer does not read.
    std::size_t send(std::span<const std::uint8_t> bytes);

    // Lets the computer take what has been sent, for a moment, and drops the line for good.
    void hang_up();

  private:
    // What the watch saw of the other end since it was last asked: it was closed and opened again,
    // and written to after that.
    struct Seen {
        bool reopened = false;
        bool written_since = false;
    };

    // What the watch has told of the present opening of the line. Others may open and close the
    // terminal meanwhile, to look at its settings, say.
    struct Told {
        bool opened = false;
        bool closed = false;
        int others = 0;
    };

    void make_raw();
    void start_watch();
    void watch_path();
    void unwatch_path();
    Seen ask_watch();
    Activity look();
    bool is_open() const;
    Bytes read_all();
    void discard_unread();

    std::string path_;
    int master_ = -1;
    int watch_ = -1;  // where the system tells of openings; -1: looked for now and then
    int watch_of_path_ = -1;
    Told told_;
    bool open_ = false;
};

}  // namespace memwright::radio
