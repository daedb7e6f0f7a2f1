#pragma once

// The toolkit's own file dialog, as the tests use it: type a path, press Enter.
// Errors: as Accessible.

#include <filesystem>
#include <string_view>

#include "system/support/application.h"

namespace memwright::systest {

// Waits for the dialog, replaces what its name field holds by the path, and presses Enter. What
// comes then (the dialog's end, a question about an existing file) is the test's to wait for.
void enter_path(const Application& application, std::string_view title,
                const std::filesystem::path& path);

}  // namespace memwright::systest
