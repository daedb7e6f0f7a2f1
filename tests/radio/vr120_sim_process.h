#pragma once

// The built vr120-sim as a process, and the other end of its pseudo-terminal. Whatever waits here
// waits until a deadline and then fails the test.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "radio/frames.h"
#include "support/process.h"
#include "support/temporary_folder.h"

namespace memwright::radio {

class Vr120Sim {
  public:
    explicit Vr120Sim(const std::vector<std::string>& arguments);
    Vr120Sim(const Vr120Sim&) = delete;
    Vr120Sim& operator=(const Vr120Sim&) = delete;
    ~Vr120Sim();

    // The next line of its output; nothing at the end of it.
    std::optional<std::string> line() { return next_line(output_); }
    // The next line of what it says of errors.
    std::optional<std::string> error_line() { return next_line(errors_); }

    bool says_nothing_for(int milliseconds);

    void signal(int number) { process_.signal(number); }

    // Its exit status once it has ended; -1 if it was killed.
    int exit_status();

    // Seconds of processor time that it has used.
    double processor_time() const;

  private:
    struct Stream {
        std::string file;
        std::size_t read = 0;
    };

    std::optional<std::string> next_line(Stream& stream);

    TemporaryFolder folder_;
    Stream output_{folder_.file("output")};
    Stream errors_{folder_.file("errors")};
    systest::Process process_;
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
