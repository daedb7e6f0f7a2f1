// A save that is killed leaves the old file or the new one.

#include <unistd.h>
#ifdef __linux__
#include <sys/ptrace.h>
#endif

#include <algorithm>
#include <chrono>

#include "fakes/child_process.h"
#include "fakes/seeded_random.h"
#include "native/files.h"

namespace memwright {
namespace {

constexpr const char* kName = "a.120";

// What a killed save had not finished is a file of its own; no more than one, and never an image.
void clear_away_unfinished(const TemporaryFolder& folder) {
    int unfinished = 0;
    for (const std::string& name : folder.names()) {
        if (name == kName) continue;
        EXPECT_TRUE(name.starts_with(".memwright-") && name.ends_with(".tmp")) << name;
        std::filesystem::remove(folder.path() / name);
        ++unfinished;
    }
    EXPECT_LE(unfinished, 1);
}

#ifdef __linux__

enum class End { kKilled, kFinished, kNotAllowed };

// Saves in a child process, and kills it when it has entered or left its `stops`-th system call.
End save_until(const std::string& path, const Bytes& bytes, int stops, const WayToSave& way) {
    const pid_t child = fork();
    if (child == 0) {
        end_child_after_a_minute();
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
        std::raise(SIGSTOP);
        _exit(saving(path, bytes, way) == "saved" ? 0 : 1);
    }
    int status = wait_for(child);
    for (int stop = 0; stop < stops && WIFSTOPPED(status); ++stop) {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0) break;
        status = wait_for(child);
    }
    if (!WIFSTOPPED(status)) {
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) != 1) << "the save failed";
        return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? End::kFinished : End::kNotAllowed;
    }
    kill(child, SIGKILL);
    wait_for(child);
    return End::kKilled;
}

// At every step of the way: before and after each call to the system.
void kill_at_every_step(std::size_t old_size, const WayToSave& way) {
    const TemporaryFolder folder;
    const Bytes old = pattern(old_size);
    const Bytes saved = pattern(7392, 1);
    Bytes complete = saved;
    if (way.keeps_rest() && old.size() > saved.size()) {
        complete.insert(complete.end(), old.begin() + 7392, old.end());
    }
    int left_old = 0;
    int left_new = 0;
    End end = End::kKilled;
    for (int stops = 0; end == End::kKilled; ++stops) {
        ASSERT_LT(stops, 5000) << "the save never ends";
        folder.put(kName, old);
        end = save_until(folder.file(kName), saved, stops, way);
        const Bytes found = folder.get(kName);
        ASSERT_TRUE(found == old || found == complete) << "half a file after " << stops << " steps";
        (found == old ? left_old : left_new) += 1;
        clear_away_unfinished(folder);
    }
    if (end == End::kNotAllowed) {
        std::cout << "this system does not let a process be stepped\n";
        return;
    }
    EXPECT_GT(left_old, 5);
    EXPECT_GT(left_new, 1) << "never killed after the new file was in place";
    EXPECT_EQ(folder.get(kName), complete);
}

TEST(NativeKill, at_any_step_leaves_the_old_file_or_the_new_one) {
    kill_at_every_step(7392, kOverwrite);
}

TEST(NativeKill, at_any_step_leaves_a_longer_file_complete) {
    kill_at_every_step(10000, kOverwrite);
}

TEST(NativeKill, at_any_step_of_replacing_leaves_a_longer_file_or_the_new_one) {
    kill_at_every_step(10000, kReplace);
}

#endif

// A child process that saves two images in turns for ever, and tells after each.
class Saver {
  public:
    explicit Saver(const std::string& path) {
        int ends[2];
        if (pipe(ends) != 0) return;
        told_ = ends[0];
        child_ = fork();
        if (child_ == 0) {
            end_child_after_a_minute();
            for (int round = 1; saving(path, pattern(7392, round % 2)) == "saved"; ++round) {
                if (write(ends[1], "s", 1) != 1) break;
            }
            _exit(1);
        }
        close(ends[1]);
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    ~Saver() {
        stop();
        close(told_);
    }

    // Waits for one more save.
    bool saved_one() const {
        char letter = 0;
        return read(told_, &letter, 1) == 1;
    }

    void stop() {
        if (child_ <= 0) return;
        kill(child_, SIGKILL);
        wait_for(child_);
        child_ = 0;
    }

  private:
    pid_t child_ = 0;
    int told_ = -1;
};

bool is_one_of_two(const Bytes& found) {
    return found == pattern(7392) || found == pattern(7392, 1);
}

TEST(NativeKill, at_any_moment_leaves_one_whole_file) {
    SeededRandom random;
    const TemporaryFolder folder;
    folder.put(kName, pattern(7392));
    for (int round = 0; round < 60; ++round) {
        Saver saver(folder.file(kName));
        for (int saves = random.between(0, 3); saves > 0; --saves) ASSERT_TRUE(saver.saved_one());
        // The moment need not be exact: any will do.
        const auto moment =
            std::chrono::steady_clock::now() + std::chrono::microseconds(random.between(0, 4000));
        while (std::chrono::steady_clock::now() < moment) {
        }
        saver.stop();
        ASSERT_TRUE(is_one_of_two(folder.get(kName)));
        clear_away_unfinished(folder);
    }
}

TEST(NativeKill, a_reader_sees_whole_files_alone_while_another_saves) {
    const TemporaryFolder folder;
    folder.put(kName, pattern(7392));
    Saver saver(folder.file(kName));
    for (int save = 0; save < 100; ++save) {
        for (int i = 0; i < 10; ++i) ASSERT_TRUE(is_one_of_two(folder.get(kName)));
        ASSERT_TRUE(saver.saved_one());
    }
}

}  // namespace
}  // namespace memwright
