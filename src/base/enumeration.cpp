#include "base/enumeration.h"

namespace memwright {

std::string enumeration(const std::vector<std::string>& items, const std::string& word) {
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) text += i + 1 == items.size() ? " " + word + " " : ", ";
        text += items[i];
    }
    return text;
}

}  // namespace memwright
