#pragma once

// What vr120-sim prints of its transfers: a line for each beginning, fault and end.

#include <cstddef>
#include <string>
#include <vector>

#include "radio/report.h"

namespace memwright::radio {

class EventLines {
  public:
    // What has happened since the last call. `saved` is added to the line of each complete
    // transfer to the radio.
    std::vector<std::string> take(const Report& report, const std::string& saved);

    // True if the report has the end of a complete transfer to the radio that was not taken yet.
    bool image_received(const Report& report) const;

  private:
    std::size_t ended_ = 0;  // transfers whose end was taken
    bool begun_ = false;     // the beginning of the next one was taken
    std::size_t faults_ = 0;
};

}  // namespace memwright::radio
