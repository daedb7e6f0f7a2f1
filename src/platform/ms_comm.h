#pragma once

// The serial port, under the property names of the serial control that the clone transfers are
// written for. Everything is set before the port is opened. Failures are PortErrors; after one the
// port is closed.

#include <cstdint>
#include <span>
#include <string>

#include "base/bytes.h"

namespace memwright {

// What a port is opened with.
struct PortProperties {
    int CommPort = 1;  // 1 is COM 1
    std::string Settings = "9600,N,8,1";
    bool DTREnable = true;
    bool EOFEnable = false;
    int Handshaking = 0;  // 0 none, 1 XON/XOFF, 2 RTS/CTS
    int InBufferSize = 0;
    int InputLen = 0;   // 0: Input takes everything waiting
    int InputMode = 1;  // 1: bytes
    bool NullDiscard = false;
    int OutBufferSize = 0;
    std::string ParityReplace = {};  // "": bytes are kept as received
    int RThreshold = 0;
    bool RTSEnable = true;
    int SThreshold = 0;
};

class MSComm {
  public:
    virtual ~MSComm() = default;

    virtual void set_properties(const PortProperties& properties) = 0;

    // Closing never fails: it gives the bytes on their way a moment to leave, and drops those that
    // a line does not take.
    virtual void PortOpen(bool open) = 0;
    virtual bool PortOpen() const = 0;

    virtual void Output(std::span<const std::uint8_t> bytes) = 0;  // goes out in one piece
    // Bytes that were output and have not left yet, as far as the device can tell and the line's
    // speed allows.
    virtual int unsent_bytes() = 0;
    virtual int InBufferCount() = 0;
    virtual Bytes Input() = 0;  // all bytes waiting, the oldest first
};

}  // namespace memwright
