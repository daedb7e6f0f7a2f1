#pragma once

// The programs under test: those of the build that the test belongs to or, where the environment has
// MEMWRIGHT_PROGRAMS, those in that folder. So tests that are compiled once try the programs of
// several builds.

#include <filesystem>
#include <string>
#include <string_view>

namespace memwright::systest {

std::filesystem::path built_programs();

// By its file's name, "memwright-cli" for example.
std::string built_program(std::string_view name);

}  // namespace memwright::systest
