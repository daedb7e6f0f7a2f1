#pragma once

// A command that writes something else than it reads must not write it over what it reads: a
// channel list over its image, an image over the list that it takes. An image may replace the one
// that it was made of.

#include <string>

#include "cli/stream_files.h"

namespace memwright::cli {

// By the names of the arguments, as the usage of the command has them.
struct Input {
    const char* argument;
    const std::string& path;
};
struct Output {
    const char* argument;
    const std::string& path;
    const char* content;
};

// WrongUsage if both are one file.
void keep_input(StreamFiles& files, const Input& input, const Output& output);

}  // namespace memwright::cli
