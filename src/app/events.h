#pragma once

// The boundary where the user's events enter: what a procedure changes becomes one edit with the
// name of its command (table/edit_recorder.h), and what fails in it is reported (error_report.h).

#include <functional>
#include <string>
#include <vector>

#include "app/error_report.h"
#include "table/edit_recorder.h"

namespace memwright {

class Events {
  public:
    using Procedure = std::function<void()>;
    using Kind = EditScope::Kind;

    Events(ErrorReport& errors, EditRecorder& edits) : errors_(errors), edits_(edits) {}

    // Runs what an event brings about.
    void run(const std::string& command, const Procedure& procedure, Kind kind = Kind::at_once);

    // Runs it each time that a control signals the event.
    void connect(Signal<>& signal, const std::string& command, Procedure procedure,
                 Kind kind = Kind::at_once);

  private:
    ErrorReport& errors_;
    EditRecorder& edits_;
    std::vector<Connection> connections_;
};

}  // namespace memwright
