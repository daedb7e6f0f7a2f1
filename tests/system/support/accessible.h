#pragma once

// An element of a program's windows as a screen reader meets it: what it is, is called, says and
// where it stands. Each question goes to the program; nothing is remembered.
// find and its relatives wait until the element is there. Errors: NotThere, with the whole tree of
// the program, when it never is, and when an element has meanwhile gone.

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "support/eventually.h"
#include "system/support/geometry.h"
#include "system/support/message_bus.h"
#include "system/support/role.h"

namespace memwright::systest {

class Application;

// What to look for; whatever is left out does not matter.
struct Query {
    std::optional<Role> role = {};
    std::optional<std::string> name = {};
    std::optional<std::string> name_part = {};  // somewhere in its name
    std::optional<std::string> description = {};
    bool showing = false;  // only what is on the screen
};
std::ostream& operator<<(std::ostream& out, const Query& query);

class Accessible {
  public:
    Accessible(const Application& application, ObjectName object);

    const Application& application() const { return *application_; }

    Role role() const;
    std::string role_name() const;
    std::string name() const;
    std::string description() const;
    bool is(State state) const;
    bool enabled() const { return is(State::kEnabled); }
    bool showing() const { return is(State::kShowing); }
    bool checked() const { return is(State::kChecked); }
    bool focused() const { return is(State::kFocused); }
    Rectangle rectangle() const;

    std::string text() const;  // of a field its contents, of anything else its name
    int caret() const;
    double value() const;  // of a progress bar or a number field

    // Of a table. Cells and headings count from 0; a cell need not be in sight.
    int row_count() const;
    int column_count() const;
    Accessible cell(int row, int column) const;
    std::string cell_text(int row, int column) const { return cell(row, column).name(); }
    std::string column_heading(int column) const;
    std::string row_heading(int row) const;

    std::vector<Accessible> children() const;
    bool matches(const Query& query) const;

    // The first in the order of the tree, this element's children first. The inside of tables,
    // lists and trees is not searched, except from there: it has thousands of elements.
    Accessible find(const Query& query, Milliseconds patience = kPatience) const;
    std::optional<Accessible> find_now(const Query& query) const;
    Accessible button(std::string_view name) const;
    Accessible menu_item(std::string_view name) const;
    // For labels: their text is their name, so only a description tells one that changes.
    Accessible described(std::string_view description) const;

    void wait_for(State state, bool on = true, Milliseconds patience = kPatience) const;
    // Until it has gone, or is hidden.
    void wait_gone(Milliseconds patience = kPatience) const;

    // All below it, one line each, for people.
    std::string tree() const;
    std::string line() const;

    friend bool operator==(const Accessible& left, const Accessible& right) {
        return left.object_ == right.object_;
    }

  private:
    bool has_interface(std::string_view name) const;
    Variant call(const char* interface, const char* method, GVariant* arguments = nullptr) const;
    Variant property(const char* interface, const char* name) const;
    int number(const char* interface, const char* name) const;
    std::string heading(const char* method, int index) const;
    void add_to_tree(std::string& text, int depth) const;

    const Application* application_;
    ObjectName object_;
};

}  // namespace memwright::systest
