#pragma once

// The settings store, the clock and the event loop on Qt.

#include "platform/settings_store.h"
#include "platform/time.h"

namespace memwright::qt {

// One INI file per application in the user's configuration folder.
class QtSettingsStore final : public SettingsStore {
  public:
    std::optional<std::string> find(const std::string& application, const std::string& section,
                                    const std::string& key) override;
    void save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;
    void remove(const std::string& application, const std::string& section,
                const std::string& key) override;
};

class QtClock final : public Clock {
  public:
    double seconds_since_midnight() override;
    std::string date_and_time() override;
    std::string timestamp() override;
};

class QtEventLoop final : public EventLoop {
  public:
    void wait(std::chrono::microseconds at_most) override;
    Connection every(std::chrono::milliseconds interval, std::function<void()> tick) override;
};

}  // namespace memwright::qt
