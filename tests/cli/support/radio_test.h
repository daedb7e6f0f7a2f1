#pragma once

// memwright-cli with vr120-sim at the other end of a pseudo-terminal. Its time passes quickly, but
// where a whole transfer is to be a real one in all.

#include <optional>
#include <string>

#include "cli/support/running_cli.h"
#include "radio/vr120_sim_process.h"
#include "support/quick_time.h"

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
    systest::Command command(const Words& arguments) const {
        systest::Command quick = in_real_time(arguments);
        systest::pass_time_quickly(quick.environment);
        return quick;
    }
    systest::Command in_real_time(const Words& arguments) const {
        return CliTest::command(arguments);
    }

    // Starts the radio; `port` is then its device.
    void start_radio(const Words& arguments = {}) {
        radio.emplace(Words{"--pace", "none"} + arguments);
        port = radio->line().value_or("");
    }

    std::optional<radio::Vr120Sim> radio;
    std::string port;
};

}  // namespace memwright::cli_tests
