// Recovery files, the archive and exported files that find no room.

#include <filesystem>

#include "faults/support/little_room.h"
#include "files/csv_test.h"
#include "files/image_archive.h"
#include "files/recovery_test.h"
#include "native/run_locks.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += name + "\n";
    return text;
}

#define MEMWRIGHT_NEEDS_LITTLE_ROOM() \
    if (const std::string reason = reason_against(GetParam()); reason != "") GTEST_SKIP() << reason

class RecoveryWithoutRoom : public RecoveryTest, public testing::WithParamInterface<LittleRoom> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_LITTLE_ROOM(); }

    std::string kept() {
        std::string tags;
        for (const std::string& name : left()) {
            tags += name.ends_with(".lock") ? "" : snapshot(name).cells.at(columns::kTag - 1);
        }
        return tags;
    }
    void let_a_second_pass() { machine.time.run_for(std::chrono::seconds(1)); }
};

TEST_P(RecoveryWithoutRoom, keeps_the_last_snapshot_says_so_once_and_goes_on_when_there_is_room) {
    NativeRunLocks locks;
    std::unique_ptr<ProgramRun> run;
    const auto prepare = [&] {
        run = std::make_unique<ProgramRun>(machine, locks);
        run->type("OLD");
        let_a_second_pass();
        run->type("NEW");
    };
    const std::string report = with_little_room(GetParam(), machine.folder, prepare, [&] {
        let_a_second_pass();
        let_a_second_pass();
        std::string said = joined(run->notes) + "kept: " + kept() + "\n";
        if (!GetParam().on_full_disk) return said;
        fs::remove(machine.folder.path() / kFiller);
        let_a_second_pass();
        return said + run->notes.back() + "\nkept: " + kept();
    });
    EXPECT_THAT(report, StartsWith("Changes are not kept for the case of a crash. Cannot save "));
    EXPECT_THAT(report, AllOf(HasSubstr(GetParam().cause), HasSubstr("\nkept: OLD\n")));
    EXPECT_EQ(report.find("not kept"), report.rfind("not kept")) << report;
    if (GetParam().on_full_disk) {
        EXPECT_THAT(report,
                    HasSubstr("Changes are kept again for the case of a crash.\nkept: NEW"));
    }
}

TEST_P(RecoveryWithoutRoom, leaves_the_restored_snapshot_and_the_declined_one) {
    for (const Answer answer : {Answer::yes, Answer::no}) {
        const auto prepare = [&] { crash_with("OLD"); };
        const std::string report = with_little_room(GetParam(), machine.folder, prepare, [&] {
            NativeRunLocks locks;
            ProgramRun run(machine, locks);
            run.offered(answer);
            return joined(run.notes) + "kept: " + kept();
        });
        EXPECT_EQ(report, "kept: OLD");
        fs::remove_all(machine.state);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, RecoveryWithoutRoom, kBothRooms, name_of_room);

class FilesWithoutRoom : public CsvTest, public testing::WithParamInterface<LittleRoom> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_LITTLE_ROOM(); }

    static std::string failure_of(const std::function<void()>& work) {
        try {
            work();
            return "success";
        } catch (const FileError& error) {
            return error.what();
        }
    }
};

TEST_P(FilesWithoutRoom, an_image_does_not_get_into_the_archive_and_the_others_stay) {
    ImageArchive archive(native, folder.file("data"));
    MemoryImage image;
    const auto prepare = [&] {
        archive.keep(image, "2026-11-21 12.00.01", "read");
        image.set(0, 1);
    };
    const std::string report = with_little_room(GetParam(), folder, prepare, [&] {
        const std::string said =
            failure_of([&] { archive.keep(image, "2026-11-21 12.00.02", "read"); });
        return said + "\nleft: " + joined(native.files_in(archive.folder())) +
               std::to_string(fs::file_size(archive.path(archive.names().at(0))));
    });
    EXPECT_THAT(report, AllOf(StartsWith("Cannot save "), HasSubstr(GetParam().cause)));
    EXPECT_THAT(report, HasSubstr("\nleft: 2026-11-21 12.00.01 read.120\n7392"));
}

TEST_P(FilesWithoutRoom, an_exported_file_stays_as_it_was) {
    for (int row = 1; row < grid.Rows(); ++row)
        fill(row, {.tag = "TOWER", .frequency = "118.10000"});
    const Bytes old(100, 'x');
    const auto prepare = [&] { folder.put("out.csv", old); };
    const std::string report = with_little_room(GetParam(), folder, prepare, [&] {
        const std::string said = failure_of([&] { exported(); });
        const bool same = folder.get("out.csv") == old;
        fs::remove(folder.path() / kFiller);
        return said + "\nleft: " + joined(folder.names()) + (same ? "as it was" : "changed");
    });
    EXPECT_THAT(report, AllOf(StartsWith("Cannot save "), HasSubstr(GetParam().cause)));
    EXPECT_THAT(report, HasSubstr("\nleft: out.csv\nas it was"));
}

INSTANTIATE_TEST_SUITE_P(Files, FilesWithoutRoom, kBothRooms, name_of_room);

}  // namespace
}  // namespace memwright::faults
