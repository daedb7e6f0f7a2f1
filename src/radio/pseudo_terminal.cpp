// The one file of the radio that needs Linux: pseudo-terminals, and inotify to watch them.

#include "radio/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>
#include <utility>

#include "base/error.h"

namespace memwright::radio {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

// How often to look whether the other end was opened where the system does not tell.
constexpr milliseconds kLookForOpening{50};
constexpr std::chrono::minutes kLongestWait{1};
constexpr milliseconds kTimeToTakeLastBytes{200};
constexpr milliseconds kLookForLastBytes{5};

// A signal's handler writes to the second, a wait polls the first.
std::array<int, 2> stop_pipe = {-1, -1};
volatile std::sig_atomic_t stop_flag = 0;

extern "C" void ask_to_stop(int /*signal*/) {
    const int cause = errno;
    stop_flag = 1;
    const char byte = 0;
    [[maybe_unused]] const auto ignored = write(stop_pipe[1], &byte, 1);
    errno = cause;
}

[[noreturn]] void fail(const std::string& task) {
    throw PortError("Cannot " + task + ": " + std::generic_category().message(errno) + ".");
}

void make_private_and_nonblocking(int descriptor) {
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

void close_if_open(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

// The other end, opened by ourselves without becoming its terminal.
class OtherEnd {
  public:
    explicit OtherEnd(const std::string& path)
        : descriptor_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
    OtherEnd(const OtherEnd&) = delete;
    OtherEnd& operator=(const OtherEnd&) = delete;
    ~OtherEnd() { close_if_open(descriptor_); }

    int get() const { return descriptor_; }

  private:
    int descriptor_;
};

// Waits until a descriptor can be read (-1 stands for none) or the time is over. Bytes on the line
// are 1.1 milliseconds apart: a wait in whole milliseconds would make each of them late.
void wait_for(std::span<pollfd> watched, std::optional<PseudoTerminal::Time> at_most) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(at_most.value_or(0us));
    const timespec time = {seconds.count(), 1000 * (at_most.value_or(0us) - seconds).count()};
    const int result = ppoll(watched.data(), watched.size(), at_most ? &time : nullptr, nullptr);
    if (result < 0 && errno != EINTR) fail("wait");
}

}  // namespace

void stop_on_signals() {
    if (pipe(stop_pipe.data()) != 0) fail("make a pipe");
    for (const int descriptor : stop_pipe) make_private_and_nonblocking(descriptor);
    struct sigaction action {};
    action.sa_handler = ask_to_stop;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, nullptr);
}

void be_punctual() {
    prctl(PR_SET_TIMERSLACK, 1UL);
    const sched_param first{.sched_priority = 1};
    sched_setscheduler(0, SCHED_FIFO, &first);
}

bool stop_requested() { return stop_flag != 0; }

PseudoTerminal::Time PseudoTerminal::now() {
    return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch());
}

PseudoTerminal::PseudoTerminal() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0) fail("open a pseudo-terminal");
    make_private_and_nonblocking(master_);
    const bool usable = grantpt(master_) == 0 && unlockpt(master_) == 0;
    const char* const name = usable ? ptsname(master_) : nullptr;
    if (name == nullptr) {
        const int cause = errno;
        close_if_open(master_);
        errno = cause;
        fail("set up a pseudo-terminal");
    }
    path_ = name;
    start_watch();
    // Before the other end was opened once, the system does not tell that nobody has it open.
    discard_unread();
    make_raw();
    ask_watch();
    told_ = {};
}

PseudoTerminal::~PseudoTerminal() {
    close_if_open(watch_);
    close_if_open(master_);
}

PseudoTerminal::Activity PseudoTerminal::wait(std::optional<Time> until) {
    // A terminal that nobody has open would end every wait at once.
    std::array<pollfd, 3> watched = {
        {{stop_pipe[0], POLLIN, 0}, {watch_, POLLIN, 0}, {open_ ? master_ : -1, POLLIN, 0}}};
    std::optional<Time> at_most;
    if (until) at_most = std::clamp<Time>(*until - now(), 0s, kLongestWait);
    if (!open_ && watch_ < 0)
        at_most = std::min<Time>(at_most.value_or(kLookForOpening), kLookForOpening);
    if (!open_ && is_open()) at_most = 0s;
    wait_for(watched, at_most);
    return look();
}

// The order matters, as the other end may do something between any two steps. The system tells of a
// closing before the terminal counts as closed, and of an opening after it counts as open.
PseudoTerminal::Activity PseudoTerminal::look() {
    auto bytes = read_all();
    const bool was_open = std::exchange(open_, is_open());
    const Seen seen = ask_watch();
    if (!open_) told_ = {};
    Activity activity;
    activity.closed = was_open && (!open_ || seen.reopened);
    activity.opened = open_ && (!was_open || seen.reopened);
    if (activity.closed && !seen.written_since) {
        const auto rest = read_all();
        bytes.insert(bytes.end(), rest.begin(), rest.end());
    }
    if (was_open && !(seen.reopened && seen.written_since)) {
        activity.bytes_before = std::move(bytes);
    } else if (!bytes.empty()) {
        // Bytes at a closed end: it was opened and closed since; the next look finds it closed.
        open_ = true;
        activity.opened = true;
        activity.bytes_after = std::move(bytes);
    }
    if (activity.closed) {
        discard_unread();
        make_raw();
    }
    return activity;
}

std::size_t PseudoTerminal::send(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const auto written = write(master_, bytes.data(), bytes.size());
        if (written > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            break;
        }
    }
    return bytes.size();
}

void PseudoTerminal::hang_up() {
    {
        const OtherEnd other(path_);
        const Time until = now() + kTimeToTakeLastBytes;
        int unread = 0;
        while (ioctl(other.get(), FIONREAD, &unread) == 0 && unread > 0 && now() < until) {
            poll(nullptr, 0, static_cast<int>(kLookForLastBytes.count()));
        }
    }
    close_if_open(watch_);
    close_if_open(master_);
    open_ = false;
}

// Through our own end, so that nobody sees an opening. The last closing of the other end may leave
// settings behind that its next user does not expect of a serial line.
void PseudoTerminal::make_raw() {
    termios settings{};
    if (tcgetattr(master_, &settings) != 0) return;
    settings.c_iflag &= ~static_cast<tcflag_t>(IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR |
                                               ICRNL | IXON | IXOFF);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
    settings.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB);
    settings.c_cflag |= static_cast<tcflag_t>(CS8 | CREAD | CLOCAL);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    tcsetattr(master_, TCSANOW, &settings);
}

// A serial port does not keep for its next user what the last one left unread.
void PseudoTerminal::discard_unread() {
    unwatch_path();
    {
        const OtherEnd other(path_);
        if (other.get() >= 0) tcflush(other.get(), TCIFLUSH);
    }
    watch_path();
}

bool PseudoTerminal::is_open() const {
    pollfd end = {master_, POLLIN, 0};
    return poll(&end, 1, 0) >= 0 && (end.revents & POLLHUP) == 0;
}

Bytes PseudoTerminal::read_all() {
    Bytes bytes;
    std::array<std::uint8_t, 4096> part{};
    for (;;) {
        const auto length = read(master_, part.data(), part.size());
        if (length > 0) {
            bytes.insert(bytes.end(), part.begin(), part.begin() + length);
        } else if (length == 0 || errno != EINTR) {
            return bytes;
        }
    }
}

// The watch tells what a look at the present state misses: that the other end was closed and opened
// again at once.
void PseudoTerminal::start_watch() {
    watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    watch_path();
    { const OtherEnd other(path_); }
    // A watch that does not see this opening sees none.
    std::array<char, sizeof(inotify_event)> event{};
    if (watch_ >= 0 && read(watch_, event.data(), event.size()) <= 0) close_if_open(watch_);
}

void PseudoTerminal::watch_path() {
    if (watch_ < 0) return;
    watch_of_path_ = inotify_add_watch(watch_, path_.c_str(), IN_OPEN | IN_CLOSE | IN_MODIFY);
    if (watch_of_path_ < 0) close_if_open(watch_);
}

void PseudoTerminal::unwatch_path() {
    if (watch_ >= 0) inotify_rm_watch(watch_, watch_of_path_);
}

PseudoTerminal::Seen PseudoTerminal::ask_watch() {
    Seen seen;
    const auto take = [&](std::uint32_t what) {
        if ((what & IN_OPEN) != 0) {
            if (told_.closed) {
                told_ = {.opened = true};
                seen = {.reopened = true};
            } else if (std::exchange(told_.opened, true)) {
                ++told_.others;
            }
        }
        if ((what & IN_MODIFY) != 0) seen.written_since = seen.reopened;
        if ((what & IN_CLOSE) != 0) {
            if (told_.others > 0) {
                --told_.others;
            } else {
                told_.closed = true;
            }
        }
    };
    std::array<char, 64 * sizeof(inotify_event)> events{};
    ssize_t length = 0;
    while (watch_ >= 0 && (length = read(watch_, events.data(), events.size())) > 0) {
        inotify_event event{};
        for (ssize_t at = 0; at < length; at += static_cast<ssize_t>(sizeof event + event.len)) {
            std::memcpy(&event, events.data() + at, sizeof event);
            take(event.mask);
        }
    }
    return seen;
}

}  // namespace memwright::radio
