#pragma once

// A signal that slots are connected to. A slot lives as long as its Connection; a slot may connect,
// disconnect or emit while it runs.

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace memwright {

using Connection = std::shared_ptr<const void>;

template <class... Args>
class Signal {
  public:
    using Slot = std::function<void(Args...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    [[nodiscard]] Connection connect(Slot slot) {
        std::erase_if(slots_, [](const auto& known) { return known.expired(); });
        auto kept = std::make_shared<const Slot>(std::move(slot));
        slots_.push_back(kept);
        return kept;
    }

    void operator()(Args... args) const {
        if (slots_.empty()) return;
        const auto now = slots_;
        for (const auto& known : now) {
            if (const auto slot = known.lock()) (*slot)(args...);
        }
    }

  private:
    std::vector<std::weak_ptr<const Slot>> slots_;
};

}  // namespace memwright
