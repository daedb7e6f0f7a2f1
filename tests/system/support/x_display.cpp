#include "system/support/x_display.h"

#include <X11/Xatom.h>

#include <cstring>
#include <stdexcept>

namespace memwright::systest {
namespace {

// More than the icons of a window take, in units of 32 bits.
constexpr long kLongest = 1L << 20;

// Windows come and go while they are asked about; Xlib's own handler would end the test for it.
int ignore_error(Display*, XErrorEvent*) { return 0; }

}  // namespace

XDisplay::XDisplay(const std::string& name) {
    XSetErrorHandler(&ignore_error);
    display_ = XOpenDisplay(name.c_str());
    if (display_ == nullptr) throw std::runtime_error("Cannot open the X display " + name);
    root_ = XDefaultRootWindow(display_);
    probe_ = XCreateSimpleWindow(display_, root_, 0, 0, 1, 1, 0, 0, 0);
    // Programs send the answer to a ping to the root window.
    XSelectInput(display_, root_, StructureNotifyMask);
    XSync(display_, False);
}

XDisplay::~XDisplay() { XCloseDisplay(display_); }

Atom XDisplay::atom(const char* name) const { return XInternAtom(display_, name, False); }

std::vector<unsigned long> XDisplay::numbers(Window window, const char* property) const {
    const std::string raw = bytes(window, property);
    std::vector<unsigned long> result(raw.size() / sizeof(unsigned long));
    if (!result.empty()) std::memcpy(result.data(), raw.data(), raw.size());
    return result;
}

std::string XDisplay::text(Window window, const char* property) const {
    return bytes(window, property);
}

std::string XDisplay::bytes(Window window, const char* property) const {
    Atom type = 0;
    int format = 0;
    unsigned long items = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    const int status = XGetWindowProperty(display_, window, atom(property), 0, kLongest, False,
                                          AnyPropertyType, &type, &format, &items, &left, &data);
    if (status != Success || data == nullptr) return {};
    // Xlib hands out items of 32 bits as longs, whatever the size of a long.
    const std::size_t item = format == 32 ? sizeof(long) : static_cast<std::size_t>(format) / 8;
    std::string result(reinterpret_cast<const char*>(data), items * item);
    XFree(data);
    return result;
}

void XDisplay::ask_manager(Window window, const char* message,
                           const std::array<long, 5>& data) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = atom(message);
    event.xclient.format = 32;
    for (std::size_t i = 0; i < data.size(); ++i) event.xclient.data.l[i] = data.at(i);
    XSendEvent(display_, root_, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(display_, False);
}

bool XDisplay::manager_is_done(Milliseconds patience) const {
    // Asked for the frame of a window to be, it answers on that window, in its turn.
    XDeleteProperty(display_, probe_, atom("_NET_FRAME_EXTENTS"));
    ask_manager(probe_, "_NET_REQUEST_FRAME_EXTENTS", {});
    return wait_until([this] { return !bytes(probe_, "_NET_FRAME_EXTENTS").empty(); }, patience);
}

bool XDisplay::program_is_done(Window window, Milliseconds patience) const {
    const Atom ping = atom("_NET_WM_PING");
    const long number = ++pings_;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = atom("WM_PROTOCOLS");
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(ping);
    event.xclient.data.l[1] = number;
    event.xclient.data.l[2] = static_cast<long>(window);
    XSendEvent(display_, window, False, NoEventMask, &event);
    XFlush(display_);
    return wait_until(
        [&] {
            while (XPending(display_) > 0) {
                XEvent seen{};
                XNextEvent(display_, &seen);
                const bool pong = seen.type == ClientMessage && seen.xclient.window == root_ &&
                                  seen.xclient.data.l[0] == static_cast<long>(ping);
                if (pong && seen.xclient.data.l[1] == number) return true;
            }
            return false;
        },
        patience);
}

}  // namespace memwright::systest
