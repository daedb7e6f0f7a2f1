#include "cli/arguments.h"

#include <algorithm>

#include "base/enumeration.h"

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
    ArgumentReader reader(given);
    while (reader.next()) {
        if (reader.is_option()) {
            take(known(reader.name(), syntax), reader);
        } else if (!reader.ends_options()) {
            positional_.push_back(reader.text());
        }
    }
    if (positional_.size() < syntax.least) throw WrongUsage("An argument is missing.");
    if (positional_.size() > syntax.most) {
        throw WrongUsage("\"" + positional_[syntax.most] + "\" is one argument too many.");
    }
    if (std::ranges::any_of(positional_, &std::string::empty)) {
        throw WrongUsage("An argument is empty.");
    }
}

void Arguments::take(const Option& option, ArgumentReader& reader) {
    const std::string& name = reader.name();
    if (values_.contains(name)) throw WrongUsage(name + " is given twice.");
    if (!option.takes_value) {
        if (reader.has_own_value()) throw WrongUsage(name + " takes no value.");
        values_[name];
        return;
    }
    const std::string value = reader.take_value().value_or("");
    if (value.empty()) throw WrongUsage(name + " needs a value.");
    values_[name] = value;
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
    throw WrongUsage(option + " is " + enumeration(choices, "or") + ", not \"" + wanted + "\".");
}

}  // namespace memwright::cli
