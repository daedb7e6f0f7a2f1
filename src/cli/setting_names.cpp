#include "cli/setting_names.h"

namespace memwright::cli {

std::string name_of_setting(const std::string& caption) {
    std::string name;
    for (const char c : caption) {
        const bool upper = c >= 'A' && c <= 'Z';
        const bool plain = upper || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (plain) {
            name += upper ? static_cast<char>(c - 'A' + 'a') : c;
        } else if (!name.ends_with('-')) {
            name += '-';
        }
    }
    if (name.ends_with('-')) name.pop_back();
    return name;
}

}  // namespace memwright::cli
