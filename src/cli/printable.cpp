#include "cli/printable.h"

namespace memwright::cli {
namespace {

constexpr unsigned char kDelete = 0x7F;
// U+0080 to U+009F are this byte and one below the other.
constexpr unsigned char kLatinLead = 0xC2;
constexpr unsigned char kNoBreakSpace = 0xA0;

}  // namespace

std::string printable(const std::string& text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool latin = byte == kLatinLead && i + 1 < text.size() &&
                           static_cast<unsigned char>(text[i + 1]) < kNoBreakSpace;
        shown += byte < ' ' || byte == kDelete || latin ? '?' : text[i];
        if (latin) ++i;
    }
    return shown;
}

}  // namespace memwright::cli
