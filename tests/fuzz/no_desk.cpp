// Stands in for native/modules.cpp: whatever the arguments are, no module is loaded, so no serial
// port is opened and nothing is printed.

#include "base/error.h"
#include "native/modules.h"

namespace memwright {

std::unique_ptr<Desk> open_desk(DeskWork /*work*/) { throw FileError("There is no desk here."); }

}  // namespace memwright
