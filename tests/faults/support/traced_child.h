#pragma once

// Work in a child process whose calls to the system on the files of one folder are counted,
// recorded, and made to fail, fall short or be the last: at the N-th call, once or from then on.
// The code under test is the real one, and knows nothing of it. Linux on x86-64; where the system
// does not let a process be traced, nothing can be done.

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "faults/support/system_calls.h"

namespace memwright::faults {

enum class Deed {
    none,
    fail,            // with an error, and nothing is done
    done_but_fail,   // with an error, although it was done
    one_byte,        // is read or written, and no more
    half,            // of the bytes
    half_then_fail,  // half of the bytes, and from the next call on an error
    kill_before,
    kill_after,
};

struct Fault {
    static constexpr int kEver = 1 << 30;

    Deed deed = Deed::none;
    int error = 0;  // a close that fails is done all the same
    int first = 1;  // of the calls that it can strike, counted from 1
    int times = 1;
    std::function<bool(const SystemCall&)> strikes = {};  // unless empty, only such calls

    std::string text() const;
};

// How the child ended.
struct Outcome {
    bool struck = false;   // the fault has come to pass
    bool killed = false;   // by it
    int exit_status = -1;  // unless a signal ended it
    int signal = 0;        // that did
    std::string report;    // what the work returned
    std::vector<SystemCall> calls;
};

// Why nothing can be traced here; "" if it can.
std::string reason_against_tracing();

// Looks at the files while the child stands before a call. It may change them, and send the child
// signals, which interrupt the call.
using Watch = std::function<void(const SystemCall&, pid_t child)>;

// Runs `work` in a child. From its call of trace_from_here() on, calls on files below `folder` are
// counted. A work that runs another program traces it from there.
Outcome run_traced(const std::function<std::string()>& work, const std::filesystem::path& folder,
                   const Fault& fault, const Watch& watch = {});

void trace_from_here();

}  // namespace memwright::faults
