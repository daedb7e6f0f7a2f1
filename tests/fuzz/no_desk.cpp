// Stands in for platform/modules.cpp: whatever the arguments are, no module is loaded, so no serial
// port is opened and nothing is printed.

#include "platform/error.h"
#include "platform/modules.h"

namespace memwright {

std::unique_ptr<Desk> open_desk(DeskWork /*work*/) { throw FileError("There is no desk here."); }

}  // namespace memwright
