#pragma once

// The whole program with a port of the caller's choice, files in memory, and a user who answers
// every question: for transfers by the thousand. What is wrong is returned in words, so that
// transfers may run side by side.

#include <functional>
#include <string>
#include <vector>

#include "app/idle_platform.h"
#include "app/program.h"
#include "app/transfers/transfer_model.h"
#include "fakes/fake_cell_places.h"
#include "fakes/fake_window.h"
#include "fakes/held_locks.h"
#include "fakes/memory_files.h"
#include "fakes/memory_settings.h"
#include "fakes/paper.h"

namespace memwright::transfer_tests {

// Says No to saving, Yes to stopping, and OK to everything else.
class AnsweringUser final : public MessageBox {
  public:
    std::vector<std::string> reports;
    // While a report is shown.
    std::function<void()> reading;

    Answer show(const Message& message) override {
        if (message.icon == Icon::critical) {
            reports.push_back(message.text);
            if (reading) reading();
        }
        if (message.buttons == Buttons::yes_no) return Answer::yes;
        return message.buttons == Buttons::yes_no_cancel ? Answer::no : Answer::ok;
    }
};

class NoFileDialogs final : public FileDialogs {
  public:
    std::optional<std::string> open(const FileRequest& /*request*/) override { return {}; }
    std::optional<std::string> save(const FileRequest& /*request*/) override { return {}; }
};

class TransferBench {
  public:
    TransferBench(MSComm& port, Clock& clock, EventLoop& loop);
    TransferBench(const TransferBench&) = delete;
    TransferBench& operator=(const TransferBench&) = delete;

    // Opens the file that all transfers begin with.
    void open_file();

    // What the program holds then, as it writes it to a file.
    const MemoryImage& owned() const { return owned_; }

    // Runs Read or Write. What is wrong with its end, "" if it is as expected.
    std::string transfer(const Plan& plan, const Expected& expected);

    // What is wrong with table, image and caption as the opened file made them. A write that sends
    // the right bytes tells the same of table and image.
    std::string check_what_is_kept();

    bool running() const { return running_; }
    End ended() const { return ended_; }
    // What was reported last, "" if nothing was.
    std::string report() const { return user_.reports.empty() ? "" : user_.reports.back(); }
    void while_a_report_is_shown(std::function<void()> action) {
        user_.reading = std::move(action);
    }

    // The user presses Esc.
    void escape() { program_.escape_pressed(); }

    const std::string& status() const { return program_.form.Label1.caption; }

  private:
    struct Kept {
        std::vector<std::string> cells;
        std::string caption;
        friend bool operator==(const Kept&, const Kept&) = default;
    };
    Kept kept() const;
    std::vector<std::string> enabled_names();
    std::string check_end(const Plan& plan, const Outcome& outcome);
    std::string check_archive(const Outcome& outcome);
    std::string check_doubts(const Outcome& outcome);

    MSComm& port_;
    fakes::MemoryFiles files_;
    fakes::MemorySettings settings_;
    AnsweringUser user_;
    NoFileDialogs dialogs_;
    fakes::FakeWindow window_;
    fakes::WorkedDialogs views_;
    fakes::ListedDevices devices_;
    ComPorts ports_{devices_, settings_, {}};
    fakes::FakeCellPlaces cells_;
    fakes::Paper paper_;
    fakes::HeldLocks locks_;
    Program program_;

    MemoryImage owned_;
    Kept kept_;
    std::vector<std::string> enabled_;
    bool running_ = false;
    bool table_changed_ = false;
    End ended_ = End::complete;
    std::vector<Connection> connections_;
};

// The bytes of a whole write.
std::vector<std::uint8_t> bytes_of_write(const MemoryImage& image);

}  // namespace memwright::transfer_tests
