// Locks between real processes.

#include "native/run_locks.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "base/error.h"
#include "fakes/child_process.h"
#include "support/temporary_folder.h"

namespace memwright {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// A process that holds a lock until it is killed.
class Holder {
  public:
    explicit Holder(const std::string& path) {
        int ends[2];
        if (pipe(ends) != 0) return;
        pid_ = fork();
        if (pid_ == 0) {
            end_child_after_a_minute();
            const auto lock = NativeRunLocks().lock(path);
            const char told = lock != nullptr ? 'y' : 'n';
            if (write(ends[1], &told, 1) != 1) _exit(1);
            for (;;) pause();
        }
        close(ends[1]);
        char told = 0;
        holds_ = read(ends[0], &told, 1) == 1 && told == 'y';
        close(ends[0]);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { die(); }

    bool holds() const { return holds_; }
    void die() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        wait_for(pid_);
        pid_ = -1;
    }

  private:
    pid_t pid_ = -1;
    bool holds_ = false;
};

class NativeRunLocksTest : public ::testing::Test {
  protected:
    std::string locking(const std::string& name) {
        try {
            return locks.lock(folder.file(name)) ? "locked" : "held";
        } catch (const FileError& error) {
            return error.what();
        }
    }

    TemporaryFolder folder;
    std::string path = folder.file("Gr\xC3\xBC\xC3\x9F 1.recovery.lock");
    NativeRunLocks locks;
};

TEST_F(NativeRunLocksTest, a_lock_is_held_once_and_leaves_nothing_behind) {
    auto lock = locks.lock(path);
    EXPECT_NE(lock, nullptr);
    EXPECT_EQ(locks.lock(path), nullptr);
    EXPECT_NE(locks.lock(folder.file("other.lock")), nullptr);
    lock.reset();
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_NE(locks.lock(path), nullptr);
}

TEST_F(NativeRunLocksTest, two_processes_do_not_take_each_others) {
    const Holder other(path);
    ASSERT_TRUE(other.holds());
    EXPECT_EQ(locks.lock(path), nullptr);
    const auto own = locks.lock(folder.file("own.lock"));
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(in_child([&]() -> std::string {
                  return NativeRunLocks().lock(folder.file("own.lock")) ? "taken" : "held";
              }),
              "held");
}

TEST_F(NativeRunLocksTest, a_killed_process_frees_its_lock) {
    Holder other(path);
    ASSERT_TRUE(other.holds());
    EXPECT_EQ(locks.lock(path), nullptr);
    other.die();
    EXPECT_FALSE(folder.names().empty()) << "its file is still there";
    EXPECT_NE(locks.lock(path), nullptr);
}

TEST_F(NativeRunLocksTest, a_lock_does_not_grow_old_while_its_process_lives) {
    const Holder other(path);
    ASSERT_TRUE(other.holds());
    for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
        std::filesystem::last_write_time(
            file, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 365));
    }
    EXPECT_EQ(locks.lock(path), nullptr);
}

TEST_F(NativeRunLocksTest, what_a_dead_process_left_says_nothing_whatever_its_number_was) {
    folder.put("left.lock", {});
    EXPECT_NE(locks.lock(folder.file("left.lock")), nullptr);
    const std::string own = std::to_string(getpid()) + "\nmemwright\n";
    folder.put("own.lock", {own.begin(), own.end()});
    const auto lock = locks.lock(folder.file("own.lock"));
    EXPECT_NE(lock, nullptr);
    EXPECT_EQ(locks.lock(folder.file("own.lock")), nullptr);
}

// The folder may be one that several machines share: a lock is seen on the file, not by its name.
TEST_F(NativeRunLocksTest, of_many_processes_that_want_it_one_at_a_time_has_it) {
    constexpr int kProcesses = 8, kRounds = 300;
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            end_child_after_a_minute();
            int clashes = 0;
            for (int round = 0; round < kRounds; ++round) {
                const auto lock = NativeRunLocks().lock(path);
                if (lock == nullptr) continue;
                const int mark = open(folder.file("mark").c_str(), O_CREAT | O_EXCL, 0600);
                if (mark < 0) ++clashes;
                if (mark >= 0) close(mark);
                unlink(folder.file("mark").c_str());
            }
            _exit(clashes == 0 ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(NativeRunLocksTest, what_cannot_be_locked_is_an_error_and_not_held_by_another) {
    EXPECT_THAT(locking("no/such/folder.lock"),
                AllOf(HasSubstr("Cannot lock " + folder.file("no/such/folder.lock")),
                      HasSubstr("No such file")));
}

// In a child process, which is ended if it hangs.
TEST_F(NativeRunLocksTest, what_is_no_file_is_refused_without_waiting_and_stays) {
    std::filesystem::create_directory(folder.path() / "folder.lock");
    std::filesystem::create_symlink("real", folder.path() / "link.lock");
    std::filesystem::create_symlink("/dev/null", folder.path() / "null.lock");
    ASSERT_EQ(mkfifo(folder.file("pipe.lock").c_str(), 0666), 0);
    const std::vector<std::string> before = folder.names();
    const std::pair<std::string, std::string> kinds[] = {{"folder.lock", "it is a folder"},
                                                         {"link.lock", "it is a symbolic link"},
                                                         {"null.lock", "it is a symbolic link"},
                                                         {"pipe.lock", "it is a named pipe"}};
    for (const auto& kind : kinds) {
        EXPECT_EQ(
            in_child([&] { return locking(kind.first); }),
            "Cannot lock " + folder.file(kind.first) + ": " + kind.second +
                ".\nIt is no lock file of Memwright. Remove it, or ask who owns it to do so.");
    }
    EXPECT_EQ(folder.names(), before);
}

}  // namespace
}  // namespace memwright
