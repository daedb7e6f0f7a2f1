#include "base/printable.h"

#include "base/charset.h"

namespace memwright {
namespace {

bool is_control(char32_t c) { return c < ' ' || (c >= 0x7F && c < 0xA0); }

// Embeddings, overrides and isolates of a direction.
bool turns_the_text(char32_t c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

std::string without_commands(std::string_view text, std::u32string_view allowed) {
    std::string shown;
    while (!text.empty()) {
        const std::string_view from_here = text;
        const auto c = take_character(text);
        const bool harmless =
            c && ((!is_control(*c) && !turns_the_text(*c)) || allowed.find(*c) != allowed.npos);
        shown += harmless ? from_here.substr(0, from_here.size() - text.size()) : "?";
    }
    return shown;
}

}  // namespace

std::string printable(std::string_view text) {
    std::string lines(text);
    for (auto end = lines.find("\r\n"); end != lines.npos; end = lines.find("\r\n", end)) {
        lines.erase(end, 1);
    }
    return without_commands(lines, U"\n\t");
}

std::string printable_in_line(std::string_view text) { return without_commands(text, U""); }

}  // namespace memwright
