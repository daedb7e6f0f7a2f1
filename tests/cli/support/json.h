#pragma once

// Reads JSON texts (RFC 8259), and nothing but them: no comments, no commas too many, no names
// twice in an object, no bytes that are not UTF-8.
// Errors: std::runtime_error with the place.

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace memwright::cli_tests {

struct Json;

struct JsonMember;
using JsonArray = std::vector<Json>;
using JsonObject = std::vector<JsonMember>;  // in their order

struct Json {
    std::variant<std::nullptr_t, bool, double, std::string, JsonArray, JsonObject> value;

    // What it has to be; anything else throws.
    const std::string& text() const { return std::get<std::string>(value); }
    double number() const { return std::get<double>(value); }
    const JsonArray& array() const { return std::get<JsonArray>(value); }
    const JsonObject& object() const { return std::get<JsonObject>(value); }
    const Json& operator[](const std::string& name) const;

    // The names of an object's members.
    std::vector<std::string> names() const;

    friend bool operator==(const Json&, const Json&) = default;
};

struct JsonMember {
    std::string name;
    Json value;
    friend bool operator==(const JsonMember&, const JsonMember&) = default;
};

// The one value of a text.
Json read_json(const std::string& text);

}  // namespace memwright::cli_tests
