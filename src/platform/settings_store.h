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
}  // namespace settings

// "True" and "False" in any case; a number is true unless it is 0. Else ConversionError.
bool boolean_from_text(const std::string& text);

// A decimal number with an optional sign, rounded to the nearest whole one (halves to the even
// one), in the range of 16 bits. Else ConversionError.
int integer_from_text(const std::string& text);

// A decimal number with an optional sign. Else ConversionError.
double number_from_text(const std::string& text);

std::string text_from_number(double number);

}  // namespace memwright
