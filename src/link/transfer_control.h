#pragma once

// The user's hand on a transfer: the progress bar beside the status line, the count of bytes that
// arrived while the program listens, and the button that cancels a running transfer or unlocks the
// window after a failed one. Nothing here changes what is exchanged.

#include <functional>

#include "controls/controls.h"
#include "files/user_interface.h"
#include "platform/message_box.h"
#include "platform/ms_comm.h"

namespace memwright {

// Thrown by waits to end a transfer that the user cancelled.
class TransferCancelled {};

class TransferControl {
  public:
    enum class Kind { read, write };

    struct Controls {
        ProgressBar& progress;
        Label& received;
        CommandButton& button;
    };

    TransferControl(Controls controls, MSComm& port, UserInterface& window, MessageBox& messages)
        : controls_(controls), port_(port), window_(window), messages_(messages) {}

    // Runs a transfer that locks the window itself. If it is cancelled, the port is closed, the
    // window unlocked and TransferCancelled thrown on; if it fails, the port is closed, the button
    // offers to unlock the window, and the error is thrown on.
    void run(Kind kind, const std::function<void()>& exchange);

    // From here on the user sees the transfer and can cancel it.
    void show();
    void show_progress(int percent);
    void show_received(int bytes);
    void hide_received() { controls_.received.visible = false; }

    // Throws TransferCancelled if the user wants the transfer to end.
    void check() const;

    // The button: cancel, or unlock. Cancelling a write is asked about first.
    void button_click();

    // Asks something in the middle of a transfer, which goes on behind the question. When it ends
    // first, the question goes away, and nobody is told. One question at a time: others are not
    // asked.
    void ask(const Message& question, std::function<void(Answer)> answered);

    // Ends a running transfer without a question.
    void end_now();

    // The same when the program ends: what such a transfer has received already is of no use any
    // more.
    void abandon();
    bool abandoned() const { return abandoned_; }

    bool running() const { return state_ == State::running; }

  private:
    enum class State { idle, running, failed };

    void hide();

    Controls controls_;
    MSComm& port_;
    UserInterface& window_;
    MessageBox& messages_;
    State state_ = State::idle;
    Kind kind_ = Kind::read;
    bool cancelled_ = false;
    bool abandoned_ = false;
    Connection question_;
};

}  // namespace memwright
