#include "cli/console.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/error.h"
#include "base/printable.h"

namespace memwright::cli {
namespace {

[[noreturn]] void fail() {
    throw FileError("Cannot write to standard output: " + std::generic_category().message(errno) +
                    ".\nWhat arrived there is not whole: send it to another place.");
}

void write(const std::string& bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) fail();
}

// A file or port that is opened later must not get the number of a closed stream, or it would be
// sent what is meant for that. What takes the number here is as unusable as the stream.
void occupy_closed_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) >= 0) continue;
        open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

Console::Console() { occupy_closed_streams(); }

void Console::print(const std::string& text) { write(printable(text)); }

void Console::print_exactly(const std::string& bytes) {
    write(isatty(STDOUT_FILENO) != 0 ? printable(bytes) : bytes);
}

void Console::flush() {
    if (std::fflush(stdout) != 0) fail();
}

void Console::say(const std::string& text) {
    end_progress();
    std::fprintf(stderr, "%s\n", printable(text).c_str());
}

void Console::show_progress(int percent) {
    constexpr int kWidth = 40;
    if (percent == shown_percent_ || isatty(STDERR_FILENO) == 0) return;
    shown_percent_ = percent;
    const int done = percent * kWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(done), '#') +
                            std::string(static_cast<std::size_t>(kWidth - done), '.');
    std::fprintf(stderr, "\r[%s] %3d%%", bar.c_str(), percent);
}

void Console::end_progress() {
    if (shown_percent_ >= 0) std::fputc('\n', stderr);
    shown_percent_ = -1;
}

bool Console::wait_for_enter(bool (*wants_to_stop)()) {
    constexpr int kLookForStop = 100;  // milliseconds
    while (!wants_to_stop()) {
        pollfd typed{STDIN_FILENO, POLLIN, 0};
        // A signal that came just before the wait does not end it, so it is short.
        if (poll(&typed, 1, kLookForStop) <= 0) continue;
        char c = 0;
        if (read(STDIN_FILENO, &c, 1) != 1) return false;
        if (c == '\n') return true;
    }
    return false;
}

bool has_terminal() { return isatty(STDIN_FILENO) != 0; }

}  // namespace memwright::cli
