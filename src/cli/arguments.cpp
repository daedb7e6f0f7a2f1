#include "cli/arguments.h"

#include <algorithm>

namespace memwright::cli {
namespace {

const Option& known(const std::string& name, const Syntax& syntax) {
    const auto option = std::ranges::find_if(
        syntax.options, [&](const Option& candidate) { return candidate.name == name; });
    if (option == syntax.options.end()) throw WrongUsage("There is no option " + name + ".");
    return *option;
}

}  // namespace

Arguments::Arguments(const std::vector<std::string>& given, const Syntax& syntax) {
    bool options_ended = false;
    for (auto argument = given.begin(); argument != given.end(); ++argument) {
        if (options_ended || argument->size() < 2 || argument->front() != '-') {
            positional_.push_back(*argument);
            continue;
        }
        if (*argument == "--") {
            options_ended = true;
            continue;
        }
        const auto equals = argument->find('=');
        const std::string name = argument->substr(0, equals);
        const Option& option = known(name, syntax);
        if (values_.contains(name)) throw WrongUsage(name + " is given twice.");
        if (!option.takes_value) {
            if (equals != std::string::npos) throw WrongUsage(name + " takes no value.");
            values_[name];
        } else if (equals != std::string::npos) {
            values_[name] = argument->substr(equals + 1);
        } else {
            if (++argument == given.end()) throw WrongUsage(name + " needs a value.");
            values_[name] = *argument;
        }
        if (option.takes_value && values_[name].empty()) throw WrongUsage(name + " needs a value.");
    }
    if (positional_.size() < syntax.least) throw WrongUsage("An argument is missing.");
    if (positional_.size() > syntax.most) {
        throw WrongUsage("\"" + positional_[syntax.most] + "\" is one argument too many.");
    }
    if (std::ranges::any_of(positional_, &std::string::empty)) {
        throw WrongUsage("An argument is empty.");
    }
}

std::vector<std::string> Arguments::from(std::size_t index) const {
    return {positional_.begin() + static_cast<std::ptrdiff_t>(index), positional_.end()};
}

std::optional<std::string> Arguments::value(const std::string& option) const {
    const auto found = values_.find(option);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

std::string Arguments::choice(const std::string& option,
                              const std::vector<std::string>& choices) const {
    const std::string wanted = value(option).value_or(choices.front());
    if (std::ranges::find(choices, wanted) != choices.end()) return wanted;
    throw WrongUsage(option + " is " + enumeration(choices) + ", not \"" + wanted + "\".");
}

std::string enumeration(const std::vector<std::string>& choices) {
    std::string text = choices.front();
    for (std::size_t i = 1; i < choices.size(); ++i) {
        text += (i + 1 == choices.size() ? " or " : ", ") + choices[i];
    }
    return text;
}

}  // namespace memwright::cli
