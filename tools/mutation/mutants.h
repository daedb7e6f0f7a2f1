#pragma once

// Included in front of every file of the mutated copy: says whether a mutant is the active one.

#include <type_traits>

extern int memwright_active_mutant;
extern unsigned char memwright_reached_mutants[];

constexpr bool mutated(int mutant) {
    // What the compiler works out cannot depend on a variable of the environment.
    if (std::is_constant_evaluated()) return false;
    memwright_reached_mutants[mutant] = 1;
    return mutant == memwright_active_mutant;
}
