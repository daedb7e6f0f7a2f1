#pragma once

// What `settings` and `limits` have in common: IMAGE [CHANGE]... [--format FORMAT] [--output OUT].
// Without a change and without --output the image is only shown; otherwise the file that is written
// stays locked until the command has ended. FileError and InputError from reading the image.

#include <memory>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/workbench.h"

namespace memwright::cli {

struct ShowOrChange {
    ShowOrChange(const Arguments& arguments, Session& session)
        : format(arguments.choice("--format", {"text", "json"})),
          changes(arguments.from(1)),
          only_shows(changes.empty() && !arguments.has("--output")),
          output(arguments.value("--output").value_or(arguments[0])),
          lock(only_shows ? nullptr : session.files.lock(output, {arguments[0]})),
          bench(session.console, session.files) {
        bench.load(arguments[0]);
    }

    const std::string format;
    const std::vector<std::string> changes;
    const bool only_shows;
    const std::string output;
    const std::unique_ptr<ChangeLock> lock;
    Workbench bench;
};

}  // namespace memwright::cli
