#pragma once

// A real pseudo-terminal: a test holds the radio's end, the program opens path() as a serial
// device. Waits are bounded by a deadline; a wait that runs out returns what there is.

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace memwright::fakes {

class PseudoTerminal {
  public:
    using Bytes = std::vector<std::uint8_t>;

    PseudoTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
            throw std::runtime_error("no pseudo-terminal to be had");
        }
        path_ = ptsname(master_);
    }
    ~PseudoTerminal() { hang_up(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& path() const { return path_; }

    // What an adapter does that is pulled out.
    void hang_up() {
        if (master_ >= 0) close(master_);
        master_ = -1;
    }

    // Sends what the line takes at once; returns how many bytes that was.
    std::size_t send(std::span<const std::uint8_t> bytes) {
        const ssize_t sent = write(master_, bytes.data(), bytes.size());
        return sent > 0 ? static_cast<std::size_t>(sent) : 0;
    }

    // The next `count` bytes from the program, fewer if they do not come.
    Bytes receive(std::size_t count,
                  std::chrono::milliseconds at_most = std::chrono::milliseconds(5000)) {
        const auto end = std::chrono::steady_clock::now() + at_most;
        Bytes bytes;
        while (bytes.size() < count && std::chrono::steady_clock::now() < end) {
            pollfd query{master_, POLLIN, 0};
            constexpr int kStep = 10;
            if (poll(&query, 1, kStep) <= 0) continue;
            Bytes part(count - bytes.size());
            const ssize_t got = read(master_, part.data(), part.size());
            if (got > 0) bytes.insert(bytes.end(), part.begin(), part.begin() + got);
        }
        return bytes;
    }

    // True if nothing more has come from the program.
    bool is_silent() {
        pollfd query{master_, POLLIN, 0};
        return poll(&query, 1, 0) == 0;
    }

  private:
    int master_ = -1;
    std::string path_;
};

// A line that takes no bytes of the program's, as long as this lives or until it goes on.
class StoppedLine {
  public:
    explicit StoppedLine(const std::string& path)
        : device_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (device_ < 0 || tcflow(device_, TCOOFF) != 0) {
            throw std::runtime_error("the line " + path + " cannot be stopped");
        }
    }
    ~StoppedLine() {
        go_on();
        close(device_);
    }
    StoppedLine(const StoppedLine&) = delete;
    StoppedLine& operator=(const StoppedLine&) = delete;

    void go_on() const { tcflow(device_, TCOON); }

  private:
    int device_;
};

}  // namespace memwright::fakes
