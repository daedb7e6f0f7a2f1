#pragma once

// What the radio has to say of its transfers.

#include <vector>

#include "radio/faults.h"

namespace memwright::radio {

enum class Direction { sending, receiving };

struct Transfer {
    Direction direction;
    int frames = 0;           // opening, blocks, short and closing frames, damaged ones included
    int blocks = 0;           // those of them that are blocks
    int checksum_errors = 0;  // frames received whose last byte is not their sum
    int order_errors = 0;     // blocks received whose number is not the one after the last
    int content_errors = 0;   // frames received with right sums that hold what they may not
    int stray_bytes = 0;      // bytes received that belong to no frame or acknowledgement
    std::vector<Fault> faults = {};  // those that happened
    bool ended = false;
    bool complete = false;  // ended, and all as it has to be
};

struct Report {
    std::vector<Transfer> transfers;  // the last one may be under way
};

}  // namespace memwright::radio
