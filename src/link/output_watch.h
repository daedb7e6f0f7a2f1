#pragma once

// Notices bytes that a line does not take. A block needs 44 ms; a port from which nothing leaves
// for two seconds has stopped.

#include <cstddef>

#include "platform/ms_comm.h"
#include "platform/time.h"

namespace memwright {

class OutputWatch {
  public:
    static constexpr double kPatience = 2;  // seconds

    OutputWatch(MSComm& port, Clock& clock) : port_(port), clock_(clock) {}

    // The port has just been opened.
    void begin();

    // So many bytes more were output.
    void add(std::size_t bytes) { output_ += static_cast<long long>(bytes); }

    // Whether all bytes have left. PortError, with their number, if none has for kPatience.
    bool all_have_left();

  private:
    MSComm& port_;
    Clock& clock_;
    long long output_ = 0;
    long long left_ = 0;
    double since_ = 0;  // the time of day when the last byte left
};

}  // namespace memwright
