#pragma once

// The steps that the user can take back and do again. A step is what one command changed, or what
// was done in one go: the typing in one opened editor, the moves of one block of rows. What was
// there when the history began comes back, to the byte, when all steps are taken back.

#include <cstddef>
#include <deque>

#include "table/edit_recorder.h"

namespace memwright {

class EditHistory {
  public:
    // The oldest steps beyond are forgotten.
    static constexpr std::size_t kMostSteps = 2000;

    // The steps are made of this recorder's edits that commands made.
    explicit EditHistory(EditRecorder& recorder);

    // The history begins anew: here or, while a command runs, with what that leaves behind.
    void begin();

    // The step that would be taken back or done again; null if there is none.
    const Edit* next_to_undo() const;
    const Edit* next_to_redo() const;
    void undo();
    void redo();

    // Typing goes on with the last step until then.
    void close_step();
    bool is_typing() const { return typing_; }

    // All steps, and how many of them are done: the others were taken back.
    const std::deque<Edit>& steps() const { return steps_; }
    std::size_t done() const { return done_; }

    // Goes on with the history of an earlier run, in the middle of a command or not. `done` is at
    // most the number of steps.
    void resume(std::deque<Edit> steps, std::size_t done);

    Signal<> changed;

  private:
    void add(const Edit& edit);
    void add_step(const Edit& edit);
    void add_encoding(const Edit& edit);
    bool goes_on(const Edit& edit) const;
    void apply(const Edit& edit);

    EditRecorder& recorder_;
    std::deque<Edit> steps_;
    std::size_t done_ = 0;
    Edit before_first_;  // what was encoded when no step was done; part of the next first one
    bool typing_ = false;
    bool applying_ = false;
    std::size_t ignored_scope_ = 0;  // the one in which the history began; 0 for none
    std::vector<Connection> connections_;
};

}  // namespace memwright
