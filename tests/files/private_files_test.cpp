// Recovery files and the archive are for the user alone, whatever rights new files get.

#include <filesystem>

#include "fakes/rights.h"
#include "files/image_archive.h"
#include "files/recovery_test.h"
#include "native/run_locks.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;

class PrivateFiles : public RecoveryTest {
  protected:
    // All below a folder of the program: folders may be entered, and files read, by the user alone.
    static void expect_private(const fs::path& folder, std::size_t count) {
        EXPECT_EQ(mode_of(folder), 0700U) << folder;
        std::size_t found = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            EXPECT_EQ(mode_of(entry), entry.is_directory() ? 0700U : 0600U) << entry.path();
            ++found;
        }
        EXPECT_EQ(found, count);
    }

    const Umask none_{0};
    NativeRunLocks locks_;
    const fs::path state_ = machine.state;
    const fs::path data_ = machine.folder.path() / "data";
};

TEST_F(PrivateFiles, what_is_typed_and_its_lock_and_what_was_declined_are_the_users_alone) {
    {
        ProgramRun crashes(machine, locks_);
        crashes.type("OLD");
        machine.time.run_for(std::chrono::seconds(1));
    }
    expect_private(state_, 1);
    ProgramRun run(machine, locks_);
    run.offered(Answer::no);
    run.type("NEW");
    machine.time.run_for(std::chrono::seconds(1));
    EXPECT_THAT(left(), testing::ElementsAre(kFirst, std::string(kFirst) + ".lock", kDeclined));
    expect_private(state_, 3);
}

TEST_F(PrivateFiles, a_state_folder_that_others_may_enter_is_closed_to_them) {
    fs::create_directory(state_);
    ASSERT_EQ(chmod(state_.c_str(), 0755), 0);
    put(kFirst, {1});  // what an older program left
    ASSERT_EQ(chmod(state_.c_str(), 0755), 0);
    ProgramRun run(machine, locks_);
    run.type("NEW");
    machine.time.run_for(std::chrono::seconds(1));
    EXPECT_EQ(mode_of(state_), 0700U);
    EXPECT_EQ(mode_of(state_ / kSecond), 0600U);
}

TEST_F(PrivateFiles, images_of_radios_are_the_users_alone_in_folders_that_others_may_not_enter) {
    ImageArchive archive(machine.native, data_);
    MemoryImage image;
    archive.keep(image, "2026-11-21 12.00.01", "read");
    expect_private(data_, 2);
    for (const fs::path& folder : {data_, data_ / "radio images"}) {
        ASSERT_EQ(chmod(folder.c_str(), 0755), 0);
    }
    image.set(0, 1);
    archive.keep(image, "2026-11-21 12.00.02", "read");
    expect_private(data_, 3);
    EXPECT_EQ(mode_of(machine.folder.path()), 0777U);
}

}  // namespace
}  // namespace memwright
