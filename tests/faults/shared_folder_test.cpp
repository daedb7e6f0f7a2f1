// What others do in a folder that they may write to, at every call that a save or a read makes.

#include <sys/stat.h>

#include <filesystem>

#include "fakes/rights.h"
#include "faults/support/every_fault.h"
#include "native/files.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kImage = 7392;
constexpr int kMostCalls = 500;

std::vector<fs::path> unfinished_in(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().string().starts_with(".memwright-")) found.push_back(entry);
    }
    return found;
}

class SharedFolder : public testing::TestWithParam<WayToSave> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }

    // The file of another, which everybody may change, and one that is the saver's own business.
    void put_back() const {
        fs::remove(path_);
        for (const fs::path& file : unfinished_in(folder_.path())) fs::remove(file);
        folder_.put("a.120", pattern(kImage));
        ASSERT_EQ(chmod(path_.c_str(), 0666), 0);
        give_to_ordinary_user(path_);
        fs::remove(secret_);
        elsewhere_.put("secret", pattern(100, 7));
        ASSERT_EQ(chmod(secret_.c_str(), 0600), 0);
    }

    Outcome save(const Watch& watch) const {
        return run_traced(
            [&] {
                trace_from_here();
                return saving(path_, pattern(kImage, 1), GetParam());
            },
            folder_.path(), {}, watch);
    }

    // Saves once for each call of a save, and has `deed` done before that call. True if it was.
    void at_every_call(const std::function<bool()>& deed,
                       const std::function<void(const SystemCall&, const Outcome&)>& check) const {
        int done = 0;
        bool reached = true;
        for (int number = 1; reached; ++number) {
            ASSERT_LT(number, kMostCalls) << "the save never ends";
            put_back();
            int calls = 0;
            bool did = false;
            SystemCall before;
            const Outcome outcome = save([&](const SystemCall& call, pid_t) {
                if (++calls != number) return;
                before = call;
                did = deed();
            });
            reached = calls >= number;
            if (!did) continue;
            ++done;
            SCOPED_TRACE("before " + before.name + "; it said: " + outcome.report + "\n" +
                         text_of(outcome.calls));
            check(before, outcome);
        }
        EXPECT_GT(done, 3);
    }

    void expect_secret_untouched() const {
        EXPECT_EQ(mode_of(secret_), 0600U);
        EXPECT_EQ(facts_of(secret_).st_uid, geteuid());
        EXPECT_EQ(elsewhere_.get("secret"), pattern(100, 7));
    }

    const TemporaryFolder folder_;
    const TemporaryFolder elsewhere_;
    const std::string path_ = folder_.file("a.120");
    const std::string secret_ = elsewhere_.file("secret");
};

TEST_P(SharedFolder, a_link_in_the_place_of_the_new_file_gives_nothing_away_and_is_not_saved) {
    int told = 0;
    at_every_call(
        [&] {
            const auto files = unfinished_in(folder_.path());
            for (const fs::path& file : files) {
                fs::remove(file);
                fs::create_symlink(secret_, file);
            }
            return !files.empty();
        },
        [&](const SystemCall& before, const Outcome& outcome) {
            expect_secret_untouched();
            // Between the last look and the new name, there is no call in which to refuse.
            if (before.kind == Kind::rename) return;
            EXPECT_FALSE(fs::is_symlink(path_));
            EXPECT_EQ(content_of(path_), pattern(kImage));
            EXPECT_TRUE(outcome.report.starts_with("Cannot save " + path_));
            told += has(outcome.report, "another program has moved the new file") ? 1 : 0;
        });
    EXPECT_GT(told, 0);
}

TEST_P(SharedFolder, a_file_in_the_place_of_the_new_one_is_not_taken_for_it) {
    at_every_call(
        [&] {
            const auto files = unfinished_in(folder_.path());
            for (const fs::path& file : files) {
                fs::remove(file);
                folder_.put(file.filename().string(), pattern(kImage, 66));
            }
            return !files.empty();
        },
        [&](const SystemCall& before, const Outcome&) {
            if (before.kind == Kind::rename) return;
            EXPECT_EQ(content_of(path_), pattern(kImage));
        });
}

TEST_P(SharedFolder, a_link_in_the_place_of_the_old_file_neither_gets_rights_nor_gives_its_own) {
    at_every_call(
        [&] {
            fs::remove(path_);
            fs::create_symlink(secret_, path_);
            return true;
        },
        [&](const SystemCall&, const Outcome&) {
            // A save that finds the link from the start follows it, and keeps the file's rights.
            EXPECT_EQ(mode_of(secret_), 0600U);
            EXPECT_EQ(facts_of(secret_).st_uid, geteuid());
            if (fs::is_symlink(path_)) return;
            // The others' file stays theirs.
            EXPECT_EQ(mode_of(path_), 0666U);
            EXPECT_EQ(facts_of(path_).st_uid, geteuid() == 0 ? kNobody : geteuid());
        });
}

TEST_P(SharedFolder, a_pipe_in_the_place_of_the_file_is_not_waited_for) {
    int told = 0;
    at_every_call(
        [&] {
            fs::remove(path_);
            return mkfifo(path_.c_str(), 0666) == 0;
        },
        [&](const SystemCall&, const Outcome& outcome) {
            ASSERT_EQ(outcome.exit_status, 0) << "it waited";
            told += has(outcome.report, "it is a named pipe") ? 1 : 0;
        });
    EXPECT_GT(told, 1);
}

TEST_P(SharedFolder, the_new_file_is_the_users_alone_until_it_is_complete) {
    const std::size_t whole = GetParam().keeps_rest() ? 10000 : kImage;
    const Umask none(0);
    for (const mode_t mode : {0600U, 0640U, 0666U}) {
        put_back();
        folder_.put("a.120", pattern(10000));
        ASSERT_EQ(chmod(path_.c_str(), mode), 0);
        int incomplete = 0;
        const Outcome outcome = save([&](const SystemCall& call, pid_t) {
            for (const fs::path& file : unfinished_in(folder_.path())) {
                const bool complete = fs::file_size(file) == whole;
                incomplete += complete ? 0 : 1;
                EXPECT_EQ(mode_of(file) & ~(complete ? mode : 0600U), 0U) << call.name;
            }
        });
        EXPECT_EQ(outcome.report, "saved");
        EXPECT_EQ(mode_of(path_), mode);
        EXPECT_GT(incomplete, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Saving, SharedFolder, kBothWays, name_of_way);

// Reading, opening a file to read it in pieces, and reading one that is missing.
struct WayToRead {
    const char* name;
    std::string (*read)(const std::string& path);
    bool missing;
    const char* told;  // at one call at least

    friend std::ostream& operator<<(std::ostream& out, const WayToRead& way) {
        return out << way.name;
    }
};

class SharedFolderRead : public testing::TestWithParam<WayToRead> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }
};

TEST_P(SharedFolderRead, a_pipe_in_the_place_of_the_file_is_not_waited_for) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.120");
    int told = 0;
    bool reached = true;
    for (int number = 1; reached; ++number) {
        ASSERT_LT(number, kMostCalls) << "the read never ends";
        fs::remove(path);
        if (!GetParam().missing) folder.put("a.120", pattern(kImage));
        int calls = 0;
        const Outcome outcome = run_traced(
            [&] {
                trace_from_here();
                return GetParam().read(path);
            },
            folder.path(), {},
            [&](const SystemCall&, pid_t) {
                if (++calls != number) return;
                fs::remove(path);
                EXPECT_EQ(mkfifo(path.c_str(), 0666), 0);
            });
        reached = calls >= number;
        ASSERT_EQ(outcome.exit_status, 0) << "it waited";
        told += has(outcome.report, GetParam().told) ? 1 : 0;
    }
    EXPECT_GT(told, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Reading, SharedFolderRead,
    testing::Values(WayToRead{"reading", &reading, false, ": it is a named pipe.\nChoose an image"},
                    WayToRead{"opening", &opening, false, ": it is a named pipe.\nChoose an ord"},
                    WayToRead{"reading_none", &reading, true, "Cannot create "}),
    [](const auto& way) { return std::string(way.param.name); });

// The folder is the one that was there when the save began, whatever its name is now.
TEST(SharedFolders, a_folder_that_is_renamed_meanwhile_gets_the_file_and_its_successor_nothing) {
    MEMWRIGHT_NEEDS_TRACING();
    const TemporaryFolder above;
    fs::create_directory(above.path() / "shared");
    fs::create_directory(above.path() / "other");
    bool renamed = false;
    const Outcome outcome = run_traced(
        [&] {
            trace_from_here();
            return saving(above.file("shared/a.120"), pattern(kImage));
        },
        above.path(), {},
        [&](const SystemCall& call, pid_t) {
            if (renamed || call.kind != Kind::write) return;
            renamed = true;
            fs::rename(above.path() / "shared", above.path() / "moved");
            fs::create_symlink("other", above.path() / "shared");
        });
    EXPECT_TRUE(renamed);
    EXPECT_EQ(outcome.report, "saved");
    EXPECT_EQ(above.get("moved/a.120"), pattern(kImage));
    EXPECT_TRUE(fs::is_empty(above.path() / "other"));
}

}  // namespace
}  // namespace memwright::faults
