#include "app/closing.h"

#include <utility>

namespace memwright {

bool Closing::allowed() {
    if (confirmed_) return true;
    if (!control_.running()) {
        bool Cancel = false;
        shell_.Form_Unload(Cancel);
        return !Cancel;
    }
    shell_.store_place();
    const auto question = image_files_.question_about_changes();
    if (!question) return true;
    control_.ask(*question,
                 [this](Answer answer) { guard_([this, answer] { answered(answer); }); });
    return false;
}

// The dialogs of a save that needs a name would hold the transfer up, which is to end anyway.
void Closing::answered(Answer answer) {
    if (answer == Answer::yes && image_files_.needs_a_name()) {
        save_when_ended_ = true;
        control_.abandon();
    } else {
        close_after(answer);
    }
}

void Closing::transfer_begins() { save_when_ended_ = false; }

void Closing::transfer_ended() {
    if (std::exchange(save_when_ended_, false)) close_after(Answer::yes);
}

void Closing::close_after(Answer answer) {
    if (!shell_.may_close_after(answer)) return;
    confirmed_ = true;
    window_.close();
    confirmed_ = false;
}

}  // namespace memwright
