// Runs beside and after each other: what belongs to which, and the locks that tell.

#include "files/recovery_test.h"

#include "native/run_locks.h"

namespace memwright {
namespace {

using namespace columns;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(RecoveryTest, two_running_programs_do_not_take_each_others) {
    const auto one = start(), other = start();
    one->type("ONE");
    other->type("OTHER");
    machine.time.run_for(1s);
    EXPECT_THAT(left(), ElementsAre(kFirst, kSecond));
    EXPECT_FALSE(one->offered());
    EXPECT_FALSE(other->offered());
    EXPECT_FALSE(start()->offered());
    one->recovery.end();
    EXPECT_THAT(left(), ElementsAre(kSecond));
    EXPECT_EQ(snapshot(kSecond).cells[0], "OTHER");
}

TEST_F(RecoveryTest, a_new_run_does_not_write_over_what_an_old_one_left) {
    crash_with("A");
    crash_with("B");
    EXPECT_EQ(snapshot(kFirst).cells[0], "A");
    EXPECT_EQ(snapshot(kSecond).cells[0], "B");
}

TEST_F(RecoveryTest, one_that_another_run_takes_meanwhile_is_not_asked_about) {
    crash_with("A");
    machine.locks.while_locking = [this](const std::string&) {
        std::filesystem::remove(std::filesystem::path(machine.state) / kFirst);
    };
    const auto next = start();
    EXPECT_FALSE(next->offered());
    EXPECT_THAT(next->notes, IsEmpty());
}

TEST_F(RecoveryTest, a_name_that_a_run_has_given_up_may_be_that_of_another) {
    const auto run = start();
    run->type("A");
    machine.time.run_for(1s);
    run->save_as(machine.folder.file("mem.120"));
    crash_with("B");
    ASSERT_THAT(left(), ElementsAre(kFirst));
    EXPECT_TRUE(run->offered(Answer::yes));
    EXPECT_EQ(run->tag(), "B");
}

TEST_F(RecoveryTest, locks_that_killed_runs_left_go_with_the_next_start) {
    const std::string first = std::string(kFirst) + ".lock";
    const std::string second = std::string(kSecond) + ".lock";
    put(first, {});
    put("notes.lock", {1});
    put("notes.recovery.copy", {1});
    NativeRunLocks locks;
    const auto of_another_run = locks.lock(machine.state + "/" + second);
    ASSERT_NE(of_another_run, nullptr);
    ASSERT_THAT(left(), ElementsAre(first, second, "notes.lock", "notes.recovery.copy"));
    ProgramRun next(machine, locks);
    EXPECT_FALSE(next.offered());
    EXPECT_THAT(left(), ElementsAre(second, "notes.lock", "notes.recovery.copy"));
    EXPECT_THAT(next.notes, IsEmpty());
}

TEST_F(RecoveryTest, the_lock_of_what_is_offered_is_taken_once) {
    crash_with("A");
    put(std::string(kFirst) + ".lock", {});
    std::vector<std::string> taken;
    machine.locks.while_locking = [&](const std::string& path) { taken.push_back(path); };
    EXPECT_TRUE(start()->offered(Answer::yes));
    EXPECT_THAT(taken, ElementsAre(machine.state + "/" + kFirst + ".lock"));
}

}  // namespace
}  // namespace memwright
