#include "fuzz/target.h"

namespace memwright::fuzz {

const std::vector<Target>& targets() {
    static const std::vector<Target> all = {
        {"image_file", image_file}, {"csv_import", csv_import}, {"clone_read", clone_read},
        {"settings", settings},     {"arguments", arguments},   {"snapshot", snapshot},
    };
    return all;
}

}  // namespace memwright::fuzz
