#include "faults/support/traced_child.h"

#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/user.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "fakes/child_process.h"

namespace memwright::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kRefused = 99;
constexpr int kSystemCallStop = SIGTRAP | 0x80;

// What parent and child both see.
class SharedText {
  public:
    SharedText()
        : text_(static_cast<char*>(
              mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
        if (text_ == MAP_FAILED) throw std::runtime_error("no memory to share");
    }
    SharedText(const SharedText&) = delete;
    SharedText& operator=(const SharedText&) = delete;
    ~SharedText() { munmap(text_, kSize); }

    void set(const std::string& text) { text.copy(text_, kSize - 1); }
    std::string get() const { return text_; }

  private:
    static constexpr std::size_t kSize = 16384;
    char* text_;
};

#if defined(__x86_64__)

constexpr bool kCanChangeCalls = true;

// Nothing is done in the place of the call; its result is set when it is left.
void skip_call(pid_t child) {
    user_regs_struct registers{};
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.orig_rax = static_cast<unsigned long long>(-1);
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
}

void set_result(pid_t child, std::int64_t result) {
    user_regs_struct registers{};
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rax = static_cast<unsigned long long>(result);
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
}

void set_third_argument(pid_t child, std::uint64_t value) {
    user_regs_struct registers{};
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rdx = value;
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
}

#else

constexpr bool kCanChangeCalls = false;
void skip_call(pid_t) {}
void set_result(pid_t, std::int64_t) {}
void set_third_argument(pid_t, std::uint64_t) {}

#endif

bool is_below(const fs::path& path, const fs::path& folder) {
    const std::string& name = path.native();
    const std::string& start = folder.native();
    if (!name.starts_with(start)) return false;
    return start.ends_with('/') || name.size() == start.size() || name[start.size()] == '/';
}

class Tracer {
  public:
    Tracer(pid_t child, fs::path folder, const Fault& fault, const Watch& watch)
        : child_(child), folder_(std::move(folder)), fault_(fault), watch_(watch) {}

    Outcome run() {
        int status = wait_for(child_);
        if (WIFSTOPPED(status)) {
            ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        }
        int signal = 0;
        while (WIFSTOPPED(status)) {
            // A killed child goes on by itself to its end, which is waited for all the same.
            ptrace(PTRACE_SYSCALL, child_, nullptr, signal);
            status = wait_for(child_);
            signal = WIFSTOPPED(status) ? signal_after(WSTOPSIG(status)) : 0;
        }
        if (WIFEXITED(status)) outcome_.exit_status = WEXITSTATUS(status);
        if (WIFSIGNALED(status)) outcome_.signal = WTERMSIG(status);
        return outcome_;
    }

  private:
    // The signal that the child gets when it goes on.
    int signal_after(int stop) {
        if (stop != kSystemCallStop) return stop == SIGTRAP || stop == SIGSTOP ? 0 : stop;
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            current_ = system_call(child_, info.entry.nr, info.entry.args);
            if (current_ && !is_below(current_->path, folder_) &&
                !is_below(current_->to, folder_)) {
                current_.reset();
            }
            if (current_) entered(info.entry.args[2]);
        } else if (info.op == PTRACE_SYSCALL_INFO_EXIT && current_) {
            left(info.exit.rval);
            current_.reset();
        }
        return 0;
    }

    void entered(std::uint64_t count) {
        struck_now_ = false;
        if (watch_) watch_(*current_, child_);
        if (fault_.deed == Deed::none || (fault_.strikes && !fault_.strikes(*current_))) return;
        const int number = ++number_ - fault_.first;
        if (number < 0 || number >= fault_.times) return;
        struck_now_ = outcome_.struck = true;
        failing_ = fault_.deed == Deed::fail || fault_.deed == Deed::done_but_fail ||
                   (fault_.deed == Deed::half_then_fail && number > 0);
        if (fault_.deed == Deed::kill_before) end();
        if (failing_) {
            const bool done = fault_.deed == Deed::done_but_fail || current_->kind == Kind::close;
            if (!done) skip_call(child_);
        } else if (fault_.deed == Deed::one_byte) {
            set_third_argument(child_, std::min<std::uint64_t>(count, 1));
        } else if (fault_.deed == Deed::half || fault_.deed == Deed::half_then_fail) {
            set_third_argument(child_, count - count / 2);
        }
    }

    void left(std::int64_t result) {
        current_->result = result;
        if (struck_now_ && failing_) {
            current_->result = -fault_.error;
            set_result(child_, -fault_.error);
        }
        outcome_.calls.push_back(*current_);
        if (struck_now_ && fault_.deed == Deed::kill_after) end();
    }

    void end() {
        outcome_.killed = true;
        kill(child_, SIGKILL);
    }

    pid_t child_;
    fs::path folder_;
    const Fault& fault_;
    const Watch& watch_;
    Outcome outcome_;
    std::optional<SystemCall> current_;
    int number_ = 0;
    bool struck_now_ = false;
    bool failing_ = false;
};

}  // namespace

std::string Fault::text() const {
    const char* const kDeeds[] = {"nothing",       "failing",     "failing though done",
                                  "one byte",      "half",        "half, then failing",
                                  "killed before", "killed after"};
    std::string text = kDeeds[static_cast<int>(deed)];
    if (error != 0) text += std::string(" with ") + name_of(error);
    text += " at call " + std::to_string(first);
    if (times == kEver) return text + " and all after it";
    return times == 1 ? text : text + ", " + std::to_string(times) + " times";
}

void trace_from_here() {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(kRefused);
    std::raise(SIGSTOP);
}

Outcome run_traced(const std::function<std::string()>& work, const fs::path& folder,
                   const Fault& fault, const Watch& watch) {
    SharedText report;
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no child");
    if (child == 0) {
        end_child_after_a_minute();
        try {
            report.set(work());
        } catch (const std::exception& error) {
            report.set(std::string("error: ") + error.what());
        }
        _exit(0);
    }
    Outcome outcome = Tracer(child, fs::canonical(folder), fault, watch).run();
    outcome.report = report.get();
    return outcome;
}

std::string reason_against_tracing() {
    if (!kCanChangeCalls) return "faults are injected on x86-64 alone";
    const auto work = [] {
        trace_from_here();
        return std::string("traced");
    };
    return run_traced(work, "/", {}).exit_status == 0 ? ""
                                                      : "this system lets no process be traced";
}

}  // namespace memwright::faults
