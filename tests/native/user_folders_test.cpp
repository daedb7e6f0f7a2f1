// Where the environment says that the user's files belong.

#include "platform/user_folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace memwright {
namespace {

class UserFoldersTest : public testing::Test {
  protected:
    UserFoldersTest() {
        for (const char* const name : {"HOME", "XDG_STATE_HOME", "XDG_DATA_HOME"}) {
            const char* const value = std::getenv(name);
            before_[name] = value == nullptr ? std::nullopt : std::optional<std::string>(value);
            unsetenv(name);
        }
    }
    ~UserFoldersTest() override {
        for (const auto& [name, value] : before_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }
    static void set(const char* name, const char* value) { setenv(name, value, 1); }
    static void expect(const std::string& state, const std::string& data) {
        const UserFolders folders = native_user_folders();
        EXPECT_EQ(folders.state, state);
        EXPECT_EQ(folders.data, data);
    }

  private:
    std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(UserFoldersTest, lie_in_the_home_folder) {
    set("HOME", "/home/user");
    expect("/home/user/.local/state/memwright", "/home/user/.local/share/memwright");
}

TEST_F(UserFoldersTest, lie_where_the_user_wants_them) {
    set("HOME", "/home/user");
    set("XDG_STATE_HOME", "/var/state");
    expect("/var/state/memwright", "/home/user/.local/share/memwright");
    set("XDG_DATA_HOME", "/var/Gr\xC3\xBC\xC3\x9F");
    expect("/var/state/memwright", "/var/Gr\xC3\xBC\xC3\x9F/memwright");
}

TEST_F(UserFoldersTest, relative_and_empty_wishes_do_not_count) {
    set("HOME", "/home/user");
    set("XDG_STATE_HOME", "state");
    set("XDG_DATA_HOME", "");
    expect("/home/user/.local/state/memwright", "/home/user/.local/share/memwright");
}

TEST_F(UserFoldersTest, need_no_home_folder_if_they_are_named) {
    set("XDG_STATE_HOME", "/var/state");
    expect("/var/state/memwright", "");
}

TEST_F(UserFoldersTest, are_nowhere_if_the_environment_says_nothing) {
    expect("", "");
    set("HOME", "");
    expect("", "");
}

}  // namespace
}  // namespace memwright
