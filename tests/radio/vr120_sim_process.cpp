#include "radio/vr120_sim_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "support/built_programs.h"
#include "support/eventually.h"
#include "support/read_file.h"

namespace memwright::radio {
namespace {

using Clock = std::chrono::steady_clock;
constexpr systest::Milliseconds kLimit{30000};

int milliseconds_left(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

bool readable(int descriptor, Clock::time_point end) {
    pollfd watched = {descriptor, POLLIN, 0};
    return poll(&watched, 1, milliseconds_left(end)) > 0;
}

}  // namespace

Vr120Sim::Vr120Sim(const std::vector<std::string>& arguments)
    : process_({.program = systest::built_program("vr120-sim"),
                .arguments = arguments,
                .environment = systest::inherited_environment(),
                .output = output_.file,
                .errors = errors_.file}) {}

Vr120Sim::~Vr120Sim() { process_.signal(SIGKILL); }

std::optional<std::string> Vr120Sim::next_line(Stream& stream) {
    std::optional<std::string> line;
    const auto look = [&] {
        const bool ended = process_.exit_status().has_value();
        const std::string text = systest::read_file(stream.file);
        const auto newline = text.find('\n', stream.read);
        if (newline == std::string::npos) return ended;
        line = text.substr(stream.read, newline - stream.read);
        stream.read = newline + 1;
        return true;
    };
    if (!systest::wait_until(look, kLimit)) ADD_FAILURE() << "no line came";
    return line;
}

bool Vr120Sim::says_nothing_for(int milliseconds) {
    const auto speaks = [&] {
        return process_.exit_status() || systest::read_file(output_.file).size() > output_.read;
    };
    return !systest::wait_until(speaks, systest::Milliseconds(milliseconds));
}

int Vr120Sim::exit_status() {
    if (!systest::wait_until([&] { return process_.exit_status().has_value(); }, kLimit)) {
        ADD_FAILURE() << "vr120-sim does not end";
        return -1;
    }
    const systest::ExitStatus status = *process_.exit_status();
    return status.signal == 0 ? status.code : -1;
}

double Vr120Sim::processor_time() const {
    clockid_t clock{};
    timespec used{};
    EXPECT_EQ(clock_getcpuclockid(process_.pid(), &clock), 0);
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
