#pragma once

// The history of steps in a recovery file, so that a crash takes none of them along.

#include <cstddef>
#include <deque>

#include "files/byte_stream.h"
#include "table/edit.h"

namespace memwright {

struct KeptSteps {
    std::deque<Edit> steps;
    std::size_t done = 0;  // the others were taken back; at most all

    friend bool operator==(const KeptSteps&, const KeptSteps&) = default;
};

// As many of the latest steps as there is room for: what is kept is written twice a second.
inline constexpr std::size_t kMostStepBytes = std::size_t{256} * 1024;

void put(ByteWriter& writer, const std::deque<Edit>& steps, std::size_t done);

// InputError if these are no steps of the channel table.
KeptSteps take_steps(ByteReader& reader);

}  // namespace memwright
