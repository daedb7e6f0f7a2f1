#pragma once

// What the additions have to say: notices. Each waits for the user, in the order in which they
// came, until it is dismissed or no longer holds; nothing waits for the user's answer. All of this
// run stay in a list. Texts are UTF-8.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/signal.h"
#include "platform/time.h"

namespace memwright {

struct Notice {
    std::string text;     // may have line breaks, which are spaces where there is one line for it
    std::string about{};  // for the program alone: a later notice about the same replaces this one
    std::string details{};  // further lines, for the list; may be many
    std::string action{};  // what can be done about it, a caption with its mnemonic; "" for nothing
    std::function<void()> act{};
};

// A text without its line breaks.
std::string one_line(const std::string& text);

class Notices {
  public:
    // A notice of this run.
    struct Entry {
        Notice notice;
        std::string when;      // date and time as the user's desktop writes them
        bool waiting = false;  // for the user
        bool holds = false;    // neither withdrawn nor replaced: its action can be taken
    };

    explicit Notices(Clock& clock) : clock_(clock) {}

    // A notice comes. One that is waiting already counts once, and has the new one's action from
    // now on; one about the same that says something else is replaced.
    void add(Notice notice);

    // Puts into the list what the user has already seen.
    void record(Notice notice);

    // What was said about this no longer holds: it waits no longer.
    void withdraw(const std::string& about);

    // How many wait for the user, and the first of them, by its number in the list.
    std::size_t waiting() const;
    std::optional<std::size_t> current() const;

    // The user has seen the current one. Nothing if there is none.
    void dismiss();

    // Does what can be done about a notice of the list, as long as it holds. It waits as before:
    // whoever gave the notice withdraws it if there is nothing more to be done.
    bool can_act(std::size_t number) const;
    void act(std::size_t number);

    // In the order in which they came.
    const std::vector<Entry>& of_this_run() const { return entries_; }

    // Tells a screen reader what others see by themselves.
    void say(const std::string& text) { said(text); }

    Signal<const Notice&> came;  // to be told to the user
    Signal<const std::string&> said;
    Signal<> changed;  // what waits, or the list

  private:
    void end_of(const std::string& about);

    Clock& clock_;
    std::vector<Entry> entries_;
};

}  // namespace memwright
