#include "support/quick_time.h"

namespace memwright::systest {

void pass_time_quickly(std::map<std::string, std::string>& environment) {
    environment["LD_PRELOAD"] = QUICK_CLOCKS;
    // The sanitizer wants to be loaded first, and need not be: these clocks do without it.
    std::string& options = environment["ASAN_OPTIONS"];
    if (!options.empty()) options += ":";
    options += "verify_asan_link_order=0";
}

}  // namespace memwright::systest
