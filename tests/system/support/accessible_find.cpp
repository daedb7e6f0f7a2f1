#include <algorithm>
#include <sstream>

#include "system/support/accessible.h"
#include "system/support/application.h"

namespace memwright::systest {
namespace {

bool holds_thousands(Role role) {
    return role == Role::kTable || role == Role::kList || role == Role::kTree ||
           role == Role::kTreeTable;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Query& query) {
    out << "an element";
    if (query.showing) out << " on the screen";
    if (query.role) out << " of " << *query.role;
    if (query.name) out << " called '" << *query.name << "'";
    if (query.name_part) out << " with '" << *query.name_part << "' in its name";
    if (query.description) out << " described as '" << *query.description << "'";
    return out;
}

bool Accessible::matches(const Query& query) const {
    return (!query.role || role() == *query.role) && (!query.name || name() == *query.name) &&
           (!query.name_part || name().find(*query.name_part) != std::string::npos) &&
           (!query.description || description() == *query.description) &&
           (!query.showing || showing());
}

std::optional<Accessible> Accessible::find_now(const Query& query) const {
    for (const Accessible& child : children()) {
        try {
            if (child.matches(query)) return child;
            if (holds_thousands(child.role())) continue;
            if (auto found = child.find_now(query)) return found;
        } catch (const NotThere&) {
            // Gone since its parent named it. Its siblings are still worth asking.
            continue;
        }
    }
    return std::nullopt;
}

Accessible Accessible::find(const Query& query, Milliseconds patience) const {
    std::optional<Accessible> found;
    const auto look = [&] {
        application_->require_running();
        found = find_now(query);
        return found.has_value();
    };
    if (wait_until(look, patience)) return *found;
    std::ostringstream text;
    text << "There is not " << query << ". The program's tree is:\n" << application_->tree();
    throw NotThere(text.str());
}

Accessible Accessible::button(std::string_view name) const {
    return find({.role = Role::kPushButton, .name = std::string(name), .showing = true});
}

Accessible Accessible::menu_item(std::string_view name) const {
    return find({.role = Role::kMenuItem, .name = std::string(name)});
}

Accessible Accessible::described(std::string_view description) const {
    return find({.description = std::string(description)});
}

void Accessible::wait_for(State state, bool on, Milliseconds patience) const {
    const auto holds = [&] {
        application_->require_running();
        return is(state) == on;
    };
    if (wait_until(holds, patience)) return;
    throw NotThere("State " + std::to_string(static_cast<unsigned>(state)) + " never became " +
                   (on ? "on" : "off") + " of " + line() + ". The program's tree is:\n" +
                   application_->tree());
}

void Accessible::wait_gone(Milliseconds patience) const {
    const auto gone = [&] {
        try {
            return !application_->running() || !showing();
        } catch (const NotThere&) {
            return true;
        }
    };
    if (wait_until(gone, patience)) return;
    throw NotThere("Still there: " + line() + ". The program's tree is:\n" + application_->tree());
}

std::string Accessible::line() const {
    std::ostringstream text;
    try {
        text << role_name() << " '" << name() << "'";
        for (const auto& [state, word] : {std::pair{State::kActive, " active"},
                                          {State::kFocused, " focused"},
                                          {State::kChecked, " checked"},
                                          {State::kSelected, " selected"}}) {
            if (is(state)) text << word;
        }
        if (!enabled()) text << " disabled";
        if (!showing()) text << " hidden";
        text << ' ' << rectangle();
        if (const std::string said = description(); !said.empty()) text << " (" << said << ')';
        if (has_interface("org.a11y.atspi.Text")) text << " text '" << this->text() << "'";
    } catch (const NotThere&) {
        text << " (says no more)";
    }
    return text.str();
}

void Accessible::add_to_tree(std::string& text, int depth) const {
    text.append(static_cast<std::size_t>(depth) * 2, ' ').append(line()).append("\n");
    try {
        if (holds_thousands(role())) return;
        for (const Accessible& child : children()) child.add_to_tree(text, depth + 1);
    } catch (const NotThere&) {
        text.append("  (gone)\n");
    }
}

std::string Accessible::tree() const {
    std::string text;
    add_to_tree(text, 0);
    return text;
}

}  // namespace memwright::systest
