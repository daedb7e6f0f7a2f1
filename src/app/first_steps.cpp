#include "app/first_steps.h"

#include <algorithm>

namespace memwright {
namespace {

constexpr const char* kFirstSteps = "first steps";
constexpr const char* kKey = "FirstSteps";

}  // namespace

void FirstSteps::begin() {
    if (settings_.find(settings::kOwnApplication, settings::kNoticesSection, kKey)) return;
    if (!table_.enabled) {
        notices_.add(
            {.text = "To begin, read the radio (Transfer menu) or open a file (File menu).",
             .about = kFirstSteps});
    }
    connections_ = {notices_.changed.connect([this] { look(); }),
                    table_.enabled.changed.connect([this] { look(); })};
    look();
}

void FirstSteps::look() {
    if (connections_.empty()) return;  // withdrawing is a change, too
    const auto& entries = notices_.of_this_run();
    const bool waits = std::ranges::any_of(entries, [](const Notices::Entry& entry) {
        return entry.waiting && entry.notice.about == kFirstSteps;
    });
    if (waits && !table_.enabled) return;
    connections_.clear();
    settings_.save(settings::kOwnApplication, settings::kNoticesSection, kKey, "dismissed");
    notices_.withdraw(kFirstSteps);
}

}  // namespace memwright
