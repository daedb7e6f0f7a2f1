#pragma once

// Parts of the programs that lie in modules of their own, and are loaded when they are first used:
// from the folder of the running program, or from where an installation puts them. FileError if a
// module is not there. One that was loaded stays as long as the program runs.

#include <memory>

#include "platform/modules.h"

namespace memwright {

std::unique_ptr<PortsAndPages> open_ports_and_pages(ModuleUse use);

// The desktop's default printer, for a program with windows.
std::unique_ptr<Printer> open_printer(FileSystem& files);

}  // namespace memwright
