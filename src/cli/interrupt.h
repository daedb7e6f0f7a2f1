#pragma once

// Ctrl-C, and being told to end.

namespace memwright::cli {

// From now on the first of them does not end the program, but is noted. A second one ends it, be it
// the same or another: something that cannot be interrupted may hold the program.
void catch_interrupts();

bool interrupted();

}  // namespace memwright::cli
