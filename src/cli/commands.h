#pragma once

// The commands of memwright-cli.

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/stream_files.h"

namespace memwright::cli {

// How the program ends.
enum Status {
    kDone = 0,
    kFound = 1,       // differences, or findings
    kWrongUsage = 2,  // of the program
    kBadInput = 3,
    kNoFileOrPort = 4,
    kRadioFailed = 5,
};

// What commands work with.
struct Session {
    Console console;
    StreamFiles files{console};
};

struct Command {
    const char* name;
    const char* usage;    // its arguments
    const char* summary;  // a line of the program's help
    const char* help;     // the rest of its own help
    Syntax syntax;
    Status (*run)(const Arguments& arguments, Session& session);
};

const std::vector<Command>& commands();

Status channels(const Arguments& arguments, Session& session);
Status export_csv(const Arguments& arguments, Session& session);
Status import_csv(const Arguments& arguments, Session& session);
Status settings(const Arguments& arguments, Session& session);
Status limits(const Arguments& arguments, Session& session);
Status diff(const Arguments& arguments, Session& session);
Status check(const Arguments& arguments, Session& session);
Status read_radio(const Arguments& arguments, Session& session);
Status write_radio(const Arguments& arguments, Session& session);
Status ports(const Arguments& arguments, Session& session);
Status archive(const Arguments& arguments, Session& session);
Status print(const Arguments& arguments, Session& session);

// Runs the program with its arguments; what fails is said.
int run(const std::vector<std::string>& given);

}  // namespace memwright::cli
