// Stands in for cli/desk_loader.cpp: whatever the arguments are, no module is loaded, so no serial
// port is opened and nothing is printed.

#include "cli/desk_loader.h"
#include "platform/error.h"

namespace memwright::cli {

std::unique_ptr<Desk> open_desk(DeskWork /*work*/) { throw FileError("There is no desk here."); }

}  // namespace memwright::cli
