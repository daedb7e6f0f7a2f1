#pragma once

// A private folder that goes away with the test. A small guard process deletes it should the test
// crash; it notices because its end of a pipe closes.

#include <filesystem>

namespace memwright::systest {

class TemporaryFolder {
  public:
    explicit TemporaryFolder(
        const std::filesystem::path& parent = std::filesystem::temp_directory_path());
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
    int guard_pipe_ = -1;
    int guard_ = -1;
};

}  // namespace memwright::systest
