#pragma once

// Parts of the programs that lie in modules of their own, and are loaded when they are first used:
// from the folder of the running program, or from where an installation puts them. FileError if a
// module is not there. One that was loaded stays as long as the program runs.

#include <memory>

#include "platform/desk.h"

namespace memwright {

std::unique_ptr<Desk> open_desk(DeskWork work);

// The desktop's default printer, for a program with windows.
std::unique_ptr<Printer> open_printer(FileSystem& files);

}  // namespace memwright
