#include "radio/vr120_sim_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

extern char** environ;  // NOLINT: POSIX wants it declared by its user

namespace memwright::radio {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kLimit{30};

int milliseconds_left(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

bool readable(int descriptor, Clock::time_point end) {
    pollfd watched = {descriptor, POLLIN, 0};
    return poll(&watched, 1, milliseconds_left(end)) > 0;
}

std::optional<std::string> next_line(int descriptor, std::string& read_so_far) {
    const auto end = Clock::now() + kLimit;
    for (;;) {
        const auto newline = read_so_far.find('\n');
        if (newline != std::string::npos) {
            const std::string line = read_so_far.substr(0, newline);
            read_so_far.erase(0, newline + 1);
            return line;
        }
        if (!readable(descriptor, end)) {
            ADD_FAILURE() << "no line came";
            return std::nullopt;
        }
        std::array<char, 1024> part{};
        const auto length = read(descriptor, part.data(), part.size());
        if (length <= 0) return std::nullopt;
        read_so_far.append(part.data(), static_cast<std::size_t>(length));
    }
}

}  // namespace

Vr120Sim::Vr120Sim(const std::vector<std::string>& arguments) {
    std::array<int, 2> output{};
    std::array<int, 2> errors{};
    if (pipe2(output.data(), O_CLOEXEC) != 0 || pipe2(errors.data(), O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe";
        return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
    std::vector<std::string> words = {VR120_SIM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers(words.size() + 1, nullptr);
    std::ranges::transform(words, pointers.begin(), [](std::string& word) { return word.data(); });
    EXPECT_EQ(posix_spawn(&pid_, VR120_SIM, &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    ::close(output[1]);
    ::close(errors[1]);
    output_ = output[0];
    errors_ = errors[0];
}

Vr120Sim::~Vr120Sim() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    if (output_ >= 0) ::close(output_);
    if (errors_ >= 0) ::close(errors_);
}

std::optional<std::string> Vr120Sim::line() { return next_line(output_, output_read_); }

std::optional<std::string> Vr120Sim::error_line() { return next_line(errors_, errors_read_); }

bool Vr120Sim::says_nothing_for(int milliseconds) const {
    return !readable(output_, Clock::now() + std::chrono::milliseconds(milliseconds));
}

void Vr120Sim::signal(int number) const { kill(pid_, number); }

int Vr120Sim::exit_status() {
    // Its output ends when it does.
    const auto end = Clock::now() + kLimit;
    std::array<char, 1024> part{};
    while (readable(output_, end) && read(output_, part.data(), part.size()) > 0) {
    }
    if (Clock::now() >= end) {
        ADD_FAILURE() << "vr120-sim does not end";
        return -1;
    }
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

double Vr120Sim::processor_time() const {
    clockid_t clock{};
    timespec used{};
    EXPECT_EQ(clock_getcpuclockid(pid_, &clock), 0);
    EXPECT_EQ(clock_gettime(clock, &used), 0);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

void Line::open(const std::string& path) {
    descriptor_ = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(descriptor_, 0) << path;
}

void Line::close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

void Line::send(const Bytes& bytes) const {
    const auto end = Clock::now() + kLimit;
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        pollfd watched = {descriptor_, POLLOUT, 0};
        if (poll(&watched, 1, milliseconds_left(end)) <= 0) {
            ADD_FAILURE() << "the line takes no bytes";
            return;
        }
        const auto length = write(descriptor_, bytes.data() + sent, bytes.size() - sent);
        if (length > 0) {
            sent += static_cast<std::size_t>(length);
        } else if (errno != EAGAIN) {
            ADD_FAILURE() << "the line was dropped";
            return;
        }
    }
}

Bytes Line::receive(std::size_t count) const {
    const auto end = Clock::now() + kLimit;
    Bytes bytes;
    while (bytes.size() < count) {
        if (!readable(descriptor_, end)) {
            ADD_FAILURE() << bytes.size() << " of " << count << " bytes came";
            return bytes;
        }
        Bytes part(count - bytes.size());
        const auto length = read(descriptor_, part.data(), part.size());
        if (length == 0 || (length < 0 && errno == EIO)) return bytes;
        if (length > 0) bytes.insert(bytes.end(), part.begin(), part.begin() + length);
    }
    return bytes;
}

bool Line::is_silent_for(int milliseconds) const {
    return !readable(descriptor_, Clock::now() + std::chrono::milliseconds(milliseconds));
}

bool Line::hangs_up() const {
    const auto end = Clock::now() + kLimit;
    pollfd watched = {descriptor_, 0, 0};
    return poll(&watched, 1, milliseconds_left(end)) > 0 && (watched.revents & POLLHUP) != 0;
}

}  // namespace memwright::radio
