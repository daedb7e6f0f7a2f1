#pragma once

// A simulated radio without any pace at the end of a pseudo-terminal, served by the event loop of
// the program that it talks to.

#include <QTimer>
#include <chrono>
#include <string>

#include "fakes/pseudo_terminal.h"
#include "radio/simulated_radio.h"

namespace memwright::gui {

class RadioEnd {
  public:
    explicit RadioEnd(radio::Options options, const MemoryImage& memory = {})
        : radio_(memory, std::move(options)) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { serve(); });
        constexpr int kInterval = 2;
        timer_.start(kInterval);
    }

    const std::string& path() const { return path_; }
    const radio::SimulatedRadio& radio() const { return radio_; }
    const Bytes& received() const { return received_; }

    // The program has opened the line, and the radio's owner has pressed the key.
    void begin() {
        left_ = false;
        radio_.line_closed(now());
        radio_.line_opened(now());
    }

    void send(std::span<const std::uint8_t> bytes) { line_.send(bytes); }

    void hang_up() {
        timer_.stop();
        line_.hang_up();
    }

    // True once the program no longer holds the line.
    bool is_left() {
        while (!line_.is_silent()) {
            if (line_.receive(1, kShort).empty()) return true;
        }
        return false;
    }

  private:
    static constexpr std::chrono::milliseconds kShort{5};

    static radio::Time now() {
        return std::chrono::duration_cast<radio::Time>(
            std::chrono::steady_clock::now().time_since_epoch());
    }

    void serve() {
        Bytes heard;
        while (!line_.is_silent()) {
            const Bytes byte = line_.receive(1, kShort);
            left_ = left_ || byte.empty();
            if (byte.empty()) break;  // the line is closed
            heard.push_back(byte.front());
        }
        // What an ended transfer left on the line is nothing to the next one.
        if (left_) {
            radio_.transmit(now());
            return;
        }
        received_.insert(received_.end(), heard.begin(), heard.end());
        if (!heard.empty()) radio_.receive(heard, now());
        const Bytes answer = radio_.transmit(now());
        if (!answer.empty()) line_.send(answer);
        if (radio_.hung_up()) hang_up();
    }

    bool left_ = false;  // closed since begin()
    fakes::PseudoTerminal line_;
    std::string path_ = line_.path();
    radio::SimulatedRadio radio_;
    Bytes received_;
    QTimer timer_;
};

}  // namespace memwright::gui
