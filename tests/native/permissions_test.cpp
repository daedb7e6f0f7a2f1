// Permissions and owners: kept, and respected.

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

#include "fakes/rights.h"
#include "fakes/small_disk.h"
#include "native/files.h"

namespace memwright {
namespace {

using Names = std::vector<std::string>;

class NativePermissions : public BothWaysToSave {};

TEST_P(NativePermissions, are_kept) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    int round = 0;
    for (const mode_t mode : {0600U, 0640U, 0644U, 0666U, 0755U, 0777U, 0200U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(saving(path, pattern(7392, ++round)), "saved");
        EXPECT_EQ(mode_of(path), mode) << std::oct << mode;
        ASSERT_EQ(chmod(path.c_str(), 0600), 0);
        EXPECT_EQ(folder.get("a.120"), pattern(7392, round));
    }
}

TEST_P(NativePermissions, are_kept_whatever_new_files_get) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    ASSERT_EQ(chmod(path.c_str(), 0664), 0);
    EXPECT_EQ(in_child([&] {
                  umask(0077);
                  return saving(path, pattern(7392, 1));
              }),
              "saved");
    EXPECT_EQ(mode_of(path), 0664U);
}

TEST_P(NativePermissions, of_a_new_file_are_those_that_the_user_gives_new_files) {
    const TemporaryFolder folder;
    for (const mode_t mask : {0077U, 0027U, 0022U, 0002U, 0000U}) {
        const std::string path = folder.file("new-" + std::to_string(mask));
        EXPECT_EQ(in_child([&] {
                      umask(mask);
                      return saving(path, pattern(7392));
                  }),
                  "saved");
        EXPECT_EQ(mode_of(path), 0666U & ~mask);
    }
}

// The system tells the umask in /proc, which an empty disk hides.
TEST_P(NativePermissions, of_a_new_file_are_the_same_where_the_system_does_not_tell_the_umask) {
    const TemporaryFolder folder;
    const std::string path = folder.file("new");
    const std::string report = in_child([&]() -> std::string {
        if (!mount_small_disk("/proc")) return "no disk";
        umask(0027);
        const std::string said = saving(path, pattern(7392));
        return umask(0) == 0027 ? said : "the umask is another";
    });
    if (report == "no disk") GTEST_SKIP() << "no disk can be mounted here";
    EXPECT_EQ(report, "saved");
    EXPECT_EQ(mode_of(path), 0640U);
}

TEST_P(NativePermissions, a_file_behind_a_link_keeps_its_own) {
    const TemporaryFolder folder;
    const std::string real = folder.put("real.120", pattern(7392));
    ASSERT_EQ(chmod(real.c_str(), 0640), 0);
    std::filesystem::create_symlink("real.120", folder.path() / "link.120");
    EXPECT_EQ(saving(folder.file("link.120"), pattern(7392, 1)), "saved");
    EXPECT_EQ(mode_of(real), 0640U);
}

TEST_P(NativePermissions, a_write_protected_file_is_refused_and_stays_as_it_is) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    give_to_ordinary_user(path);
    for (const mode_t mode : {0444U, 0400U, 0555U, 0000U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        const std::string error =
            as_an_ordinary_user([&] { return saving(path, pattern(7392, 1)); });
        EXPECT_TRUE(has(error, "Cannot save " + path)) << error;
        EXPECT_TRUE(has(error, "Permission denied")) << error;
        EXPECT_TRUE(has(error, "Nothing was changed there.")) << error;
        EXPECT_EQ(mode_of(path), mode);
        EXPECT_EQ(folder.names(), Names{"a.120"});
    }
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(folder.get("a.120"), pattern(7392));
}

// The administrator may write any file; a file's protection is kept then.
TEST_P(NativePermissions, a_write_protected_file_stays_protected_where_it_may_be_written) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    const bool allowed = access(path.c_str(), W_OK) == 0;
    EXPECT_EQ(saving(path, pattern(7392, 1)) == "saved", allowed);
    EXPECT_EQ(mode_of(path), 0444U);
    EXPECT_EQ(folder.get("a.120"), pattern(7392, allowed ? 1 : 0));
}

TEST_P(NativePermissions, a_read_only_folder_is_refused_with_nothing_left_behind) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    give_to_ordinary_user(folder.path());
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    for (const std::string& target : {path, folder.file("new.120")}) {
        const std::string error =
            as_an_ordinary_user([&] { return saving(target, pattern(7392, 1)); });
        EXPECT_TRUE(has(error, "Cannot save " + target)) << error;
        EXPECT_TRUE(has(error, "Permission denied")) << error;
        EXPECT_TRUE(has(error, "Save to a folder that you may write to")) << error;
    }
    EXPECT_EQ(folder.names(), Names{"a.120"});
    EXPECT_EQ(folder.get("a.120"), pattern(7392));
}

TEST(NativeReadPermissions, a_missing_file_in_a_read_only_folder_cannot_be_opened) {
    const TemporaryFolder folder;
    give_to_ordinary_user(folder.path());
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const std::string error = as_an_ordinary_user([&] { return reading(folder.file("new.120")); });
    EXPECT_TRUE(has(error, "Cannot create " + folder.file("new.120"))) << error;
    EXPECT_TRUE(folder.names().empty());
}

TEST(NativeReadPermissions, a_file_that_may_not_be_read_is_refused) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    give_to_ordinary_user(path);
    ASSERT_EQ(chmod(path.c_str(), 0200), 0);
    for (const auto& read : {&reading, &opening}) {
        const std::string error = as_an_ordinary_user([&] { return read(path); });
        EXPECT_TRUE(has(error, "Cannot open " + path)) << error;
        EXPECT_TRUE(has(error, "Permission denied")) << error;
    }
}

TEST(NativeOverwritePermissions, the_end_of_a_longer_file_that_may_not_be_read_is_not_lost) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(10000));
    give_to_ordinary_user(path);
    ASSERT_EQ(chmod(path.c_str(), 0200), 0);
    const std::string error = as_an_ordinary_user([&] { return saving(path, pattern(7392, 1)); });
    EXPECT_TRUE(has(error, path)) << error;
    EXPECT_TRUE(has(error, "Permission denied")) << error;
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(folder.get("a.120"), pattern(10000));
    EXPECT_EQ(folder.names(), Names{"a.120"});
}

TEST(NativeReplacePermissions, a_longer_file_that_may_not_be_read_is_replaced) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.csv", pattern(10000));
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    give_to_ordinary_user(path);
    ASSERT_EQ(chmod(path.c_str(), 0200), 0);
    EXPECT_EQ(as_an_ordinary_user([&] { return saving(path, pattern(7392, 1), kReplace); }),
              "saved");
    EXPECT_EQ(mode_of(path), 0200U);
    ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    EXPECT_EQ(folder.get("a.csv"), pattern(7392, 1));
}

TEST_P(NativePermissions, nothing_exists_in_a_folder_that_may_not_be_entered) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    give_to_ordinary_user(folder.path());
    ASSERT_EQ(chmod(folder.path().c_str(), 0600), 0);
    EXPECT_EQ(as_an_ordinary_user([&]() -> std::string {
                  return NativeFileSystem().exists(path) ? "exists" : "does not";
              }),
              "does not");
    const std::string error = as_an_ordinary_user([&] { return saving(path, pattern(7392, 1)); });
    EXPECT_TRUE(has(error, "Permission denied")) << error;
    ASSERT_EQ(chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(folder.get("a.120"), pattern(7392));
    EXPECT_EQ(folder.names(), Names{"a.120"});
}

TEST_P(NativePermissions, the_administrator_leaves_a_file_with_its_owner) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    give_to_ordinary_user(path);
    ASSERT_EQ(chmod(path.c_str(), 04640), 0);
    struct stat before {};
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    EXPECT_EQ(saving(path, pattern(7392, 1)), "saved");
    struct stat after {};
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mode, before.st_mode);
}

// A file that is shared by a group stays with the group, whoever of it saves.
TEST_P(NativePermissions, a_member_of_the_group_leaves_a_file_with_the_group) {
    constexpr gid_t kClub = 54321;
    const TemporaryFolder folder;
    const std::string path = folder.put("a.120", pattern(7392));
    ASSERT_EQ(chmod(path.c_str(), 0660), 0);
    const bool administrator = geteuid() == 0;
    if (administrator) {
        ASSERT_EQ(chown(path.c_str(), 0, kClub), 0);
    }
    EXPECT_EQ(in_child([&]() -> std::string {
                  if (administrator && setgroups(1, &kClub) != 0) return "cannot join the group";
                  if (!become_an_ordinary_user()) return "cannot change the user";
                  return saving(path, pattern(7392, 1));
              }),
              "saved");
    struct stat after {};
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(after.st_gid, administrator ? kClub : getegid());
    EXPECT_EQ(after.st_mode & 07777, 0660U);
    EXPECT_EQ(folder.get("a.120"), pattern(7392, 1));
}

INSTANTIATE_TEST_SUITE_P(Saving, NativePermissions, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
