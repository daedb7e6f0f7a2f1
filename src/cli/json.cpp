#include "cli/json.h"

#include "base/number_text.h"

namespace memwright::cli::json {

std::string string(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += std::string("\\") + c;
        } else if (static_cast<unsigned char>(c) < ' ') {
            quoted += "\\u00" + lHex(static_cast<unsigned char>(c));
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

std::string object(const Members& members) {
    std::string text = "{";
    for (const auto& [name, value] : members) {
        text += (text.size() == 1 ? "" : ", ") + string(name) + ": " + value;
    }
    return text + "}";
}

std::string lines(const std::vector<std::string>& elements, int indent) {
    if (elements.empty()) return "[]";
    const std::string blanks(static_cast<std::size_t>(indent), ' ');
    std::string text = "[";
    for (const std::string& element : elements) {
        text += (text.size() == 1 ? "\n" : ",\n") + blanks + "  " + element;
    }
    return text + "\n" + blanks + "]";
}

}  // namespace memwright::cli::json
