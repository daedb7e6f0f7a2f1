#pragma once

// The built vr120-sim as a process, and the other end of its pseudo-terminal. Whatever waits here
// waits until a deadline and then fails the test.

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "radio/frames.h"

namespace memwright::radio {

class Vr120Sim {
  public:
    explicit Vr120Sim(const std::vector<std::string>& arguments);
    Vr120Sim(const Vr120Sim&) = delete;
    Vr120Sim& operator=(const Vr120Sim&) = delete;
    ~Vr120Sim();

    // The next line of its output; nothing at the end of it.
    std::optional<std::string> line();
    // The next line of what it says of errors.
    std::optional<std::string> error_line();

    bool says_nothing_for(int milliseconds) const;

    void signal(int number) const;

    // Its exit status once it has ended; -1 if it was killed.
    int exit_status();

    // Seconds of processor time that it has used.
    double processor_time() const;

  private:
    pid_t pid_ = -1;
    int output_ = -1;
    int errors_ = -1;
    std::string output_read_;
    std::string errors_read_;
};

// The computer's end of the line.
class Line {
  public:
    explicit Line(const std::string& path) { open(path); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() { close(); }

    void open(const std::string& path);
    void close();
    int descriptor() const { return descriptor_; }

    void send(const Bytes& bytes) const;

    // So many bytes; fewer if the line drops before.
    Bytes receive(std::size_t count) const;

    // Nothing arrives for as long.
    bool is_silent_for(int milliseconds) const;

    // Until the system reports that the other end has hung up.
    bool hangs_up() const;

    // What an acknowledgement brings: its echo and as many bytes.
    Bytes response(std::size_t bytes) const {
        send({0x03, 0x06, 0x09});
        return receive(3 + bytes);
    }

  private:
    int descriptor_ = -1;
};

}  // namespace memwright::radio
