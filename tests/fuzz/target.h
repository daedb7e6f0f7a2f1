#pragma once

// What is fuzzed: functions that take any bytes and hold the program to its promises. A promise
// that is broken is a failed expectation of GoogleTest; as a fuzzer that ends the run, in the
// program fuzz_tests it is an ordinary failure.

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <vector>

namespace memwright::fuzz {

using Input = std::span<const std::uint8_t>;

// The bytes are an image file.
void image_file(Input input);

// The bytes are a CSV file.
void csv_import(Input input);

// The bytes tell what arrives at the serial port during a clone read, when, and what the user does:
// fuzz/scripted_port.h.
void clone_read(Input input);

// Texts that the settings store holds when the program starts, each ended by a zero byte, in the
// order of fuzz/settings.cpp; a text of one byte 0x7F stands for one that is not stored.
void settings(Input input);

// The arguments of memwright-cli, each ended by a zero byte. An empty one ends them: what follows
// is the file "given", and standard input.
void arguments(Input input);

// The bytes after the first are a recovery file without its sum. If the lowest bit of the first is
// set, they are changes of a good one instead: fuzz/snapshot.cpp. The next bit declines to restore.
void snapshot(Input input);

struct Target {
    const char* name;
    void (*run)(Input input);
};

// All of them.
const std::vector<Target>& targets();

}  // namespace memwright::fuzz
