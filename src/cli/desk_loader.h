#pragma once

// Opens the desk, which lies in a module of its own: in the folder of the program or where an
// installation puts it. FileError if it is not there.

#include <memory>

#include "platform/desk.h"

namespace memwright::cli {

std::unique_ptr<Desk> open_desk(DeskWork work);

}  // namespace memwright::cli
