#pragma once

// Standard output and standard error. What a command answers goes to the first, in UTF-8; what it
// has to say goes to the second.

#include <string>

namespace memwright::cli {

class Console {
  public:
    Console();

    // FileError if standard output takes no more.
    void print(const std::string& text);
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
