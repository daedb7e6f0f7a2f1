#pragma once

// One transfer between the whole program, with the real serial port and event loop, and vr120-sim
// at the other end of a pseudo-terminal. Time is real: a transfer that comes to its end takes half
// a minute, nearly all of it asleep. Expectations fail where something is not as it has to be.

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "app/transfers/transfer_bench.h"
#include "qt/core/qt_platform.h"
#include "qt/serial/qt_serial_port.h"
#include "radio/vr120_sim_process.h"
#include "support/temporary_folder.h"

namespace memwright::transfer_tests {

// Noon at the start: a pause over midnight lasts a day.
class NoonClock final : public Clock {
  public:
    double seconds_since_midnight() override;
    std::string date_and_time() override { return "21.11.26 12:34"; }
    std::string timestamp() override { return "2026-11-21 12.34.56"; }

  private:
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

class RealTransfer {
  public:
    explicit RealTransfer(const Plan& plan);

    // The transfer with its faults, and what has to hold after it.
    void run();

  private:
    Expected expected() const;
    void plug_in(const std::vector<radio::Fault>& faults);
    void look();
    void rest(const char* when);
    void check_report() const;
    void check_what_the_radio_has();
    void check_that_the_port_opens_again();

    Plan plan_;
    MemoryImage held_;
    TemporaryFolder folder_;
    std::optional<radio::Vr120Sim> radio_;
    std::string path_;

    NoonClock clock_;
    qt::QtEventLoop loop_;
    QtSerialPort port_{[this](int) { return path_; }};
    TransferBench bench_{port_, clock_, loop_};
    Expected expected_;

    QTimer look_;
    QElapsedTimer running_;
    bool only_begin_ = false;
    // While nothing changes: since when, and the processor time used by then.
    std::string last_status_;
    QElapsedTimer unchanged_;
    double used_then_ = 0;
};

}  // namespace memwright::transfer_tests
