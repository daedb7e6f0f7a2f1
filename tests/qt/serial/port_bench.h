#pragma once

// A QtSerialPort set up as the transfers set it up, with a pseudo-terminal at its other end.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>
#include <string>

#include "base/error.h"
#include "fakes/pseudo_terminal.h"
#include "qt/serial/qt_serial_port.h"

namespace memwright::fakes {

using Bytes = PseudoTerminal::Bytes;

inline PortProperties transfer_properties() {
    constexpr int kBufferSize = 30000, kThreshold = 8;
    return {.Settings = "9600,E,8,1",
            .InBufferSize = kBufferSize,
            .OutBufferSize = kBufferSize,
            .RThreshold = kThreshold};
}

// Runs the event loop until `done`, for five seconds at most.
inline bool spin_until(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    QTimer step;
    step.start(1);
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

inline std::string error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const PortError& error) {
        return error.what();
    }
    return "(no error)";
}

class PortBench : public ::testing::Test {
  protected:
    PortBench() { port_.set_properties(properties_); }

    void open() {
        port_.PortOpen(true);
        ASSERT_TRUE(port_.PortOpen());
    }

    // Takes what comes until `count` bytes are there.
    Bytes input(std::size_t count) {
        Bytes bytes;
        spin_until([&] {
            const Bytes part = port_.Input();
            bytes.insert(bytes.end(), part.begin(), part.end());
            return bytes.size() >= count;
        });
        return bytes;
    }

    PortProperties properties_ = transfer_properties();
    PseudoTerminal line_;
    std::string path_ = line_.path();
    QtSerialPort port_{[this](int) { return path_; }};
};

}  // namespace memwright::fakes
