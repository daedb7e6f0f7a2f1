#pragma once

// A folder for a target that works on files: the current one as long as the object lives. It lies
// below what was the current folder before, under a name that nothing else has, and stays there for
// the next input.

#include <filesystem>

namespace memwright::fuzz {

class Sandbox {
  public:
    Sandbox() {
        std::filesystem::create_directory(folder_);
        std::filesystem::current_path(folder_);
    }
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;
    ~Sandbox() { std::filesystem::current_path(before_); }

    const std::filesystem::path& folder() const { return folder_; }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
    std::filesystem::path folder_ = before_ / "memwright-fuzz-sandbox";
};

}  // namespace memwright::fuzz
