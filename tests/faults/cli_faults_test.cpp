// The commands of the built memwright-cli that write files, struck by every fault at every call to
// the system.

#include <cerrno>
#include <filesystem>

#include "cli/support/image.h"
#include "fakes/child_process.h"
#include "faults/support/built_cli.h"
#include "faults/support/every_fault.h"
#include "faults/support/little_room.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;
using cli_tests::Image;

// In a folder that holds the image radio.120, the table new.csv, and old.120, which is longer.
struct CommandLine {
    const char* name;
    std::vector<std::string> words;
    const char* written;
    bool at_every_call = false;  // or at those alone that change something

    friend std::ostream& operator<<(std::ostream& out, const CommandLine& line) {
        return out << line.name;
    }
};

const CommandLine kCommandLines[] = {
    {"import_in_place", {"import", "radio.120", "new.csv"}, "radio.120", true},
    {"export_to_a_new_file", {"export", "radio.120", "list.csv"}, "list.csv"},
    {"export_over_a_file", {"export", "radio.120", "old.120"}, "old.120"},
    {"settings_in_place", {"settings", "radio.120", "key-beep=OFF"}, "radio.120"},
    {"limits_into_another", {"limits", "radio.120", "0=0.6", "--output", "old.120"}, "old.120"},
    {"archive_restore", {"archive", "restore", "1", "old.120"}, "old.120"},
};

// With the sanitizers, starting the program takes too long to do it hundreds of times; one command
// stands for the others.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAll = false;
#else
constexpr bool kAll = true;
#endif

class CliFolder : public testing::Test {
  protected:
    CliFolder() {
        fill();
        const std::string archive = ".local/share/memwright/radio images/";
        fs::create_directories(home_.path() / archive);
        home_.put(archive + "2026-01-02 03.04.05 read.120", Image().bytes());
    }
    ~CliFolder() override { fs::current_path(folder_before_); }

    void fill() const {
        fs::current_path(folder_.path());
        folder_.put("radio.120", Image().channel(1, "TOWER", "118.1", "AM").bytes());
        folder_.put("old.120", Bytes(10000, 'x'));
        const std::string list = "Ch,MHz,Mode,Pref,Label\r\n1,121.5,AM,,\"GUARD\"\r\n";
        folder_.put("new.csv", {list.begin(), list.end()});
    }

    const fs::path folder_before_ = fs::current_path();
    const TemporaryFolder folder_;
    const TemporaryFolder home_;
    const BuiltCli cli_{home_};
};

class CliFaults : public CliFolder, public testing::WithParamInterface<CommandLine> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }
};

TEST_P(CliFaults, leave_the_old_file_or_the_new_one_and_the_exit_status_is_true) {
    const CommandLine& line = GetParam();
    ReplacedFile file{folder_.path() / line.written, content_of(line.written), {}};
    ASSERT_EQ(cli_.run(line.words), 0) << cli_.errors();
    file.after = content_of(line.written).value();
    ASSERT_NE(file.before, file.after);
    strike_everywhere({.folder = folder_.path(),
                       .prepare =
                           [&] {
                               remove_unfinished(folder_.path());
                               file.put_back();
                           },
                       .work = [&]() -> std::string { cli_.become(line.words, true); },
                       .check =
                           [&](const Ending& ending) {
                               file.check(ending);
                               check_unfinished(folder_.path(), ending);
                           },
                       .words = [&] { return cli_.errors(); },
                       .strikes = kAll && line.at_every_call ? nullptr : changes_something,
                       .every_error = false});
}

INSTANTIATE_TEST_SUITE_P(Commands, CliFaults,
                         testing::ValuesIn(std::begin(kCommandLines),
                                           kAll ? std::end(kCommandLines)
                                                : std::begin(kCommandLines) + 1),
                         [](const auto& line) { return std::string(line.param.name); });

TEST_F(CliFolder, a_file_system_without_locks_is_no_obstacle) {
    MEMWRIGHT_NEEDS_TRACING();
    const std::vector<std::string> words{"settings", "radio.120", "key-beep=OFF"};
    ASSERT_EQ(cli_.run(words), 0) << cli_.errors();
    const Bytes changed = content_of("radio.120").value();
    for (const Kind kind : {Kind::lock, Kind::create}) {
        fill();
        Fault fault{.deed = Deed::fail, .error = kind == Kind::lock ? ENOLCK : EACCES};
        fault.strikes = [&](const SystemCall& call) { return call.kind == kind; };
        const Outcome outcome =
            run_traced([&]() -> std::string { cli_.become(words, true); }, folder_.path(), fault);
        EXPECT_TRUE(outcome.struck);
        EXPECT_EQ(outcome.exit_status, 0) << cli_.errors();
        EXPECT_EQ(cli_.errors(), "");
        EXPECT_EQ(content_of("radio.120"), changed);
    }
}

// What goes to standard output may be cut off there, but not unnoticed.
TEST_F(CliFolder, faults_of_standard_output_end_with_another_status_than_0) {
    MEMWRIGHT_NEEDS_TRACING();
    if (!kAll) GTEST_SKIP() << "takes too long with the sanitizers";
    const std::vector<std::string> words{"archive", "restore", "1", "-"};
    const Bytes whole = Image().bytes();
    strike_everywhere(
        {.folder = folder_.path(),
         .prepare = [] {},
         .work = [&]() -> std::string { cli_.become(words, true, folder_.file("output")); },
         .check =
             [&](const Ending& ending) {
                 const Bytes output = content_of("output").value();
                 EXPECT_TRUE(std::equal(output.begin(), output.end(), whole.begin()));
                 if (ending.said == Said::success) {
                     EXPECT_EQ(output, whole) << "success was reported falsely";
                 }
                 if (ending.said == Said::failure) {
                     EXPECT_NE(ending.words, "");
                 }
             },
         .words = [&] { return cli_.errors(); },
         .every_error = false,
         .rides_out_signals = false});
}

class CliWithoutRoom : public CliFolder,
                       public testing::WithParamInterface<std::tuple<CommandLine, LittleRoom>> {
  protected:
    const CommandLine line_ = std::get<CommandLine>(GetParam());
    const LittleRoom room_ = std::get<LittleRoom>(GetParam());

    void SetUp() override {
        if (const std::string reason = reason_against(room_); reason != "") GTEST_SKIP() << reason;
    }

    // What the command says, and what it leaves.
    std::string run_without_room() const {
        const auto prepare = [&] {
            fill();
            // Much to export.
            Image image;
            for (int row = 1; row <= 500; ++row) image.channel(row, "TOWER", "118.1", "AM");
            folder_.put("radio.120", image.bytes());
        };
        return with_little_room(room_, folder_, prepare, [&]() -> std::string {
            const auto before = content_of(line_.written);
            const auto names = folder_.names();
            const int status = cli_.run(line_.words);
            if (content_of(line_.written) != before) return "the file was changed";
            if (folder_.names() != names) return "something is left behind";
            return "status " + std::to_string(status) + "\n" + cli_.errors();
        });
    }
};

TEST_P(CliWithoutRoom, leave_the_old_file_and_say_why) {
    const std::string report = run_without_room();
    EXPECT_TRUE(report.starts_with("status 4\nmemwright-cli: Cannot save ")) << report;
    EXPECT_NE(report.find(room_.cause), std::string::npos) << report;
}

INSTANTIATE_TEST_SUITE_P(Commands, CliWithoutRoom,
                         testing::Combine(testing::ValuesIn(kCommandLines), kBothRooms),
                         [](const auto& both) {
                             return std::string(std::get<0>(both.param).name) + "_" +
                                    std::get<1>(both.param).name;
                         });

// The signal that the system sends unless it is told not to.
TEST_F(CliFolder, a_command_that_the_limit_kills_leaves_the_old_file) {
    const Bytes before = content_of("radio.120").value();
    const std::string report = in_child([&]() -> std::string {
        if (!limit_file_size(4096)) return "no limit";
        std::signal(SIGXFSZ, SIG_DFL);
        return "status " + std::to_string(cli_.run({"settings", "radio.120", "key-beep=OFF"}));
    });
    EXPECT_EQ(report, "status -1");
    EXPECT_EQ(content_of("radio.120"), before);
}

}  // namespace
}  // namespace memwright::faults
