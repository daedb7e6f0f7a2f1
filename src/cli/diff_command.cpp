// diff

#include "base/charset.h"
#include "base/printable.h"
#include "cli/commands.h"
#include "cli/json.h"
#include "cli/workbench.h"
#include "image/difference.h"

namespace memwright::cli {
namespace {

using Kind = Difference::Kind;

std::string as_text(const std::vector<Difference>& found) {
    std::string text;
    for (const Difference& difference : found) {
        for (const auto& [name, a, b] : difference.fields) {
            const auto shown = [](const std::string& value) {
                return value.empty() ? std::string("(empty)")
                                     : printable_in_line(utf8_from_radio(value));
            };
            text += difference.name + ": " + (name.empty() ? "" : name + " ") + shown(a) + " -> " +
                    shown(b) + "\n";
        }
    }
    return text;
}

std::string place_of(const Difference& difference) {
    switch (difference.kind) {
        case Kind::memory:
            return "row";
        case Kind::limit:
            return "limit";
        case Kind::byte:
            return "offset";
        case Kind::setting:
            break;
    }
    return "setting";
}

std::string as_json(const Difference& difference) {
    json::Members a, b;
    for (const auto& field : difference.fields) {
        a.emplace_back(field.name, json::string(utf8_from_radio(field.a)));
        b.emplace_back(field.name, json::string(utf8_from_radio(field.b)));
    }
    const bool one_value = difference.fields.front().name.empty();
    const std::string place = difference.kind == Kind::setting ? json::string(difference.name)
                                                               : std::to_string(difference.number);
    return json::object({{place_of(difference), place},
                         {"a", one_value ? a.front().second : json::object(a)},
                         {"b", one_value ? b.front().second : json::object(b)}});
}

std::string as_json(const std::vector<Difference>& found) {
    json::Members groups;
    const std::pair<const char*, Kind> kinds[] = {{"memories", Kind::memory},
                                                  {"settings", Kind::setting},
                                                  {"limits", Kind::limit},
                                                  {"bytes", Kind::byte}};
    for (const auto& [name, kind] : kinds) {
        std::vector<std::string> objects;
        for (const Difference& difference : found) {
            if (difference.kind == kind) objects.push_back(as_json(difference));
        }
        groups.emplace_back(name, json::lines(objects));
    }
    return json::object(groups) + "\n";
}

}  // namespace

Status diff(const Arguments& arguments, Session& session) {
    const std::string format = arguments.choice("--format", {"text", "json"});
    if (arguments[0] == kStandardStream && arguments[1] == kStandardStream) {
        throw WrongUsage("A and B cannot both be standard input.");
    }
    Workbench a(session.console, session.files);
    Workbench b(session.console, session.files);
    a.load(arguments[0]);
    b.load(arguments[1]);
    const auto found = differences(a.file_bytes(), b.file_bytes());
    if (format == "json") {
        session.console.print_exactly(as_json(found));
    } else {
        session.console.print(as_text(found));
    }
    return found.empty() ? kDone : kFound;
}

}  // namespace memwright::cli
