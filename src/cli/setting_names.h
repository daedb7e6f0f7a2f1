#pragma once

// The names under which the command line knows the set-mode settings.

#include <string>

namespace memwright::cli {

inline constexpr const char* kScanModeName = "scan-mode";
inline constexpr const char* kLinkedBandsName = "linked-scan-bands";

// The caption of a setting in lower case, with "-" for everything that is no letter or digit:
// "S-Meter Sens." is "s-meter-sens".
std::string name_of_setting(const std::string& caption);

}  // namespace memwright::cli
