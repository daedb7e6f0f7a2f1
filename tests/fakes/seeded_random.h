#pragma once

// Random input for property tests. The seed is printed, and stands in the message of every
// expectation that fails while the object lives; MEMWRIGHT_SEED=<number> repeats a run.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <string_view>

namespace memwright {

class SeededRandom {
  public:
    SeededRandom() : seed_(chosen_seed()), trace_(__FILE__, __LINE__, shown()), engine_(seed_) {
        std::cout << shown() << '\n';
    }

    int between(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(engine_);
    }
    bool coin() { return between(0, 1) == 1; }
    std::uint8_t byte() { return static_cast<std::uint8_t>(between(0, 0xFF)); }
    char one_of(std::string_view characters) {
        return characters[static_cast<std::size_t>(
            between(0, static_cast<int>(characters.size()) - 1))];
    }

    // A text of at most `longest` of the given characters.
    std::string text(std::string_view characters, int longest, int shortest = 0) {
        std::string made(static_cast<std::size_t>(between(shortest, longest)), ' ');
        for (char& c : made) c = one_of(characters);
        return made;
    }

  private:
    static std::uint32_t chosen_seed() {
        const char* const wanted = std::getenv("MEMWRIGHT_SEED");
        return wanted != nullptr ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10))
                                 : std::random_device{}();
    }
    std::string shown() const { return "MEMWRIGHT_SEED=" + std::to_string(seed_); }

    std::uint32_t seed_;
    testing::ScopedTrace trace_;
    std::mt19937 engine_;
};

}  // namespace memwright
