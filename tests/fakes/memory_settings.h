#pragma once

// A settings store in memory, which also remembers the order in which keys were saved.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/settings_store.h"

namespace memwright::fakes {

class MemorySettings final : public SettingsStore {
  public:
    std::map<std::string, std::string> values;  // by "application/section/key"
    std::vector<std::string> saved;

    std::optional<std::string> find(const std::string& application, const std::string& section,
                                    const std::string& key) override {
        const auto value = values.find(path(application, section, key));
        if (value == values.end()) return std::nullopt;
        return value->second;
    }
    void save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override {
        values[path(application, section, key)] = value;
        saved.push_back(path(application, section, key));
    }
    void remove(const std::string& application, const std::string& section,
                const std::string& key) override {
        values.erase(path(application, section, key));
    }

  private:
    static std::string path(const std::string& application, const std::string& section,
                            const std::string& key) {
        return application + "/" + section + "/" + key;
    }
};

}  // namespace memwright::fakes
