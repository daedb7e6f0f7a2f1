#pragma once

// The arguments of a program, one after the other. What begins with "-" is an option, which may
// have its value behind "="; "-" alone is none, and neither is anything behind "--". Which options
// there are, and how wrong ones are told, is the programs' own.

#include <optional>
#include <span>
#include <string>

namespace memwright {

class ArgumentReader {
  public:
    explicit ArgumentReader(std::span<const std::string> arguments) : rest_(arguments) {}

    // Goes to the next argument, at first to the first. False if there is none.
    bool next();

    const std::string& text() const { return text_; }  // as it was given
    bool is_option() const;
    bool ends_options() const { return ends_options_; }  // it is the first "--"

    // What stands before "=", and what behind it and has not been taken.
    const std::string& name() const { return name_; }
    bool has_own_value() const { return own_value_.has_value(); }

    // The argument behind this one, null if there is none.
    const std::string* following() const { return rest_.empty() ? nullptr : &rest_.front(); }

    // The option's own value, or else the argument that follows, whatever it looks like. None if
    // there is neither.
    std::optional<std::string> take_value();

  private:
    std::span<const std::string> rest_;
    std::string text_;
    std::string name_;
    std::optional<std::string> own_value_;
    bool ends_options_ = false;
    bool options_ended_ = false;
};

}  // namespace memwright
