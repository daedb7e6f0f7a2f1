// Saving an image and exporting a CSV file, struck by every fault at every call to the system.

#include <filesystem>

#include "fakes/rights.h"
#include "faults/support/every_fault.h"
#include "native/files.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kImage = 7392;

class SaveFaults : public testing::TestWithParam<WayToSave> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }

    // Saves to `path`, which leads to the file.
    void strike(const ReplacedFile& file, const std::string& path, bool every_error = false) {
        const Bytes bytes = pattern(kImage, 1);
        const Operation operation{.folder = folder_.path(),
                                  .prepare =
                                      [&] {
                                          remove_unfinished(folder_.path());
                                          file.put_back();
                                          restrict_rights(file);
                                      },
                                  .work = [&]() -> std::string {
                                      trace_from_here();
                                      const std::string said = saving(path, bytes, GetParam());
                                      return said == "saved" ? "" : said;
                                  },
                                  .check =
                                      [&](const Ending& ending) {
                                          file.check(ending);
                                          check_rights(file);
                                          check_unfinished(file.path.parent_path(), ending);
                                          if (ending.said == Said::nothing)
                                              check_next_save(file, path);
                                      },
                                  .every_error = every_error};
        strike_everywhere(operation);
    }

    // Of another user where that can be, so that owner and rights have to be set again.
    static void restrict_rights(const ReplacedFile& file) {
        if (!file.before) return;
        ASSERT_EQ(chmod(file.path.c_str(), kOldMode), 0);
        give_to_ordinary_user(file.path);
    }

    // Nobody has got more than the old file gave, or than new files usually give.
    static void check_rights(const ReplacedFile& file) {
        if (!fs::exists(file.path)) return;
        constexpr mode_t kNewMode = 0644;
        const struct stat now = facts_of(file.path);
        const mode_t most = file.before ? kOldMode : kNewMode;
        EXPECT_EQ(now.st_mode & 07777 & ~most, 0U) << std::oct << now.st_mode;
        const bool same_group = geteuid() != 0 || now.st_gid == kNobody;
        EXPECT_TRUE(!file.before || same_group || (now.st_mode & 07077) == 0)
            << "another group got rights: " << std::oct << now.st_mode;
    }

    // What a killed save leaves goes with a later one.
    void check_next_save(const ReplacedFile& file, const std::string& path) {
        make_unfinished_old(file.path.parent_path());
        EXPECT_EQ(saving(path, pattern(kImage, 1), GetParam()), "saved");
        EXPECT_TRUE(file.is_new());
        EXPECT_EQ(count_unfinished(file.path.parent_path()), 0);
    }

    Bytes saved_over(const Bytes& old) const {
        Bytes saved = pattern(kImage, 1);
        if (GetParam().keeps_rest() && old.size() > kImage) {
            saved.insert(saved.end(), old.begin() + kImage, old.end());
        }
        return saved;
    }

    static constexpr mode_t kOldMode = 02640;
    const Umask usual_{0022};
    const TemporaryFolder folder_;
};

TEST_P(SaveFaults, over_an_image_leave_the_old_one_or_the_new_one) {
    const Bytes old = pattern(kImage);
    strike({folder_.file("a.120"), old, saved_over(old)}, folder_.file("a.120"), true);
}

TEST_P(SaveFaults, over_a_longer_file_leave_the_old_one_or_the_new_one) {
    const Bytes old = pattern(10000);
    strike({folder_.file("a.120"), old, saved_over(old)}, folder_.file("a.120"));
}

TEST_P(SaveFaults, to_a_new_file_leave_none_or_the_whole_of_it) {
    strike({folder_.file("a.120"), std::nullopt, pattern(kImage, 1)}, folder_.file("a.120"));
}

TEST_P(SaveFaults, through_a_link_leave_the_link_and_the_old_file_or_the_new_one) {
    fs::create_directory(folder_.path() / "else");
    fs::create_symlink("else/a.120", folder_.path() / "link.120");
    const Bytes old = pattern(kImage);
    strike({folder_.path() / "else/a.120", old, saved_over(old)}, folder_.file("link.120"));
    EXPECT_EQ(fs::read_symlink(folder_.path() / "link.120"), "else/a.120");
}

INSTANTIATE_TEST_SUITE_P(Saving, SaveFaults, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright::faults
