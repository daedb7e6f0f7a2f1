#pragma once

// memwright-cli with vr120-sim at the other end of a pseudo-terminal.

#include <optional>
#include <string>

#include "cli/support/running_cli.h"
#include "radio/vr120_sim_process.h"

namespace memwright::cli_tests {

inline const std::string kReadInstructions =
    "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
    "2. Click OK to close this box.\n"
    "3. Press [Mode] on the VR-120 to start the read.\n";
inline const std::string kWriteInstructions =
    "1. Hold down [Func] + [Band] on the VR-120 and power it on. It should say RX TX.\n"
    "2. Press [Scan] on the VR-120. It should say R.\n"
    "3. Click OK on this box to begin.\n";
inline const std::string kPrompt = "Press Enter for OK, Ctrl-C to stop.\n";

class RadioTest : public CliTest {
  protected:
    // Starts the radio; `port` is then its device.
    void start_radio(const Words& arguments = {}) {
        radio.emplace(Words{"--pace", "none"} + arguments);
        port = radio->line().value_or("");
    }

    std::optional<radio::Vr120Sim> radio;
    std::string port;
};

}  // namespace memwright::cli_tests
