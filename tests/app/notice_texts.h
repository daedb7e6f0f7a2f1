#pragma once

// What the program's notices say, in the order in which they came.

#include <string>
#include <vector>

#include "app/notices.h"

namespace memwright {

inline std::vector<std::string> noted(const Notices& notices) {
    std::vector<std::string> texts;
    for (const auto& entry : notices.of_this_run()) texts.push_back(entry.notice.text);
    return texts;
}

// Those that wait for the user.
inline std::vector<std::string> waiting(const Notices& notices) {
    std::vector<std::string> texts;
    for (const auto& entry : notices.of_this_run()) {
        if (entry.waiting) texts.push_back(entry.notice.text);
    }
    return texts;
}

}  // namespace memwright
