#include "qt/serial/port_handle.h"

#ifndef _WIN32
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#endif

namespace memwright::port_handle {

#ifdef _WIN32

bool is_pseudo_terminal(Handle /*handle*/) { return false; }
bool is_hung_up(Handle /*handle*/) { return false; }
// Every error that QSerialPort reports counts.
bool is_alive(Handle /*handle*/) { return false; }
int waiting(Handle /*handle*/) { return 0; }
void take(Handle /*handle*/, int /*at_most*/, Bytes& /*bytes*/) {}
void discard_input(Handle /*handle*/) {}
void discard_output(Handle /*handle*/) {}
void send(QSerialPort& port) { port.flush(); }
void wait_to_send(QSerialPort& port) { port.waitForBytesWritten(1); }
int unsent(Handle /*handle*/) { return 0; }
bool transmitter_is_empty(Handle /*handle*/) { return true; }
bool set_reception(Handle /*handle*/, int /*threshold*/) { return true; }
std::string refused_setting(Handle /*handle*/, const LineSettings& /*wanted*/) { return {}; }

#else

namespace {

// What of `wanted` holds now; a hang-up (POLLHUP, POLLERR) is always told.
int state_of(Handle handle, short wanted) {
    pollfd query{handle, wanted, 0};
    int result = 0;
    do {
        result = poll(&query, 1, 0);
    } while (result < 0 && errno == EINTR);
    return result > 0 ? query.revents : 0;
}

int queue_length(Handle handle, unsigned long request) {
    int bytes = 0;
    return ioctl(handle, request, &bytes) == 0 ? bytes : 0;
}

#ifdef CMSPAR
constexpr tcflag_t kStick = CMSPAR;
#else
constexpr tcflag_t kStick = 0;
#endif
constexpr tcflag_t kParityMask = PARENB | PARODD | kStick;

tcflag_t parity_bits(QSerialPort::Parity parity) {
    switch (parity) {
        case QSerialPort::EvenParity:
            return PARENB;
        case QSerialPort::OddParity:
            return PARENB | PARODD;
        case QSerialPort::MarkParity:
            return PARENB | PARODD | kStick;
        case QSerialPort::SpaceParity:
            return PARENB | kStick;
        default:
            return 0;
    }
}

}  // namespace

bool is_pseudo_terminal(Handle handle) {
    struct stat node {};
    if (fstat(handle, &node) != 0 || !S_ISCHR(node.st_mode)) return false;
    // The numbers that the kernel keeps for the slave ends: "pts", and the older "ttyp".
    constexpr unsigned kOldSlaves = 3, kFirstSlaves = 136, kLastSlaves = 143;
    const unsigned number = major(node.st_rdev);
    return number == kOldSlaves || (number >= kFirstSlaves && number <= kLastSlaves);
}

bool is_hung_up(Handle handle) { return (state_of(handle, 0) & (POLLHUP | POLLERR)) != 0; }

bool is_alive(Handle handle) {
    const int state = state_of(handle, POLLIN);
    if ((state & (POLLHUP | POLLERR)) != 0) return false;
    return (state & POLLIN) == 0 || waiting(handle) > 0;
}

int waiting(Handle handle) { return queue_length(handle, FIONREAD); }

void take(Handle handle, int at_most, Bytes& bytes) {
    while (at_most > 0) {
        const int length = std::min(waiting(handle), at_most);
        if (length <= 0) return;
        const std::size_t before = bytes.size();
        bytes.resize(before + static_cast<std::size_t>(length));
        const ssize_t got = read(handle, bytes.data() + before, static_cast<std::size_t>(length));
        bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return;
        at_most -= static_cast<int>(got);
    }
}

void discard_input(Handle handle) { tcflush(handle, TCIFLUSH); }

void discard_output(Handle handle) { tcflush(handle, TCOFLUSH); }

void send(QSerialPort& port) {
    // Writing to a full line would be reported as an error.
    if ((state_of(port.handle(), POLLOUT) & POLLOUT) != 0) port.flush();
}

void wait_to_send(QSerialPort& /*port*/) { usleep(1000); }

int unsent(Handle handle) { return queue_length(handle, TIOCOUTQ); }

bool transmitter_is_empty(Handle handle) {
#ifdef TIOCSERGETLSR
    unsigned state = 0;
    return ioctl(handle, TIOCSERGETLSR, &state) != 0 || (state & TIOCSER_TEMT) != 0;
#else
    return true;
#endif
}

bool set_reception(Handle handle, int threshold) {
    constexpr int kMost = 255;
    termios set{};
    if (tcgetattr(handle, &set) != 0) return false;
    set.c_iflag &= ~static_cast<tcflag_t>(INPCK | IGNPAR | PARMRK);
    // A terminal calls itself readable once VMIN bytes wait. At 9600 baud bytes come one at a time
    // 1.1 ms apart, and waking the program for each costs more than everything else together.
    set.c_cc[VMIN] = static_cast<cc_t>(threshold <= 0 ? kMost : std::min(threshold, kMost));
    set.c_cc[VTIME] = 0;
    return tcsetattr(handle, TCSANOW, &set) == 0;
}

std::string refused_setting(Handle handle, const LineSettings& wanted) {
    termios set{};
    if (tcgetattr(handle, &set) != 0) return "line settings";
    const tcflag_t parity = parity_bits(wanted.parity);
    const tcflag_t parity_mask = parity == 0 ? tcflag_t{PARENB} : kParityMask;
    if ((set.c_cflag & parity_mask) != parity) return "parity";
    // There is no flag for one and a half.
    if (wanted.stop_bits == QSerialPort::OneAndHalfStop) return "number of stop bits";
    const bool two_stop_bits = wanted.stop_bits == QSerialPort::TwoStop;
    if (((set.c_cflag & CSTOPB) != 0) != two_stop_bits) return "number of stop bits";
    constexpr tcflag_t kSizes[] = {CS5, CS6, CS7, CS8};
    if ((set.c_cflag & CSIZE) != kSizes[static_cast<int>(wanted.data_bits) - 5]) {
        return "number of data bits";
    }
    return {};
}

#endif

}  // namespace memwright::port_handle
