#pragma once

// Ctrl-C, and being told to end.

namespace memwright::cli {

// From now on they no longer end the program, but are noted.
void catch_interrupts();

bool interrupted();

}  // namespace memwright::cli
