// A folder in which another user swaps files as quickly as it can, while the user saves.

#include <filesystem>
#include <set>

#include "fakes/rights.h"
#include "native/files.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

// Another user's process, which puts a link in the place of every new file that it finds, and tells
// after its first look at the folder.
class Swapper {
  public:
    Swapper(const fs::path& folder, const std::string& target) {
        int ends[2];
        if (pipe(ends) != 0) return;
        child_ = fork();
        if (child_ == 0) {
            end_child_after_a_minute();
            if (become_an_ordinary_user()) swap_for_ever(folder, target, ends[1]);
            _exit(1);
        }
        close(ends[1]);
        char told = 0;
        runs_ = read(ends[0], &told, 1) == 1;
        close(ends[0]);
    }
    Swapper(const Swapper&) = delete;
    Swapper& operator=(const Swapper&) = delete;
    ~Swapper() {
        kill(child_, SIGKILL);
        wait_for(child_);
    }

    bool runs() const { return runs_; }

  private:
    [[noreturn]] static void swap_for_ever(const fs::path& folder, const std::string& target,
                                           int told) {
        std::set<std::string> swapped;
        for (bool first = true;; first = false) {
            std::error_code gone;
            for (const auto& entry : fs::directory_iterator(folder, gone)) {
                const std::string name = entry.path().string();
                if (name.find(".memwright-") == std::string::npos) continue;
                if (!swapped.insert(name).second) continue;
                unlink(name.c_str());
                if (symlink(target.c_str(), name.c_str()) != 0) swapped.erase(name);
            }
            if (first && write(told, "r", 1) != 1) _exit(1);
        }
    }

    pid_t child_ = -1;
    bool runs_ = false;
};

class NativeSharedFolder : public BothWaysToSave {};

// Whether a save succeeds is a matter of luck here; what it must not do is not.
TEST_P(NativeSharedFolder, nobody_gets_rights_to_another_file_by_swapping_the_new_one) {
    if (geteuid() != 0) GTEST_SKIP() << "only the administrator can become another user";
    constexpr int kSaves = 300;
    const TemporaryFolder folder;
    const TemporaryFolder own;
    ASSERT_EQ(chmod(own.path().c_str(), 0755), 0);
    const std::string secret = own.put("secret", pattern(100));
    ASSERT_EQ(chmod(secret.c_str(), 0600), 0);
    const std::string path = folder.file("a.120");
    const Swapper swapper(folder.path(), secret);
    ASSERT_TRUE(swapper.runs());
    int saved = 0;
    for (int save = 0; save < kSaves; ++save) {
        // The file of the other, who lets everybody change it.
        fs::remove(path);
        folder.put("a.120", pattern(7392));
        ASSERT_EQ(chmod(path.c_str(), 0666), 0);
        give_to_ordinary_user(path);
        const std::string said = saving(path, pattern(7392, 1));
        EXPECT_TRUE(said == "saved" || has(said, "Cannot save " + path)) << said;
        saved += said == "saved" ? 1 : 0;
        ASSERT_EQ(mode_of(secret), 0600U) << "after " << save << " saves";
        ASSERT_EQ(facts_of(secret).st_uid, 0U) << "after " << save << " saves";
    }
    std::cout << saved << " of " << kSaves << " saved\n";
}

INSTANTIATE_TEST_SUITE_P(Saving, NativeSharedFolder, kBothWays, name_of_way);

}  // namespace
}  // namespace memwright
