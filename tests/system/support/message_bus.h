#pragma once

// The one private D-Bus bus of a test. It is the programs' session bus and carries the
// accessibility protocol as well, and this connection answers the programs' question where that
// is (the service org.a11y.Bus), so that nothing has to be activated or awaited lazily.
// Errors: std::runtime_error when the bus cannot be reached; NotThere when a call fails, since the
// object or its program may just be coming or going.

#include <gio/gio.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace memwright::systest {

struct VariantDeleter {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, VariantDeleter>;

// An object of a program on the bus.
struct ObjectName {
    std::string owner;
    std::string path;
    friend bool operator==(const ObjectName&, const ObjectName&) = default;
};

class MessageBus {
  public:
    explicit MessageBus(std::string address);
    ~MessageBus();
    MessageBus(const MessageBus&) = delete;
    MessageBus& operator=(const MessageBus&) = delete;

    // Takes over floating arguments. The result is the tuple of what the method returns.
    Variant call(const ObjectName& object, const char* interface, const char* method,
                 GVariant* arguments = nullptr) const;
    Variant property(const ObjectName& object, const char* interface, const char* name) const;

    // From now on, hears of elements whose state of this name changes, and of which have.
    void listen_for_state(const char* state);
    std::vector<ObjectName> heard() const;

    bool has_owner(const std::string& name) const;
    std::uint32_t process_of(const std::string& owner) const;

  private:
    static GDBusMessage* filter(GDBusConnection* connection, GDBusMessage* message,
                                gboolean incoming, gpointer bus);
    void hear(GDBusMessage& message);

    std::string address_;
    std::string state_;
    std::vector<ObjectName> heard_;
    mutable std::mutex mutex_;  // of what the connection's own thread writes
    GDBusConnection* connection_ = nullptr;
};

}  // namespace memwright::systest
