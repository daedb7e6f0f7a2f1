// The archive of the radios' images, and exporting from the window, struck by every fault.

#include <filesystem>
#include <map>

#include "faults/support/every_fault.h"
#include "files/csv_test.h"
#include "files/image_archive.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

class ArchiveFaults : public testing::Test {
  protected:
    using Files = std::map<std::string, Bytes>;

    void SetUp() override {
        MEMWRIGHT_NEEDS_TRACING();
        for (const std::string& folder : {folder_.file("data"), archive_.folder()}) {
            native_.make_private_folder(folder);
        }
    }

    static MemoryImage image(int number) {
        MemoryImage made;
        made.set(0, static_cast<std::uint8_t>(number));
        made.set(layout::kImageSize - 1, 1);
        return made;
    }
    static std::string time(int second) {
        return "2026-11-21 12.00." + std::to_string(100 + second).substr(1);
    }

    // Images 1 to `count`, a second apart.
    void fill(int count) {
        for (int number = 1; number <= count; ++number) {
            archive_.keep(image(number), time(number), "read");
        }
        before_ = files();
        ASSERT_EQ(before_.size(), static_cast<std::size_t>(count));
    }
    Files files() const {
        Files found;
        for (const auto& entry : fs::directory_iterator(archive_.folder())) {
            const std::string name = entry.path().filename().string();
            if (!name.starts_with(".memwright-")) found[name] = content_of(entry.path()).value();
        }
        return found;
    }
    void put_back() const {
        const Files now = files();
        for (const auto& [name, bytes] : now) {
            if (!before_.contains(name)) fs::remove(archive_.path(name));
        }
        for (const auto& [name, bytes] : before_) {
            if (!now.contains(name)) folder_.put("data/radio images/" + name, bytes);
        }
        remove_unfinished(archive_.folder());
    }

    // Keeps an image; the file of the name `leaves` may go when it is there.
    void strike(const MemoryImage& kept, const std::string& leaves,
                const std::function<bool(const SystemCall&)>& strikes = {}) {
        const std::string name = time(59) + " written.120";
        const Bytes bytes{kept.bytes().begin(), kept.bytes().end()};
        strike_everywhere({.folder = folder_.path(),
                           .prepare = [&] { put_back(); },
                           .work = [&]() -> std::string {
                               trace_from_here();
                               archive_.keep(kept, time(59), "written");
                               return "";
                           },
                           .check =
                               [&](const Ending& ending) {
                                   check(name, bytes, leaves, ending);
                                   check_unfinished(archive_.folder(), ending);
                               },
                           .strikes = strikes,
                           .every_error = false});
    }

    void check(const std::string& name, const Bytes& bytes, const std::string& leaves,
               const Ending& ending) const {
        const Files now = files();
        const bool is_there = now.contains(name);
        for (const auto& [other, content] : now) {
            if (other == name) continue;
            EXPECT_TRUE(before_.contains(other)) << other;
        }
        for (const auto& [other, content] : before_) {
            if (now.contains(other)) {
                EXPECT_EQ(now.at(other), content) << other << " was changed";
            } else {
                EXPECT_TRUE(is_there && other == leaves) << other << " is gone";
            }
        }
        if (is_there) {
            EXPECT_EQ(now.at(name), bytes);
        }
        if (ending.said == Said::success) {
            EXPECT_TRUE(is_there) << "success was reported falsely";
            EXPECT_EQ(missing_for_the_disk(ending.outcome.calls, archive_.path(name)), "");
        }
    }

    const TemporaryFolder folder_;
    mutable NativeFileSystem native_;
    ImageArchive archive_{native_, folder_.file("data")};
    Files before_;
};

TEST_F(ArchiveFaults, leave_the_new_image_whole_or_away_and_the_others_as_they_are) {
    fill(2);
    strike(image(3), "none");
}

TEST_F(ArchiveFaults, leave_an_image_that_gets_a_new_date_under_one_or_both) {
    fill(2);
    strike(image(1), time(1) + " read.120");
}

TEST_F(ArchiveFaults, let_no_image_go_from_a_full_archive_before_the_new_one_is_there) {
    fill(static_cast<int>(ImageArchive::kMost));
    strike(image(55), time(1) + " read.120", changes_something);
}

class ExportFaults : public CsvTest {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }

    void strike(const std::optional<Bytes>& before) {
        fill(1, {.tag = "TOWER", .frequency = "118.10000"});
        const std::string after = exported();
        const ReplacedFile list{folder.file("out.csv"), before, {after.begin(), after.end()}};
        ASSERT_NE(before, list.after);
        strike_everywhere({.folder = folder.path(),
                           .prepare =
                               [&] {
                                   remove_unfinished(folder.path());
                                   list.put_back();
                               },
                           .work = [&]() -> std::string {
                               dialogs.names.emplace_back(list.path.string());
                               trace_from_here();
                               csv.mnuExport_Click();
                               return "";
                           },
                           .check =
                               [&](const Ending& ending) {
                                   list.check(ending);
                                   check_unfinished(folder.path(), ending);
                               },
                           .every_error = false});
    }
};

TEST_F(ExportFaults, over_a_longer_file_leave_the_old_one_or_the_new_one) {
    strike(Bytes(10000, 'x'));
}

TEST_F(ExportFaults, to_a_new_file_leave_none_or_the_whole_of_it) { strike(std::nullopt); }

}  // namespace
}  // namespace memwright::faults
