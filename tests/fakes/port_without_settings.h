#pragma once

// A serial port that takes every setting and does nothing with it: what is left to a fake that is
// about bytes.

#include <string>

#include "platform/ms_comm.h"

namespace memwright::fakes {

class PortWithoutSettings : public MSComm {
  public:
    void CommPort(int /*number*/) override {}
    void Settings(const std::string& /*text*/) override {}
    void DTREnable(bool /*on*/) override {}
    void EOFEnable(bool /*on*/) override {}
    void Handshaking(int /*kind*/) override {}
    void InBufferSize(int /*bytes*/) override {}
    void InputLen(int /*bytes*/) override {}
    void InputMode(int /*mode*/) override {}
    void NullDiscard(bool /*on*/) override {}
    void OutBufferSize(int /*bytes*/) override {}
    void ParityReplace(const std::string& /*text*/) override {}
    void RThreshold(int /*bytes*/) override {}
    void RTSEnable(bool /*on*/) override {}
    void SThreshold(int /*bytes*/) override {}
};

}  // namespace memwright::fakes
