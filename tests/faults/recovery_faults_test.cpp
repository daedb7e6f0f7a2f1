// Recovery files, struck by every fault at every call to the system: what was typed is in a file or
// in a recovery file at every moment.

#include <algorithm>
#include <filesystem>

#include "faults/support/every_fault.h"
#include "files/recovery_test.h"
#include "native/run_locks.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

using Tags = std::vector<std::string>;

class RecoveryFaults : public RecoveryTest {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }

    // A run with real locks. That of a child is never destroyed: it crashes.
    ProgramRun* start_run() { return new ProgramRun(machine, locks_); }
    void let_a_second_pass() { machine.time.run_for(std::chrono::seconds(1)); }

    // What a run that types a label, and keeps it, leaves behind when it crashes.
    void put_what_crashed_with(const std::string& tag) {
        fs::remove_all(machine.state);
        if (crashed_.empty()) {
            auto run = std::make_unique<ProgramRun>(machine, locks_);
            run->type(tag);
            let_a_second_pass();
            run.reset();
            crashed_ = content(kFirst);
        }
        put(kFirst, crashed_);
    }

    // What the user was told at last, unless it is good news.
    static std::string last_complaint(const ProgramRun& run) {
        if (run.notes.empty() || run.notes.back().starts_with("Changes are kept again")) return "";
        return run.notes.back();
    }

    // The labels of the recovery files, declined ones too; each of them is whole.
    Tags kept_tags() {
        Tags tags;
        for (const std::string& name : left()) {
            if (!name.ends_with(".recovery")) continue;
            tags.push_back(snapshot(name).cells.at(columns::kTag - 1));
        }
        std::ranges::sort(tags);
        return tags;
    }
    bool is_kept(const std::string& tag) {
        const Tags tags = kept_tags();
        return std::ranges::find(tags, tag) != tags.end();
    }

    // Later runs offer what there is, tidy up, and leave nothing but what was declined before.
    void check_next_starts() {
        const auto waiting = [&] {
            const auto names = left();
            return std::ranges::count_if(names, [](const std::string& name) {
                return name.ends_with(".recovery") && !name.starts_with("declined ");
            });
        };
        for (auto count = waiting(); count >= 0; --count) {
            ProgramRun run(machine, locks_);
            run.messages.answers = {Answer::yes};
            EXPECT_EQ(run.recovery.offer(), count > 0);
            EXPECT_EQ(run.notes, Tags{});
            run.recovery.end();
            EXPECT_EQ(waiting(), std::max<std::ptrdiff_t>(count - 1, 0));
        }
        for (const std::string& name : left()) {
            EXPECT_TRUE(name.starts_with("declined ") || name.starts_with(".memwright-")) << name;
        }
    }

    void strike(const std::function<void()>& prepare, const std::function<std::string()>& work,
                const std::function<void(const Ending&)>& check, bool every_error = false) {
        strike_everywhere({.folder = machine.folder.path(),
                           .prepare = prepare,
                           .work = work,
                           .check =
                               [&](const Ending& ending) {
                                   check(ending);
                                   if (fs::exists(machine.state)) {
                                       check_unfinished(machine.state, ending);
                                   }
                                   // What went well leaves the same each time.
                                   if (ending.said != Said::success) check_next_starts();
                               },
                           .every_error = every_error});
    }

    // The file that holds this label is on the disk.
    void expect_on_disk(const std::string& tag, const Ending& ending) {
        for (const std::string& name : left()) {
            if (!name.ends_with(".recovery")) continue;
            if (snapshot(name).cells.at(columns::kTag - 1) != tag) continue;
            EXPECT_EQ(missing_for_the_disk(ending.outcome.calls, fs::path(machine.state) / name),
                      "");
        }
    }

    // Faults strike from where it is typed on.
    std::string type_and_keep(ProgramRun& run) {
        run.type("NEW");
        trace_from_here();
        let_a_second_pass();
        return last_complaint(run);
    }

    NativeRunLocks locks_;

  private:
    Bytes crashed_;
};

TEST_F(RecoveryFaults, in_the_first_snapshot_are_told_or_it_is_there) {
    strike([&] { fs::remove_all(machine.state); }, [&] { return type_and_keep(*start_run()); },
           [&](const Ending& ending) {
               if (ending.said != Said::success) return;
               EXPECT_EQ(kept_tags(), Tags{"NEW"});
               expect_on_disk("NEW", ending);
           },
           true);
}

TEST_F(RecoveryFaults, in_the_first_snapshot_leave_what_a_run_of_the_same_second_left) {
    strike([&] { put_what_crashed_with("OLD"); }, [&] { return type_and_keep(*start_run()); },
           [&](const Ending& ending) {
               EXPECT_TRUE(is_kept("OLD"));
               EXPECT_TRUE(is_kept("NEW") || ending.said != Said::success);
           });
}

TEST_F(RecoveryFaults, in_a_later_snapshot_leave_the_one_before_or_the_new_one) {
    strike([&] { fs::remove_all(machine.state); },
           [&] {
               ProgramRun* const run = start_run();
               run->type("OLD");
               let_a_second_pass();
               return type_and_keep(*run);
           },
           [&](const Ending& ending) {
               EXPECT_TRUE(kept_tags() == Tags{"OLD"} || kept_tags() == Tags{"NEW"});
               if (ending.said != Said::success) return;
               EXPECT_EQ(kept_tags(), Tags{"NEW"});
               expect_on_disk("NEW", ending);
           });
}

TEST_F(RecoveryFaults, in_saving_leave_what_was_typed_in_the_image_or_in_its_snapshot) {
    const std::string path = machine.folder.file("a.120");
    const auto save = [&](ProgramRun& run, const std::string& tag) {
        run.type(tag);
        run.save_as(path);
        return machine.folder.get("a.120");
    };
    ProgramRun reference(machine);
    const Bytes before = save(reference, "OLD");
    fs::remove(path);
    const ReplacedFile image{path, before, save(reference, "NEW")};
    strike(
        [&] {
            remove_unfinished(machine.folder.path());
            image.put_back();
            fs::remove_all(machine.state);
        },
        [&] {
            ProgramRun* const run = start_run();
            run->image_files.open_named(path);
            run->type("NEW");
            let_a_second_pass();
            trace_from_here();
            run->image_files.mnuSaveOnly_Click();
            return std::string();
        },
        [&](const Ending& ending) {
            image.check(ending);
            EXPECT_TRUE(image.is_new() || is_kept("NEW")) << "what was typed is gone";
        });
}

TEST_F(RecoveryFaults, in_ending_the_program_leave_at_most_one_question_too_many) {
    strike([&] { fs::remove_all(machine.state); },
           [&] {
               ProgramRun* const run = start_run();
               run->type("NEW");
               let_a_second_pass();
               trace_from_here();
               run->recovery.end();
               return last_complaint(*run);
           },
           [&](const Ending& ending) {
               if (ending.said == Said::success) {
                   EXPECT_EQ(kept_tags(), Tags{});
               }
           });
}

TEST_F(RecoveryFaults, in_declining_a_snapshot_leave_it_under_one_name_or_the_other) {
    strike(
        [&] {
            put_what_crashed_with("NEW");
            Snapshot declined = snapshot(kFirst);
            declined.cells.at(columns::kTag - 1) = "OLD";
            put(kDeclined, bytes_of(declined));
        },
        [&] {
            ProgramRun* const run = start_run();
            trace_from_here();
            run->offered(Answer::no);
            return last_complaint(*run);
        },
        [&](const Ending& ending) {
            EXPECT_TRUE(is_kept("NEW"));
            EXPECT_TRUE(is_kept("OLD")) << "declined before";
            if (ending.said == Said::success) {
                EXPECT_EQ(kept_tags(), (Tags{"NEW", "OLD"}));
            }
        });
}

TEST_F(RecoveryFaults, in_restoring_a_snapshot_leave_it_on_the_disk) {
    strike([&] { put_what_crashed_with("NEW"); },
           [&]() -> std::string {
               ProgramRun* const run = start_run();
               trace_from_here();
               const bool restored = run->offered(Answer::yes);
               if (restored != (run->tag() == "NEW")) std::abort();
               return restored ? "" : "not restored: " + last_complaint(*run);
           },
           [&](const Ending& ending) {
               EXPECT_EQ(kept_tags(), Tags{"NEW"});
               EXPECT_NE(ending.words, "not restored: ") << "and nobody was told";
           });
}

}  // namespace
}  // namespace memwright::faults
