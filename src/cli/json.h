#pragma once

// JSON texts. Strings come in UTF-8.

#include <string>
#include <utility>
#include <vector>

namespace memwright::cli::json {

std::string string(const std::string& text);

// Of values that are JSON already.
using Members = std::vector<std::pair<std::string, std::string>>;
std::string object(const Members& members);

// An array whose elements stand on lines of their own, `indent` blanks from the left.
std::string lines(const std::vector<std::string>& elements, int indent = 0);

}  // namespace memwright::cli::json
