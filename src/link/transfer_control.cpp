#include "link/transfer_control.h"

#include <utility>

namespace memwright {

void TransferControl::run(Kind kind, const std::function<void()>& exchange) {
    kind_ = kind;
    state_ = State::running;
    cancelled_ = abandoned_ = false;
    try {
        exchange();
    } catch (const TransferCancelled&) {
        port_.PortOpen(false);
        hide();
        window_.unlock_gui();
        throw;
    } catch (...) {
        port_.PortOpen(false);
        hide();
        state_ = State::failed;
        controls_.button.caption = "Unlock";
        controls_.button.visible = true;
        throw;
    }
    hide();
}

void TransferControl::show() {
    controls_.progress.percent = 0;
    controls_.progress.busy = true;
    controls_.progress.visible = true;
    controls_.button.caption = "Cancel";
    controls_.button.visible = true;
}

void TransferControl::show_progress(int percent) {
    controls_.progress.busy = false;
    controls_.progress.percent = percent;
}

void TransferControl::show_received(int bytes) {
    controls_.received.caption = bytes == 0   ? "Nothing received yet"
                                 : bytes == 1 ? "1 byte received"
                                              : std::to_string(bytes) + " bytes received";
    controls_.received.visible = true;
}

void TransferControl::check() const {
    if (cancelled_) throw TransferCancelled{};
}

void TransferControl::button_click() {
    if (state_ == State::failed) {
        hide();
        window_.unlock_gui();
        return;
    }
    if (state_ != State::running) return;
    if (kind_ == Kind::read) {
        end_now();
        return;
    }
    ask({.text = "The radio holds only a part of the new memories so far.\r\n"
                 "If you stop now, write to it again before you use it.\r\n\r\n"
                 "Stop writing to the VR-120?",
         .title = "Write To VR-120",
         .buttons = Buttons::yes_no,
         .icon = Icon::exclamation},
        [this](Answer answer) {
            if (answer == Answer::yes) end_now();
        });
}

void TransferControl::ask(const Message& question, std::function<void(Answer)> answered) {
    if (question_) return;
    question_ = messages_.ask(question, [this, told = std::move(answered)](Answer answer) {
        const auto tell = told;  // outlives the question
        question_.reset();
        tell(answer);
    });
}

void TransferControl::end_now() {
    if (state_ == State::running) cancelled_ = true;
}

void TransferControl::abandon() {
    end_now();
    abandoned_ = cancelled_;
}

void TransferControl::hide() {
    state_ = State::idle;
    question_.reset();
    controls_.progress.visible = false;
    controls_.received.visible = false;
    controls_.button.visible = false;
}

}  // namespace memwright
