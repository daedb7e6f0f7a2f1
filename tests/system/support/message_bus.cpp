#include "system/support/message_bus.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "support/eventually.h"

namespace memwright::systest {
namespace {

// Short enough to leave a test time to say what hung, long enough for a loaded machine.
constexpr int kCallMilliseconds = 5000;
const ObjectName kDaemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};

std::string take_message(GError* error) {
    std::string text = error != nullptr ? error->message : "unknown error";
    g_clear_error(&error);
    return text;
}

// Answers what an accessible program asks of org.a11y.Bus. Runs in the connection's own thread, so
// the programs have their answer even while the test is busy.
GDBusMessage* answer(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                     gpointer address) {
    const char* path = g_dbus_message_get_path(message);
    if (incoming == FALSE ||
        g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL ||
        path == nullptr || std::string_view(path) != "/org/a11y/bus") {
        return message;
    }
    const std::string_view member = g_dbus_message_get_member(message);
    GDBusMessage* reply = nullptr;
    if (member == "GetAddress") {
        reply = g_dbus_message_new_method_reply(message);
        const auto* text = static_cast<const std::string*>(address);
        g_dbus_message_set_body(reply, g_variant_new("(s)", text->c_str()));
    } else if (member == "Get") {  // org.a11y.Status: IsEnabled, ScreenReaderEnabled
        reply = g_dbus_message_new_method_reply(message);
        g_dbus_message_set_body(reply, g_variant_new("(v)", g_variant_new_boolean(TRUE)));
    } else {
        reply = g_dbus_message_new_method_error_literal(
            message, "org.freedesktop.DBus.Error.UnknownMethod", "no such method");
    }
    g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
    g_object_unref(reply);
    g_object_unref(message);
    return nullptr;
}

}  // namespace

MessageBus::MessageBus(std::string address) : address_(std::move(address)) {
    const auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* error = nullptr;
    connection_ =
        g_dbus_connection_new_for_address_sync(address_.c_str(), flags, nullptr, nullptr, &error);
    if (connection_ == nullptr) {
        throw std::runtime_error("Cannot reach the bus " + address_ + ": " + take_message(error));
    }
    g_dbus_connection_add_filter(connection_, &filter, this, nullptr);
    call(kDaemon, kDaemon.owner.c_str(), "RequestName", g_variant_new("(su)", "org.a11y.Bus", 0U));
}

GDBusMessage* MessageBus::filter(GDBusConnection* connection, GDBusMessage* message,
                                 gboolean incoming, gpointer bus) {
    auto& own = *static_cast<MessageBus*>(bus);
    if (g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_SIGNAL) own.hear(*message);
    return answer(connection, message, incoming, &own.address_);
}

void MessageBus::hear(GDBusMessage& message) {
    const char* member = g_dbus_message_get_member(&message);
    GVariant* body = g_dbus_message_get_body(&message);
    if (member == nullptr || std::string_view(member) != "StateChanged" || body == nullptr) return;
    const char* state = nullptr;
    int on = 0;
    g_variant_get_child(body, 0, "&s", &state);
    g_variant_get_child(body, 1, "i", &on);
    const std::lock_guard lock(mutex_);
    if (on == 0 || state != state_) return;
    heard_.push_back({g_dbus_message_get_sender(&message), g_dbus_message_get_path(&message)});
}

void MessageBus::listen_for_state(const char* state) {
    {
        const std::lock_guard lock(mutex_);
        state_ = state;
    }
    call(kDaemon, kDaemon.owner.c_str(), "AddMatch",
         g_variant_new("(s)", "type='signal',interface='org.a11y.atspi.Event.Object'"));
    const std::string event = std::string("object:state-changed:") + state;
    // Programs send only what somebody has asked for.
    call({"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"}, "org.a11y.atspi.Registry",
         "RegisterEvent", g_variant_new("(sass)", event.c_str(), nullptr, ""));
}

std::vector<ObjectName> MessageBus::heard() const {
    const std::lock_guard lock(mutex_);
    return heard_;
}

MessageBus::~MessageBus() {
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    g_object_unref(connection_);
}

Variant MessageBus::call(const ObjectName& object, const char* interface, const char* method,
                         GVariant* arguments) const {
    GError* error = nullptr;
    Variant result(g_dbus_connection_call_sync(
        connection_, object.owner.c_str(), object.path.c_str(), interface, method, arguments,
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kCallMilliseconds, nullptr, &error));
    if (!result) {
        throw NotThere(std::string(interface) + "." + method + " of " + object.path +
                       " failed: " + take_message(error));
    }
    return result;
}

Variant MessageBus::property(const ObjectName& object, const char* interface,
                             const char* name) const {
    const Variant boxed = call(object, "org.freedesktop.DBus.Properties", "Get",
                               g_variant_new("(ss)", interface, name));
    GVariant* value = nullptr;
    g_variant_get(boxed.get(), "(v)", &value);
    return Variant(value);
}

bool MessageBus::has_owner(const std::string& name) const {
    const Variant reply =
        call(kDaemon, kDaemon.owner.c_str(), "NameHasOwner", g_variant_new("(s)", name.c_str()));
    gboolean has = FALSE;
    g_variant_get(reply.get(), "(b)", &has);
    return has != FALSE;
}

std::uint32_t MessageBus::process_of(const std::string& owner) const {
    const Variant reply = call(kDaemon, kDaemon.owner.c_str(), "GetConnectionUnixProcessID",
                               g_variant_new("(s)", owner.c_str()));
    std::uint32_t process = 0;
    g_variant_get(reply.get(), "(u)", &process);
    return process;
}

}  // namespace memwright::systest
