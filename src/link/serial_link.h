#pragma once

// What clone read and clone write share: the port and its fixed settings, the waits, and the status
// line and window. A transfer runs on the user-interface thread; its waits hand control to the
// event loop and end with TransferCancelled when the user cancels.

#include <functional>
#include <span>
#include <string>

#include "base/bytes.h"
#include "controls/controls.h"
#include "link/output_watch.h"
#include "link/transfer_control.h"
#include "platform/ms_comm.h"
#include "platform/settings_store.h"
#include "platform/time.h"

namespace memwright {

class SerialLink {
  public:
    struct Status {
        Label& Label1;
        TextBox& Text1;
    };

    SerialLink(MSComm& MSComm1, SettingsStore& settings, Clock& clock, EventLoop& loop,
               Status status, TransferControl& control)
        : MSComm1_(MSComm1),
          settings_(settings),
          clock_(clock),
          loop_(loop),
          status_(status),
          control_(control),
          output_(MSComm1, clock) {}

    // Sets the port up without opening it.
    void InitPort();

    // Waits `sec` seconds by the time of day.
    void pause(double sec);

    // Waits until `enough` is true of the number of bytes received and not yet taken; there is no
    // limit of time. `look` sees each number on the way.
    void wait_for_bytes(const std::function<bool(int)>& enough,
                        const std::function<void(int)>& look = {});

    // Sends bytes at once. PortError if those before them have not left for two seconds.
    void send(std::span<const std::uint8_t> bytes);

    // Waits until all bytes have left. PortError if they do not.
    void finish_sending();

    Bytes take() { return MSComm1_.Input(); }
    void open();
    void close() { MSComm1_.PortOpen(false); }

    void set_status(const std::string& text) { status_.Label1.caption = text; }
    void clear_status();

    TransferControl& control() { return control_; }

  private:
    MSComm& MSComm1_;
    SettingsStore& settings_;
    Clock& clock_;
    EventLoop& loop_;
    Status status_;
    TransferControl& control_;
    OutputWatch output_;
};

// The number of the port that transfers use.
int transfer_port(SettingsStore& settings);

}  // namespace memwright
