#include "link/stall_watch.h"

namespace memwright {

void StallWatch::Timer1_Timer() {
    if (Label1_.caption.get() == last_status_) stall_flag_ = 1;
    last_status_ = Label1_.caption;
}

}  // namespace memwright
