#pragma once

// The arguments of vr120-sim.

#include <span>
#include <string>

#include "radio/simulated_radio.h"

namespace memwright::radio {

struct CommandLine {
    bool help = false;
    bool version = false;
    std::string image;  // file names; "" for none
    std::string save;
    Options options;
};

// ConversionError, with a text to show, for arguments that are wrong.
CommandLine parse_command_line(std::span<const std::string> arguments);

std::string help_text();

}  // namespace memwright::radio
