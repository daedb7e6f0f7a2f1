#include "qt/printing/print_service.h"

#include <QLibrary>

namespace memwright::qt {

// The library that Qt's print support has loaded already. It is not linked to, so that the program
// runs where there is none.
std::string print_service_error() {
    constexpr int kVersion = 2;
    // Statuses of the printing protocol; the library has negative ones of its own.
    constexpr int kFirstFailure = 0x0400;
    constexpr int kInternal = 0x0500;  // when there is no connection, for one
    constexpr int kUnavailable = 0x0502;
    QLibrary service("cups", kVersion);
    const auto status = reinterpret_cast<int (*)()>(service.resolve("cupsLastError"));
    const auto text = reinterpret_cast<const char* (*)()>(service.resolve("cupsLastErrorString"));
    if (status == nullptr || text == nullptr) return "";
    const int last = status();
    if (last >= 0 && last < kFirstFailure) return "";
    const char* const said = text();
    std::string why = said == nullptr ? "" : said;
    while (why.ends_with('.')) why.pop_back();
    if (last == kInternal || last == kUnavailable) why = "the print service fails: " + why;
    return why.empty() ? "it takes no pages" : why;
}

}  // namespace memwright::qt
