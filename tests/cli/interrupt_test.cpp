// Signals that come more than once, to a command that something holds.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "fakes/pseudo_terminal.h"
#include "faults/support/built_cli.h"
#include "faults/support/every_fault.h"
#include "support/temporary_folder.h"

namespace memwright::cli_tests {
namespace {

namespace fs = std::filesystem;

using faults::Kind;
using faults::SystemCall;

struct Signals {
    int first;
    int second;

    friend std::ostream& operator<<(std::ostream& out, const Signals& signals) {
        return out << signals.first << " " << signals.second;
    }
};

class Interrupt : public ::testing::TestWithParam<Signals> {
  protected:
    void SetUp() override { MEMWRIGHT_NEEDS_TRACING(); }
    void TearDown() override {
        std::error_code ignored;
        if (!pipe_.empty()) fs::remove(pipe_, ignored);
    }

    // Somebody makes a pipe of the port's lock file just before it is made, and so after it was
    // looked for. Opening that never ends, and begins anew after each signal.
    void hold(const SystemCall& call, pid_t child) {
        if (!call.path.filename().string().starts_with("LCK..")) return;
        if (call.kind == Kind::create && pipe_.empty()) {
            ASSERT_EQ(mkfifo(call.path.c_str(), 0666), 0);
            pipe_ = call.path;
        } else if (call.kind == Kind::open && call.path == pipe_) {
            const int signals[] = {GetParam().first, GetParam().second, SIGKILL};
            kill(child, signals[std::min(sent_++, 2)]);
        }
    }

    const TemporaryFolder home_;
    const faults::BuiltCli cli_{home_};
    const fakes::PseudoTerminal line_;
    fs::path pipe_;
    int sent_ = 0;
};

TEST_P(Interrupt, a_second_signal_ends_a_command_that_does_not_end_by_the_first) {
    const auto outcome = faults::run_traced(
        [&]() -> std::string {
            cli_.become({"read", home_.file("out.120"), "--yes", "--port", line_.path()}, true);
        },
        "/", {}, [&](const SystemCall& call, pid_t child) { hold(call, child); });
    EXPECT_FALSE(pipe_.empty()) << cli_.errors();
    EXPECT_EQ(outcome.signal, GetParam().second) << "it ended with " << outcome.exit_status;
    EXPECT_EQ(sent_, 2);
}

INSTANTIATE_TEST_SUITE_P(Both, Interrupt,
                         ::testing::Values(Signals{SIGTERM, SIGTERM}, Signals{SIGINT, SIGINT},
                                           Signals{SIGINT, SIGTERM}, Signals{SIGTERM, SIGHUP}),
                         [](const auto& signals) {
                             return std::to_string(signals.param.first) + "_and_" +
                                    std::to_string(signals.param.second);
                         });

}  // namespace
}  // namespace memwright::cli_tests
