#include "app/closing.h"

#include <utility>

namespace memwright {

Closing::Closing(Work work, FormWindow& window, Events& events)
    : work_(work), window_(window), events_(events) {
    connections_ = {work_.commands.transfer_begins.connect([this] { save_when_ended_ = false; }),
                    work_.commands.transfer_ended.connect([this] { transfer_ended(); })};
}

bool Closing::allowed() {
    if (confirmed_) return true;
    if (!work_.control.running()) {
        bool Cancel = false;
        work_.shell.Form_Unload(Cancel);
        return !Cancel;
    }
    work_.shell.store_place();
    const auto question = work_.image_files.question_about_changes();
    if (!question) return true;
    work_.control.ask(*question, [this](Answer answer) {
        events_.run("Close", [this, answer] { answered(answer); });
    });
    return false;
}

// The dialogs of a save that needs a name would hold the transfer up, which is to end anyway.
void Closing::answered(Answer answer) {
    if (answer == Answer::yes && work_.image_files.needs_a_name()) {
        save_when_ended_ = true;
        work_.control.abandon();
    } else {
        close_after(answer);
    }
}

void Closing::transfer_ended() {
    if (std::exchange(save_when_ended_, false)) close_after(Answer::yes);
}

void Closing::close_after(Answer answer) {
    if (!work_.shell.may_close_after(answer)) return;
    confirmed_ = true;
    window_.close();
    confirmed_ = false;
}

}  // namespace memwright
