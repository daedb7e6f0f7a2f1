#pragma once

// The program's arguments.

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace memwright::qt {

struct Arguments {
    std::map<int, std::string> ports;  // devices by COM number
    std::string file;                  // absolute; "" for none

    // If set, the program is only to say this and end.
    std::optional<std::string> message;
    int exit_status = 0;
};

inline constexpr int kWrongUsage = 2;

Arguments parse_arguments(const std::vector<std::string>& arguments);

}  // namespace memwright::qt
