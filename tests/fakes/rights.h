#pragma once

// Owners and permissions of files, as tests see and set them. POSIX only.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "fakes/child_process.h"

namespace memwright {

inline struct stat facts_of(const std::filesystem::path& path) {
    struct stat facts {};
    EXPECT_EQ(lstat(path.c_str(), &facts), 0) << path;
    return facts;
}

inline mode_t mode_of(const std::filesystem::path& path) { return facts_of(path).st_mode & 07777; }

// What new files and folders get for as long as this lives.
class Umask {
  public:
    explicit Umask(mode_t mask) : before_(umask(mask)) {}
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    ~Umask() { umask(before_); }

  private:
    mode_t before_;
};

// Gives a file to the user who tests run as where they may not run as the administrator.
inline void give_to_ordinary_user(const std::filesystem::path& path) {
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
    }
}

}  // namespace memwright
