#include "link/output_watch.h"

#include <string>

#include "base/error.h"

namespace memwright {

void OutputWatch::begin() {
    output_ = left_ = 0;
    since_ = clock_.seconds_since_midnight();
}

bool OutputWatch::all_have_left() {
    const int unsent = port_.unsent_bytes();
    const long long left = output_ - unsent;
    const double now = clock_.seconds_since_midnight();
    // A clock that was set back, or has passed midnight, begins anew.
    if (unsent == 0 || left > left_ || now < since_) since_ = now;
    left_ = left;
    if (now - since_ < kPatience) return unsent == 0;
    throw PortError("The serial port has stopped taking bytes: only " + std::to_string(left) +
                        " of " + std::to_string(output_) + " bytes were sent.",
                    "The port is closed. Check the cable and the plugs, then start the transfer "
                    "again.");
}

}  // namespace memwright
