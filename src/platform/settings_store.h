#pragma once

// The user's settings between runs: texts (UTF-8) under an application, a section and a key.

#include <optional>
#include <string>

namespace memwright {

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    virtual std::optional<std::string> find(const std::string& application,
                                            const std::string& section, const std::string& key) = 0;
    virtual void save(const std::string& application, const std::string& section,
                      const std::string& key, const std::string& value) = 0;
    virtual void remove(const std::string& application, const std::string& section,
                        const std::string& key) = 0;

    std::string get(const std::string& application, const std::string& section,
                    const std::string& key, const std::string& default_value) {
        return find(application, section, key).value_or(default_value);
    }
};

// The applications and sections that the program stores under.
namespace settings {
inline constexpr const char* kApplication = "VR120";
inline constexpr const char* kCloneApplication = "VR120Clone";
inline constexpr const char* kOwnApplication = "Memwright";
inline constexpr const char* kSection = "Settings";
inline constexpr const char* kPortsSection = "Ports";
inline constexpr const char* kNoticesSection = "Notices";
}  // namespace settings

}  // namespace memwright
