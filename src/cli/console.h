#pragma once

// Standard output and standard error. What a command answers goes to the first, in UTF-8; what it
// has to say goes to the second. What people read has nothing in it that a terminal takes for a
// command (base/printable.h).

#include <string>

namespace memwright::cli {

class Console {
  public:
    Console();

    // An answer for people. FileError if standard output takes no more.
    void print(const std::string& text);

    // An answer of which every byte counts: for programs and files. At a terminal it is for people.
    void print_exactly(const std::string& bytes);
    void flush();

    // A message of its own lines.
    void say(const std::string& text);

    // How far something has come, in place of what it said last; nothing where nobody looks.
    void show_progress(int percent);
    void end_progress();

    // Waits for Enter. False if the user wants to stop, or there is nobody.
    bool wait_for_enter(bool (*wants_to_stop)());

  private:
    int shown_percent_ = -1;
};

bool has_terminal();  // to type at

}  // namespace memwright::cli
