#include "app/events.h"

#include <utility>

namespace memwright {

void Events::run(const std::string& command, const Procedure& procedure, Kind kind) {
    // The edit ends before a failure is shown: what was changed until then counts.
    errors_.guard([&] {
        const EditScope scope(edits_, command, kind);
        procedure();
    });
}

void Events::connect(Signal<>& signal, const std::string& command, Procedure procedure, Kind kind) {
    connections_.push_back(signal.connect(
        [this, command, run_it = std::move(procedure), kind] { run(command, run_it, kind); }));
}

}  // namespace memwright
