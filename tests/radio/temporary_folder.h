#pragma once

// A new folder for the files of one test, removed with all that is in it.

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace memwright::radio {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("memwright-radio-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string file(const std::string& name) const { return (path_ / name).string(); }

    std::size_t files() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path_)) {
            ++count;
        }
        return count;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace memwright::radio
