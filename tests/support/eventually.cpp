#include "support/eventually.h"

#include <thread>

namespace memwright::systest {

bool wait_until(const std::function<bool()>& condition, Milliseconds patience) {
    const auto asked = [&] {
        try {
            return condition();
        } catch (const NotThere&) {
            return false;
        }
    };
    const auto deadline = std::chrono::steady_clock::now() + patience;
    Milliseconds step{1};
    while (!asked()) {
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(step);
        step = std::min(step * 2, Milliseconds{20});
    }
    return true;
}

}  // namespace memwright::systest
