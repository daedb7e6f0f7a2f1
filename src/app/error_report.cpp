#include "app/error_report.h"

#include <exception>

#include "base/error.h"

namespace memwright {

void ErrorReport::guard(const std::function<void()>& procedure) {
    try {
        procedure();
    } catch (const Error& error) {
        show(error.what());
    } catch (const std::exception& error) {
        show("An unexpected error stopped this command: " + std::string(error.what()) +
             ".\nYour table is still here. Save it under a new name before you go on.");
    }
}

void ErrorReport::show(const std::string& text) {
    notices_.record({.text = text});
    const Message message{
        .text = text, .title = "Memwright", .buttons = Buttons::ok, .icon = Icon::critical};
    if (in_a_transfer_()) {
        shown_ = messages_.ask(message, [](Answer) {});
    } else {
        messages_.show(message);
    }
}

}  // namespace memwright
