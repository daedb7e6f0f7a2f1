// Stands in for native/modules.cpp: whatever the arguments are, no module is loaded, so no serial
// port is opened and nothing is printed.

#include "base/error.h"
#include "native/modules.h"

namespace memwright {

std::unique_ptr<PortsAndPages> open_ports_and_pages(ModuleUse /*use*/) {
    throw FileError("There are no modules here.");
}

}  // namespace memwright
