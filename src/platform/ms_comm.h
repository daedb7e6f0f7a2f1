#pragma once

// The serial port, under the property names of the serial control that the clone transfers are
// written for. Everything is set before the port is opened. Failures are PortErrors; after one the
// port is closed.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace memwright {

class MSComm {
  public:
    virtual ~MSComm() = default;

    virtual void CommPort(int number) = 0;               // 1 is COM 1
    virtual void Settings(const std::string& text) = 0;  // "9600,E,8,1"
    virtual void DTREnable(bool on) = 0;
    virtual void EOFEnable(bool on) = 0;
    virtual void Handshaking(int kind) = 0;  // 0 is none
    virtual void InBufferSize(int bytes) = 0;
    virtual void InputLen(int bytes) = 0;  // 0: Input takes everything waiting
    virtual void InputMode(int mode) = 0;  // 1: bytes
    virtual void NullDiscard(bool on) = 0;
    virtual void OutBufferSize(int bytes) = 0;
    virtual void ParityReplace(const std::string& text) = 0;  // "": bytes are kept as received
    virtual void RThreshold(int bytes) = 0;
    virtual void RTSEnable(bool on) = 0;
    virtual void SThreshold(int bytes) = 0;

    // Closing never fails: it gives the bytes on their way a moment to leave, and drops those that
    // a line does not take.
    virtual void PortOpen(bool open) = 0;
    virtual bool PortOpen() const = 0;

    virtual void Output(std::span<const std::uint8_t> bytes) = 0;  // goes out in one piece
    // Bytes that were output and have not left yet, as far as the device can tell and the line's
    // speed allows.
    virtual int unsent_bytes() = 0;
    virtual int InBufferCount() = 0;
    virtual std::vector<std::uint8_t> Input() = 0;  // all bytes waiting, the oldest first
};

}  // namespace memwright
