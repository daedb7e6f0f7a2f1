// Locks on files that are changed, between real processes.

#include "native/change_locks.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <ctime>

#include "base/error.h"
#include "fakes/child_process.h"
#include "native/file_system.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr milliseconds kImpatient{1};

class NativeChangeLocksTest : public ::testing::Test {
  protected:
    // What comes of a try to lock a file that is not waited for.
    static std::string locking(const std::string& path) {
        try {
            return NativeChangeLocks(kImpatient).lock(path) ? "locked" : "nothing to lock";
        } catch (const FileError& error) {
            return error.what();
        }
    }
    static std::string held(const std::string& path) {
        return "Cannot change " + path +
               ": it is being changed by another program.\nNothing was changed there. Wait for "
               "that program, or end it, and try again.";
    }

    TemporaryFolder folder;
    std::string path = folder.put("Gr\xC3\xBC\xC3\x9F.120", {1, 2, 3});
    NativeChangeLocks locks;
};

TEST_F(NativeChangeLocksTest, a_file_is_locked_once_and_stays_as_it_is) {
    auto lock = locks.lock(path);
    ASSERT_NE(lock, nullptr);
    EXPECT_EQ(locking(path), held(path));
    EXPECT_EQ(in_child([&] { return locking(path); }), held(path));
    lock.reset();
    EXPECT_EQ(locking(path), "locked");
    EXPECT_EQ(folder.get("Gr\xC3\xBC\xC3\x9F.120"), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST_F(NativeChangeLocksTest, other_names_of_a_file_are_locked_with_it) {
    fs::create_symlink(path, folder.file("link"));
    fs::create_symlink("link", folder.file("link to link"));
    fs::create_hard_link(path, folder.file("second"));
    const auto lock = locks.lock(folder.file("link to link"));
    ASSERT_NE(lock, nullptr);
    for (const std::string& name : {path, folder.file("link"), folder.file("second")}) {
        EXPECT_EQ(locking(name), held(name));
    }
    EXPECT_EQ(locking(folder.put("other", {})), "locked");
}

TEST_F(NativeChangeLocksTest, a_file_that_was_put_in_the_place_of_a_locked_one_is_another) {
    const auto lock = locks.lock(path);
    ASSERT_NE(lock, nullptr);
    NativeFileSystem().replace(path, std::vector<std::uint8_t>{4});
    const auto second = NativeChangeLocks(kImpatient).lock(path);
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(locking(path), held(path));
}

// Each adds its own byte to what it finds, which the next ones have to find, too.
TEST_F(NativeChangeLocksTest, of_many_processes_that_change_a_file_each_sees_the_one_before) {
    constexpr int kProcesses = 8, kRounds = 25;
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            end_child_after_a_minute();
            NativeFileSystem files;
            for (int round = 0; round < kRounds; ++round) {
                const auto lock = NativeChangeLocks().lock(path);
                if (lock == nullptr) _exit(1);
                Bytes bytes;
                files.read(path, 1000, bytes);
                bytes.push_back(static_cast<std::uint8_t>(i));
                files.replace(path, bytes);
            }
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
    auto bytes = folder.get("Gr\xC3\xBC\xC3\x9F.120");
    ASSERT_EQ(bytes.size(), 3U + kProcesses * kRounds);
    for (int i = 0; i < kProcesses; ++i) {
        EXPECT_EQ(std::count(bytes.begin() + 3, bytes.end(), i), kRounds);
    }
}

TEST_F(NativeChangeLocksTest, a_killed_process_frees_its_lock) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        end_child_after_a_minute();
        const auto lock = NativeChangeLocks().lock(path);
        if (lock == nullptr || write(ends[1], "y", 1) != 1) _exit(1);
        for (;;) pause();
    }
    close(ends[1]);
    char told = 0;
    ASSERT_EQ(read(ends[0], &told, 1), 1);
    close(ends[0]);
    EXPECT_EQ(locking(path), held(path));
    kill(child, SIGKILL);
    EXPECT_NE(locks.lock(path), nullptr) << "once the other one has ended";
    wait_for(child);
}

TEST_F(NativeChangeLocksTest, waiting_is_left_to_the_system) {
    const auto lock = locks.lock(path);
    ASSERT_NE(lock, nullptr);
    const auto begin = std::clock();
    EXPECT_THROW(NativeChangeLocks(milliseconds(1000)).lock(path), FileError);
    EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC / 10) << "processor time";
}

TEST_F(NativeChangeLocksTest, what_cannot_be_locked_is_left_to_whoever_saves_it) {
    fs::create_directory(folder.file("folder"));
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    fs::create_symlink("gone", folder.file("dangling"));
    fs::create_symlink("loop", folder.file("loop"));
    for (const char* const name : {"gone", "no/folder", "folder", "pipe", "dangling", "loop"}) {
        EXPECT_EQ(locking(folder.file(name)), "nothing to lock") << name;
    }
    EXPECT_EQ(locking("/dev/null"), "nothing to lock");
    EXPECT_EQ(locking(""), "nothing to lock");
    fs::permissions(path, fs::perms::owner_read | fs::perms::others_read);
    EXPECT_EQ(as_an_ordinary_user([&] { return locking(path); }), "nothing to lock");
}

}  // namespace
}  // namespace memwright
