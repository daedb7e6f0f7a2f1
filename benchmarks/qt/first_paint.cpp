// first_paint PROGRAM [ARGUMENT]...
// Starts a program on the X display and waits until its window is on the screen and painted. Prints
// the milliseconds from exec to then, and the resident memory in KiB half a second later; ends the
// program. The screen must be black and without a window manager: Xvfb as it comes.

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSmallest = 300;  // pixels: a smaller window is none that a user looks at
constexpr std::chrono::seconds kPatience(20);

// The middle of the largest window that is on the screen.
std::optional<XPoint> middle_of_window(Display* display) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    std::optional<XPoint> middle;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0) {
        return middle;
    }
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes window;
        if (XGetWindowAttributes(display, children[i], &window) == 0) continue;
        if (window.map_state != IsViewable || window.width < kSmallest) continue;
        middle = XPoint{static_cast<short>(window.x + window.width / 2),
                        static_cast<short>(window.y + window.height / 2)};
    }
    if (children != nullptr) XFree(children);
    return middle;
}

bool painted(Display* display, XPoint at) {
    XImage* const image =
        XGetImage(display, DefaultRootWindow(display), at.x, at.y, 1, 1, AllPlanes, ZPixmap);
    if (image == nullptr) return false;
    const bool black = (XGetPixel(image, 0, 0) & 0xFFFFFF) == 0;
    XDestroyImage(image);
    return !black;
}

bool wait_for_paint(Display* display, Clock::time_point end) {
    while (Clock::now() < end) {
        const auto middle = middle_of_window(display);
        if (middle && painted(display, *middle)) return true;
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return false;
}

long resident(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) return std::stol(line.substr(6));
    }
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fprintf(stderr, "Usage: first_paint PROGRAM [ARGUMENT]...\n");
        return 2;
    }
    Display* const display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "first_paint: there is no X display.\n");
        return 1;
    }
    // A window may go away while it is looked at.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    const auto start = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        execv(argv[1], argv + 1);
        std::perror(argv[1]);
        _exit(127);
    }
    const bool seen = wait_for_paint(display, start + kPatience);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    const long memory = resident(process);
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    XCloseDisplay(display);
    if (!seen || memory == 0) {
        std::fprintf(stderr, "first_paint: %s showed no window.\n", argv[1]);
        return 1;
    }
    std::printf("%.1f %ld\n", taken.count(), memory);
}
