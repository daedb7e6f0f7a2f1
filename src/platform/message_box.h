#pragma once

// Modal message boxes. Texts are UTF-8; "\n" and "\r\n" are line breaks.

#include <functional>
#include <string>

#include "base/signal.h"

namespace memwright {

enum class Answer { ok, cancel, yes, no };
enum class Buttons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class Icon { none, information, question, exclamation, critical };

struct Message {
    std::string text;
    std::string title;
    Buttons buttons = Buttons::ok;
    Icon icon = Icon::none;
};

class MessageBox {
  public:
    virtual ~MessageBox() = default;

    // Returns when the user has answered. Closing the box is Answer::cancel where it has a Cancel
    // button, Answer::no where it has only Yes and No.
    virtual Answer show(const Message& message) = 0;

    // Opens the box without waiting for the answer, which `answered` is told: what has the thread
    // goes on behind it. Once the Connection has gone, so has the box, and nobody is told. Where no
    // window can stay open, the answer is there when this returns.
    [[nodiscard]] virtual Connection ask(const Message& message,
                                         std::function<void(Answer)> answered) {
        answered(show(message));
        return {};
    }
};

}  // namespace memwright
