#include "support/built_programs.h"

#include <cstdlib>

namespace memwright::systest {

std::filesystem::path built_programs() {
    const char* const elsewhere = std::getenv("MEMWRIGHT_PROGRAMS");
    return elsewhere == nullptr ? BUILT_PROGRAMS : elsewhere;
}

std::string built_program(std::string_view name) { return built_programs() / name; }

}  // namespace memwright::systest
