#pragma once

// Clone read and clone write, and all that they work on, with a simulated radio at the other end of
// the cable and everything in virtual time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/error.h"
#include "fakes/memory_files.h"
#include "fakes/memory_settings.h"
#include "fakes/scripted_dialogs.h"
#include "fakes/simulated_port.h"
#include "fakes/virtual_time.h"
#include "link/clone_read.h"
#include "link/clone_write.h"
#include "link/serial_link.h"
#include "link/transfer_control.h"
#include "radio/simulated_radio.h"

namespace memwright::link_tests {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;
using Time = fakes::VirtualTime::Time;

// Bytes 0 to `highest`, the same for a seed in every run.
MemoryImage random_image(unsigned seed, unsigned highest = 255);

// Plausible channels that come through the channel table unchanged.
MemoryImage image_of_user();

std::string hexadecimal(const Bytes& bytes);

// The radio that a read, or a write, wants at the other end.
radio::Options sending(std::vector<radio::Fault> faults = {});
radio::Options receiving(std::vector<radio::Fault> faults = {});

class CloneBench {
  public:
    explicit CloneBench(radio::Options options, const MemoryImage& radio_memory = {});
    CloneBench(const CloneBench&) = delete;
    CloneBench& operator=(const CloneBench&) = delete;

    // Opens a file that holds `image`, as the user does before a transfer.
    void open_file(const MemoryImage& image);

    // Runs the command. The text of the error that it ends with; "" for none.
    std::string click_read() {
        return run({Answer::ok}, [this] { read.mnuRead_Click(); });
    }
    std::string click_write() {
        return run({Answer::ok}, [this] { write.mnuWrite_Click(); });
    }
    std::string run(std::vector<Answer> answers, const std::function<void()>& command);

    // Presses the button beside the status line.
    void press_after(Time delay) {
        time.after(delay, [this] { control.button_click(); });
    }

    // Lets what is on its way to the radio arrive.
    void settle() { time.run_for(1s); }

    // All that a transfer which comes to nothing has to leave alone.
    struct Kept {
        MemoryImage image;
        std::vector<std::string> cells;
        std::vector<Colour> colours;
        std::string path;
        std::string caption;
        std::int32_t change_check;
        friend bool operator==(const Kept&, const Kept&) = default;
    };
    Kept kept() const;

    // The window is locked or not, and the transfer's own controls are as given.
    void expect_idle() const;
    void expect_offers_unlock() const;

    fakes::VirtualTime time;
    radio::SimulatedRadio radio;
    fakes::SimulatedPort port{time, radio};
    fakes::MemorySettings settings;
    fakes::ScriptedMessageBox messages;
    fakes::ScriptedFileDialogs dialogs;
    fakes::MemoryFiles files;

    modVR120 store{files};
    MSFlexGrid grid{"MSFlexGrid1"};
    MenuEntry mnuSaveOnly{"mnuSaveOnly", "&Save"};
    Label Label1{"Label1"};
    TextBox Text1{"Text1"};
    ProgressBar progress{"TransferProgress"};
    Label received{"ReceivedLabel"};
    CommandButton button{"TransferButton"};
    FormCaption caption{.title = "Memwright", .caption = Property<std::string>("Memwright")};

    // What happened, in order: calls of the window's lock, properties of the port, texts of the
    // status line and window, message boxes.
    std::vector<std::string> journal;
    std::vector<std::string> lock_calls;

  private:
    class Window final : public UserInterface {
      public:
        explicit Window(CloneBench& bench) : bench_(bench) {}
        void DisableGui() override { bench_.note_lock("DisableGui"); }
        void EnableGui() override {
            bench_.note_lock("EnableGui");
            bench_.mnuSaveOnly.enabled = true;
        }
        void unlock_gui() override { bench_.note_lock("unlock_gui"); }

      private:
        CloneBench& bench_;
    };

    void note_lock(const std::string& call);

    Window window_{*this};

  public:
    ChannelTable table{store, grid, mnuSaveOnly};
    ImageFiles image_files{store, table, grid, window_, caption, {messages, dialogs, files}};
    TransferControl control{{progress, received, button}, port, window_, messages};
    SerialLink link{port, settings, time, time, {Label1, Text1}, control};
    CloneRead read{link, store, table, image_files, window_, messages};
    CloneWrite write{link, store, table, window_, messages};

  private:
    std::vector<Connection> connections_;
};

}  // namespace memwright::link_tests
