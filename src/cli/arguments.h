#pragma once

// The arguments of a command: those by position, and options that may stand anywhere among them.
// What does not fit is a WrongUsage, whose text says what to give instead.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/argument_reader.h"
#include "base/error.h"

namespace memwright::cli {

class WrongUsage : public Error {
  public:
    using Error::Error;
};

struct Option {
    const char* name;  // "--format"
    bool takes_value;
};

struct Syntax {
    std::vector<Option> options;
    std::size_t least = 0;  // arguments by position
    std::size_t most = 0;
};

class Arguments {
  public:
    // "--" ends the options; "-" is an argument like any other.
    Arguments(const std::vector<std::string>& given, const Syntax& syntax);

    const std::string& operator[](std::size_t index) const { return positional_[index]; }
    std::size_t size() const { return positional_.size(); }
    std::vector<std::string> from(std::size_t index) const;

    bool has(const std::string& option) const { return values_.contains(option); }
    std::optional<std::string> value(const std::string& option) const;

    // An option's value, which has to be one of these; the first if it is not given.
    std::string choice(const std::string& option, const std::vector<std::string>& choices) const;

  private:
    void take(const Option& option, ArgumentReader& reader);

    std::vector<std::string> positional_;
    std::map<std::string, std::string> values_;
};

}  // namespace memwright::cli
