#pragma once

// Qt prints through the system's print service where there is one (CUPS on Unix), and does not tell
// when that turns a document away.

#include <string>

namespace memwright::qt {

// Why the service did not take what this thread sent to it last, without a full stop; empty if it
// took it, and where there is no such service.
std::string print_service_error();

}  // namespace memwright::qt
