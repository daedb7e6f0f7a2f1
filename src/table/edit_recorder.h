#pragma once

// The one place where a change of the channel table or of the memory image is known. Procedures
// change grid and image as they like; what they changed within an EditScope is one Edit, named
// after the scope's command. A change outside of any scope is an edit of its own without a name.

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "image/image_codec.h"
#include "table/edit.h"
#include "table/ms_flex_grid.h"

namespace memwright {

class EditRecorder {
  public:
    EditRecorder(MSFlexGrid& grid, ImageCodec& image);

    // A cell or a byte was changed. The edit that it is part of may still be under way.
    Signal<> changed;

    // Each edit that is not empty, when its scope ends. Slots must not throw.
    Signal<const Edit&> edited;

    // A scope has ended, whether or not it changed something.
    Signal<> scope_ended;
    std::size_t open_scopes() const { return commands_.size(); }

    // What has been changed since the last edit ended.
    Edit so_far() const;

    // Ends the edit that is under way. What the same command goes on to change is another one.
    void finish_edit();

    // Does the edit, or, if it is an inverse, takes one back: what it says is there after it comes
    // into grid and image, which have to be as it says that they were before.
    void apply(const Edit& edit);

    const MSFlexGrid& grid() const { return grid_; }
    const ImageCodec& image() const { return image_; }

  private:
    friend class EditScope;

    struct Command {
        std::string name;
        bool waits;
    };

    bool joins_another() const { return !commands_.empty() && !commands_.back().waits; }
    void begin(std::string command, bool waits);
    void end();
    void note_cell(int row, int col);
    void note_bytes(int loffset, std::span<const std::uint8_t> before);
    void content_changed();
    void something_changed();

    MSFlexGrid& grid_;
    ImageCodec& image_;
    std::vector<Command> commands_;  // whose scopes are open, the innermost last

    // What was there before the edit that is under way.
    std::map<std::pair<int, int>, GridCell> cells_;
    std::map<std::uint16_t, std::uint8_t> bytes_;
    Edit::Selection selected_;

    std::vector<Connection> connections_;
};

// The time that a command takes. A scope within another one is part of its edit, unless that one
// waits in the event loop, as a transfer does, where the user goes on with other commands: the edit
// of the outer scope ends then where the inner one begins, and another one begins after it.
class EditScope {
  public:
    enum class Kind { at_once, waits };

    EditScope(EditRecorder& recorder, std::string command, Kind kind = Kind::at_once);
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;
    ~EditScope();

  private:
    EditRecorder& recorder_;
    bool joined_;
};

}  // namespace memwright
