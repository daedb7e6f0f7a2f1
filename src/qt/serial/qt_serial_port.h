#pragma once

// The serial port on QSerialPort. Bytes arrive with the event loop or without it; those sent leave
// at once. The properties count from the next opening on, RThreshold as the number of bytes that
// wake the event loop.
// Errors: PortError, and the port is closed. A hang-up is told by the next InBufferCount, Input or
// Output, and again by those after it, until the port is opened or closed; bytes that were still
// waiting are dropped with it.

#include <QSerialPort>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "base/bytes.h"
#include "platform/ms_comm.h"
#include "qt/serial/transmission.h"

namespace memwright {

class QtSerialPort : public MSComm {
  public:
    // The device that a COM number stands for; a PortError if it stands for none.
    using DeviceOf = std::function<std::string(int)>;

    explicit QtSerialPort(DeviceOf device_of);
    ~QtSerialPort() override;
    QtSerialPort(const QtSerialPort&) = delete;
    QtSerialPort& operator=(const QtSerialPort&) = delete;

    void set_properties(const PortProperties& properties) override { properties_ = properties; }

    void PortOpen(bool open) override;
    bool PortOpen() const override { return port_.isOpen(); }

    void Output(std::span<const std::uint8_t> bytes) override;
    int unsent_bytes() override;
    int InBufferCount() override;
    Bytes Input() override;

  private:
    std::string name() const;
    void open();
    void set_up();
    void close();
    int waiting_to_leave();
    void finish_output();
    void on_error(QSerialPort::SerialPortError error);
    void give_up(const std::string& why);
    void require_open();

    DeviceOf device_of_;
    PortProperties properties_;
    PortProperties opened_;  // as they were at the opening
    std::string path_;
    QSerialPort port_;
    bool pseudo_terminal_ = false;
    std::int64_t output_ = 0;    // bytes since the opening
    std::int64_t taken_ = 0;     // of these by the system
    Transmission transmission_;  // of these
    bool in_use_ = false;        // open and set up: from here on errors end it
    std::string lost_;           // why the port was closed under its user
};

}  // namespace memwright
