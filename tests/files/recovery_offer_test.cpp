// What a run of the program makes of what those before it left.

#include "files/recovery_test.h"

#include "fakes/seeded_random.h"

namespace memwright {
namespace {

using namespace columns;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(RecoveryTest, the_next_start_asks_about_the_file_and_the_time) {
    {
        const auto run = start();
        run->image_files.open_named(
            machine.folder.put("Gr\xC3\xBC\xC3\x9F.120", Bytes(layout::kImageSize, 0)));
        run->type("A");
        machine.time.run_for(1s);
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    ASSERT_THAT(next->messages.shown, SizeIs(1));
    const Message& question = next->messages.shown[0];
    EXPECT_EQ(question.text, "Memwright ended before the table of " +
                                 machine.folder.file("Gr\xC3\xBC\xC3\x9F.120") +
                                 " was saved. It was last changed on 21.11.26 12:34.\r\n\r\n"
                                 "Do you want to restore it?");
    EXPECT_EQ(question.title, "Memwright");
    EXPECT_EQ(question.buttons, Buttons::yes_no);
    EXPECT_EQ(question.icon, Icon::question);
}

TEST_F(RecoveryTest, a_table_without_a_file_is_asked_about_as_such) {
    crash_with("A");
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_THAT(next->messages.shown.at(0).text,
                StartsWith("Memwright ended before a table that has no file yet was saved. "));
    EXPECT_EQ(next->caption.caption.get(), "Memwright");
    next->save_as(machine.folder.file("new.120"));
    EXPECT_EQ(machine.folder.get("new.120").size(), std::size_t{layout::kImageSize});
}

TEST_F(RecoveryTest, yes_gives_every_cell_the_image_and_the_file_back_as_unsaved) {
    SeededRandom random;
    const std::string path = machine.folder.put("mem.120", Bytes(layout::kImageSize, 0));
    std::vector<std::string> cells;
    MemoryImage image;
    {
        const auto run = start();
        run->image_files.open_named(path);
        for (int row = 1; row < kRows; ++row) {
            for (int col = 1; col < kCount; ++col) {
                std::string text(static_cast<std::size_t>(random.between(0, 8)), ' ');
                for (char& c : text) c = static_cast<char>(random.byte());
                run->grid.set_text(row, col, text);
            }
        }
        for (int i = 0; i < layout::kImageSize; ++i) run->store.set_byte(i, random.byte());
        machine.time.run_for(1s);
        cells = cells_of(run->grid);
        image = run->store.MemoryImage;
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_TRUE(cells_of(next->grid) == cells);
    EXPECT_TRUE(next->store.MemoryImage == image);
    EXPECT_EQ(next->image_files.current_path(), path);
    EXPECT_EQ(next->caption.caption.get(), "Memwright - " + path);
    EXPECT_THAT(next->window.calls, ElementsAre("EnableGui"));
    EXPECT_TRUE(next->table.IsDataChanged());
    EXPECT_THAT(next->notes, IsEmpty());
}

TEST_F(RecoveryTest, what_was_restored_counts_as_unsaved_even_if_it_is_what_the_file_holds) {
    const std::string path = machine.folder.put("mem.120", Bytes(layout::kImageSize, 0));
    {
        const auto run = start();
        run->image_files.open_named(path);
        run->grid.set_text(1, kTag, "X");  // no memory without a frequency
        machine.time.run_for(1s);
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_TRUE(next->table.IsDataChanged());
    next->table.SetChangeCheck();
    EXPECT_FALSE(next->table.IsDataChanged());
}

TEST_F(RecoveryTest, a_crash_right_after_restoring_loses_nothing) {
    crash_with("A");
    for (int i = 0; i < 3; ++i) {
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        EXPECT_EQ(next->tag(), "A");
        EXPECT_THAT(left(), ElementsAre(kFirst));
    }
    crash_with("B");
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
}

TEST_F(RecoveryTest, a_crash_after_restoring_on_a_full_disk_loses_nothing) {
    crash_with("A");
    {
        machine.files.writing_fails = true;
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        machine.time.run_for(5s);
        machine.files.writing_fails = false;
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
}

TEST_F(RecoveryTest, what_was_restored_and_changed_is_kept_and_goes_with_the_save) {
    crash_with("A");
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    next->type("B");
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_EQ(snapshot().cells[0], "B");
    next->save_as(machine.folder.file("mem.120"));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_THAT(machine.locks.held, IsEmpty());
}

TEST_F(RecoveryTest, no_starts_empty_and_keeps_the_snapshot_aside) {
    crash_with("A");
    const Bytes before = content(kFirst);
    auto next = start();
    EXPECT_FALSE(next->offered(Answer::no));
    EXPECT_EQ(next->tag(), "");
    EXPECT_THAT(next->window.calls, IsEmpty());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    EXPECT_EQ(content(kDeclined), before);
    next->recovery.end();
    next = start();
    EXPECT_FALSE(next->offered()) << "asked once";
    EXPECT_THAT(left(), ElementsAre(kDeclined));
}

TEST_F(RecoveryTest, a_declined_one_is_kept_for_thirty_days_from_then_on) {
    crash_with("A");
    make_old(kFirst, 400);
    EXPECT_FALSE(start()->offered(Answer::no));
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    make_old(kDeclined, 30);
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    make_old(kDeclined, 31);
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(RecoveryTest, one_that_nobody_has_been_asked_about_never_grows_old) {
    crash_with("A");
    make_old(kFirst, 4000);
    EXPECT_TRUE(start()->offered(Answer::yes));
}

TEST_F(RecoveryTest, declining_on_a_full_disk_keeps_it_aside_all_the_same) {
    crash_with("A");
    machine.files.writing_fails = true;
    EXPECT_FALSE(start()->offered(Answer::no));
    machine.files.writing_fails = false;
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    EXPECT_EQ(snapshot(kDeclined).cells[0], "A");
}

TEST_F(RecoveryTest, a_declined_one_replaces_no_other) {
    crash_with("A");
    EXPECT_FALSE(start()->offered(Answer::no));
    crash_with("B");
    EXPECT_FALSE(start()->offered(Answer::no));
    crash_with("C");
    EXPECT_FALSE(start()->offered(Answer::no));
    ASSERT_THAT(left(), SizeIs(3));
    EXPECT_EQ(snapshot("declined 2 2026-11-21 12.34.56 1.recovery").cells[0], "B");
    EXPECT_EQ(snapshot("declined 3 2026-11-21 12.34.56 1.recovery").cells[0], "C");
}

TEST_F(RecoveryTest, a_declined_one_comes_back_under_its_old_name) {
    crash_with("A");
    EXPECT_FALSE(start()->offered(Answer::no));
    std::filesystem::rename(std::filesystem::path(machine.state) / kDeclined,
                            std::filesystem::path(machine.state) / kFirst);
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
}

TEST_F(RecoveryTest, of_several_the_latest_is_offered_first_and_the_others_wait) {
    {
        const auto one = start(), other = start();
        one->type("ONE");
        machine.time.run_for(1s);
        other->type("OTHER");
        machine.time.run_for(1s);
    }
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
    {
        const auto next = start();
        EXPECT_TRUE(next->offered(Answer::yes));
        EXPECT_THAT(next->messages.shown, SizeIs(1));
        EXPECT_EQ(next->tag(), "OTHER");
        next->recovery.end();
    }
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "ONE");
}

TEST_F(RecoveryTest, no_goes_on_to_the_next_one) {
    {
        const auto one = start(), other = start();
        one->type("ONE");
        other->type("OTHER");
        machine.time.run_for(1s);
    }
    const auto next = start();
    next->messages.answers = {Answer::no, Answer::yes};
    EXPECT_TRUE(next->recovery.offer());
    EXPECT_EQ(next->tag(), "ONE");
    EXPECT_THAT(left(), ElementsAre(kFirst, "declined 2026-11-21 12.34.56 2.recovery"));
}

TEST_F(RecoveryTest, one_that_is_no_snapshot_is_told_and_set_aside_without_a_question) {
    crash_with("A");
    const Bytes whole = content(kFirst);
    const Bytes half(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(whole.size() / 2));
    std::filesystem::remove_all(machine.state);
    for (const Bytes& bytes : {Bytes(), half, Bytes(3, 0), Bytes(100'000, 0xFF)}) {
        put(kFirst, bytes);
        const auto next = start();
        EXPECT_FALSE(next->offered());
        EXPECT_THAT(next->notes, ElementsAre(HasSubstr(kFirst)));
        ASSERT_THAT(left(), ElementsAre(kDeclined));
        EXPECT_EQ(content(kDeclined), bytes);
        std::filesystem::remove_all(machine.state);
    }
}

TEST_F(RecoveryTest, a_huge_one_is_set_aside_unread) {
    put(kFirst, {});
    std::filesystem::resize_file(std::filesystem::path(machine.state) / kFirst, 1ULL << 36);
    const auto next = start();
    EXPECT_FALSE(next->offered());
    EXPECT_THAT(next->notes, SizeIs(1));
    EXPECT_THAT(left(), ElementsAre(kDeclined));
    EXPECT_EQ(std::filesystem::file_size(std::filesystem::path(machine.state) / kDeclined),
              1ULL << 36);
}

TEST_F(RecoveryTest, more_than_64_megabytes_are_too_large) {
    constexpr std::uint64_t kLargest = 64ULL * 1024 * 1024;
    for (const auto& [size, cause] : {std::pair(kLargest, "This is no recovery file"),
                                      std::pair(kLargest + 1, "It is too large.")}) {
        put(kFirst, {});
        std::filesystem::resize_file(std::filesystem::path(machine.state) / kFirst, size);
        const auto next = start();
        EXPECT_FALSE(next->offered());
        EXPECT_THAT(next->notes, ElementsAre(HasSubstr(cause)));
        std::filesystem::remove_all(machine.state);
    }
}

TEST_F(RecoveryTest, one_that_cannot_be_read_stands_in_no_others_way) {
    crash_with("A");
    put("2026-11-22 12.34.56 1.recovery", {1, 2, 3});
    machine.files.removing_fails = true;  // it cannot be set aside, either
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
    EXPECT_FALSE(next->notes.empty());
}

TEST_F(RecoveryTest, a_disk_that_cannot_be_read_costs_nothing) {
    crash_with("A");
    {
        machine.files.reading_fails = true;
        const auto next = start();
        EXPECT_FALSE(next->offered());
        EXPECT_THAT(next->notes, ElementsAre(HasSubstr("the disk is gone")));
        machine.files.reading_fails = false;
    }
    EXPECT_TRUE(start()->offered(Answer::yes));
}

TEST_F(RecoveryTest, an_old_declined_one_that_cannot_be_removed_stands_in_no_ones_way) {
    crash_with("A");
    put(std::string("declined old") + ".recovery", {1});
    make_old("declined old.recovery", 50);
    machine.files.removing_fails = true;
    const auto next = start();
    EXPECT_TRUE(next->offered(Answer::yes));
    EXPECT_EQ(next->tag(), "A");
    EXPECT_THAT(next->notes, ElementsAre(HasSubstr("Cannot remove")));
}

TEST_F(RecoveryTest, what_is_restored_replaces_all_that_the_run_had) {
    crash_with("A");
    const auto run = start();
    run->type("B");
    run->grid.set_text(2, kMasked, "True");
    run->table.MaskColor();
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst, kSecond));
    EXPECT_TRUE(run->offered(Answer::yes)) << "its own is not, the other is";
    EXPECT_EQ(run->tag(), "A");
    EXPECT_EQ(run->grid.colour(2, kFreq), start()->grid.colour(2, kFreq));
    EXPECT_THAT(left(), ElementsAre(kFirst));
}

TEST_F(RecoveryTest, what_is_restored_is_kept_though_it_is_emptied) {
    crash_with("A");
    const auto run = start();
    EXPECT_TRUE(run->offered(Answer::yes));
    for (const int col : {kFreq, kMode, kTag}) run->grid.set_text(1, col, "");
    machine.time.run_for(1s);
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_EQ(snapshot().cells[0], "");
}

TEST_F(RecoveryTest, other_files_in_the_folder_are_left_alone) {
    put("notes.txt", {1});
    put("declined.txt", {1});
    put(".memwright-1.tmp", {1});
    EXPECT_FALSE(start()->offered());
    EXPECT_THAT(left(), ElementsAre(".memwright-1.tmp", "declined.txt", "notes.txt"));
}

}  // namespace
}  // namespace memwright
