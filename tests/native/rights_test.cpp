// What a saved file lets others do where its owner or its group cannot be kept, and files and
// folders that are for the user alone.

#include <grp.h>

#include <filesystem>

#include "fakes/rights.h"
#include "native/files.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

constexpr gid_t kClub = 54321;

#define MEMWRIGHT_NEEDS_ROOT() \
    if (geteuid() != 0) GTEST_SKIP() << "only the administrator can give files to others"

class NativeRights : public BothWaysToSave {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_ROOT(); }

    // Saves over a file of such an owner and group as a user who is in `groups` beside his own.
    mode_t mode_after(uid_t owner, mode_t mode, const std::vector<gid_t>& groups) {
        folder_.put("a.120", pattern(7392));
        EXPECT_EQ(chown(path_.c_str(), owner, kClub), 0);
        EXPECT_EQ(chmod(path_.c_str(), mode), 0);
        EXPECT_EQ(in_child([&]() -> std::string {
                      if (setgroups(groups.size(), groups.data()) != 0) return "no groups";
                      if (!become_an_ordinary_user()) return "cannot change the user";
                      return saving(path_, pattern(7392, 1));
                  }),
                  "saved");
        EXPECT_EQ(folder_.get("a.120"), pattern(7392, 1));
        return mode_of(path_);
    }

    const TemporaryFolder folder_;
    const std::string path_ = folder_.file("a.120");
};

TEST_P(NativeRights, of_the_old_group_do_not_go_to_another) {
    const std::pair<mode_t, mode_t> kept[] = {{0600, 0600}, {0640, 0600}, {0660, 0600},
                                              {0644, 0644}, {0664, 0644}, {0666, 0666},
                                              {0604, 0600}, {0646, 0644}, {0770, 0700}};
    for (const auto& [before, after] : kept) {
        EXPECT_EQ(mode_after(kNobody, before, {}), after) << std::oct << before;
        EXPECT_EQ(facts_of(path_).st_gid, kNobody);
    }
}

TEST_P(NativeRights, stay_with_a_group_that_is_kept) {
    for (const mode_t mode : {0600U, 0640U, 0660U, 0664U, 0604U, 0770U, 06770U}) {
        EXPECT_EQ(mode_after(kNobody, mode, {kClub}), mode) << std::oct << mode;
        EXPECT_EQ(facts_of(path_).st_gid, kClub);
    }
}

TEST_P(NativeRights, to_act_as_the_owner_go_with_the_owner) {
    EXPECT_EQ(mode_after(0, 06770, {kClub}), 0770U);
    EXPECT_EQ(facts_of(path_).st_uid, kNobody);
    EXPECT_EQ(mode_after(kNobody, 06777, {}), 0777U);
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeRights, kBothWays, name_of_way);

class NativePrivate : public testing::Test {
  protected:
    const Umask usual_{0};
    const TemporaryFolder folder_;
    NativeFileSystem files_;
};

TEST_F(NativePrivate, a_file_is_the_users_alone_whatever_new_files_get) {
    for (const mode_t mask : {0000U, 0022U, 0077U, 0777U}) {
        const Umask here(mask);
        const std::string path = folder_.file("new-" + std::to_string(mask));
        files_.replace_private(path, pattern(100));
        EXPECT_EQ(mode_of(path), 0600U);
    }
}

TEST_F(NativePrivate, a_file_takes_over_nothing_of_one_that_others_could_read) {
    const std::string path = folder_.put("a", pattern(200));
    ASSERT_EQ(chmod(path.c_str(), 0666), 0);
    give_to_ordinary_user(path);
    files_.replace_private(path, pattern(100, 1));
    EXPECT_EQ(mode_of(path), 0600U);
    EXPECT_EQ(facts_of(path).st_uid, geteuid());
    EXPECT_EQ(folder_.get("a"), pattern(100, 1));
}

TEST_F(NativePrivate, a_folder_and_those_above_it_are_made_for_the_user_alone) {
    files_.make_private_folder(folder_.file("a/b/c"));
    for (const char* const name : {"a", "a/b", "a/b/c"}) {
        EXPECT_EQ(mode_of(folder_.file(name)), 0700U) << name;
    }
    EXPECT_EQ(mode_of(folder_.path()), 0777U);
    files_.make_private_folder(folder_.file("d/./e/"));
    EXPECT_EQ(mode_of(folder_.file("d/e")), 0700U);
}

TEST_F(NativePrivate, a_folder_lets_its_user_in_even_if_new_ones_do_not) {
    const Umask nothing(0777);
    files_.make_private_folder(folder_.file("a/b"));
    EXPECT_EQ(mode_of(folder_.file("a")), 0700U);
    EXPECT_EQ(mode_of(folder_.file("a/b")), 0700U);
}

TEST_F(NativePrivate, a_folder_that_is_there_is_closed_to_others_and_those_above_it_stay_open) {
    fs::create_directories(folder_.path() / "a/b");
    folder_.put("a/b/file", {7});
    for (const auto& [before, after] :
         {std::pair<mode_t, mode_t>{0777, 0700}, {0755, 0700}, {0700, 0700}, {0500, 0500}}) {
        ASSERT_EQ(chmod(folder_.file("a/b").c_str(), before), 0);
        files_.make_private_folder(folder_.file("a/b"));
        EXPECT_EQ(mode_of(folder_.file("a/b")), after);
    }
    EXPECT_EQ(mode_of(folder_.file("a")), 0777U);
    EXPECT_EQ(folder_.get("a/b/file"), Bytes{7});
}

TEST_F(NativePrivate, a_folder_of_another_and_what_a_link_leads_to_stay_as_they_are) {
    MEMWRIGHT_NEEDS_ROOT();
    fs::create_directory(folder_.path() / "anothers");
    give_to_ordinary_user(folder_.path() / "anothers");
    fs::create_directory(folder_.path() / "real");
    fs::create_directory_symlink("real", folder_.path() / "link");
    for (const char* const name : {"anothers", "link"}) {
        files_.make_private_folder(folder_.file(name));
    }
    EXPECT_EQ(mode_of(folder_.file("anothers")), 0777U);
    EXPECT_EQ(mode_of(folder_.file("real")), 0777U);
}

}  // namespace
}  // namespace memwright
