#include "system/support/accessible.h"

#include <array>
#include <cmath>

#include "system/support/application.h"

namespace memwright::systest {
namespace {

constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
constexpr const char* kComponent = "org.a11y.atspi.Component";
constexpr const char* kTable = "org.a11y.atspi.Table";
constexpr const char* kText = "org.a11y.atspi.Text";
constexpr const char* kValue = "org.a11y.atspi.Value";
constexpr std::uint32_t kScreenCoordinates = 0;
constexpr const char* kNullPath = "/org/a11y/atspi/null";

std::string string_of(GVariant* value) {
    const char* text = g_variant_get_string(value, nullptr);
    return text;
}

std::string only_string(const Variant& tuple) {
    const Variant text(g_variant_get_child_value(tuple.get(), 0));
    return string_of(text.get());
}

}  // namespace

Accessible::Accessible(const Application& application, ObjectName object)
    : application_(&application), object_(std::move(object)) {}

Variant Accessible::call(const char* interface, const char* method, GVariant* arguments) const {
    return application_->desktop().bus().call(object_, interface, method, arguments);
}

Variant Accessible::property(const char* interface, const char* name) const {
    return application_->desktop().bus().property(object_, interface, name);
}

Role Accessible::role() const {
    std::uint32_t number = 0;
    g_variant_get(call(kAccessible, "GetRole").get(), "(u)", &number);
    return static_cast<Role>(number);
}

std::string Accessible::role_name() const { return only_string(call(kAccessible, "GetRoleName")); }

std::string Accessible::name() const { return string_of(property(kAccessible, "Name").get()); }

std::string Accessible::description() const {
    return string_of(property(kAccessible, "Description").get());
}

bool Accessible::is(State state) const {
    const Variant reply = call(kAccessible, "GetState");
    const Variant words(g_variant_get_child_value(reply.get(), 0));
    const auto bit = static_cast<unsigned>(state);
    if (g_variant_n_children(words.get()) <= bit / 32) return false;
    std::uint32_t word = 0;
    g_variant_get_child(words.get(), bit / 32, "u", &word);
    return ((word >> (bit % 32)) & 1U) != 0;
}

Rectangle Accessible::rectangle() const {
    const Variant reply = call(kComponent, "GetExtents", g_variant_new("(u)", kScreenCoordinates));
    std::array<int, 4> raw{};
    g_variant_get(reply.get(), "((iiii))", &raw[0], &raw[1], &raw[2], &raw[3]);
    const auto pixels = [this](int units) {
        return static_cast<int>(std::lround(units * application_->scale()));
    };
    return {pixels(raw[0]), pixels(raw[1]), pixels(raw[2]), pixels(raw[3])};
}

bool Accessible::has_interface(std::string_view name) const {
    const Variant reply = call(kAccessible, "GetInterfaces");
    const Variant names(g_variant_get_child_value(reply.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(names.get()); ++i) {
        const Variant each(g_variant_get_child_value(names.get(), i));
        if (string_of(each.get()) == name) return true;
    }
    return false;
}

std::string Accessible::text() const {
    if (!has_interface(kText)) return name();
    return only_string(call(kText, "GetText", g_variant_new("(ii)", 0, -1)));
}

int Accessible::number(const char* interface, const char* name) const {
    return g_variant_get_int32(property(interface, name).get());
}

int Accessible::caret() const { return number(kText, "CaretOffset"); }

double Accessible::value() const {
    return g_variant_get_double(property(kValue, "CurrentValue").get());
}

int Accessible::row_count() const { return number(kTable, "NRows"); }

int Accessible::column_count() const { return number(kTable, "NColumns"); }

Accessible Accessible::cell(int row, int column) const {
    const Variant reply = call(kTable, "GetAccessibleAt", g_variant_new("(ii)", row, column));
    const char* owner = nullptr;
    const char* path = nullptr;
    g_variant_get(reply.get(), "((&s&o))", &owner, &path);
    if (std::string_view(path) == kNullPath) {
        throw NotThere("There is no cell at row " + std::to_string(row) + ", column " +
                       std::to_string(column) + " of " + line());
    }
    return {*application_, {owner, path}};
}

std::string Accessible::heading(const char* method, int index) const {
    return only_string(call(kTable, method, g_variant_new("(i)", index)));
}

std::string Accessible::column_heading(int column) const {
    return heading("GetColumnDescription", column);
}

std::string Accessible::row_heading(int row) const { return heading("GetRowDescription", row); }

std::vector<Accessible> Accessible::children() const {
    const Variant reply = call(kAccessible, "GetChildren");
    const Variant list(g_variant_get_child_value(reply.get(), 0));
    std::vector<Accessible> result;
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const char* owner = nullptr;
        const char* path = nullptr;
        const Variant each(g_variant_get_child_value(list.get(), i));
        g_variant_get(each.get(), "(&s&o)", &owner, &path);
        if (std::string_view(path) != kNullPath) {
            result.push_back({*application_, ObjectName{owner, path}});
        }
    }
    return result;
}

}  // namespace memwright::systest
