#include "platform/file_dialogs.h"

namespace memwright {

std::string up_to_nul(const std::string& name) { return name.substr(0, name.find('\0')); }

std::string with_extension(std::string name, const std::string& extension) {
    if (name.find('.') == std::string::npos) name += extension;
    return name;
}

}  // namespace memwright
