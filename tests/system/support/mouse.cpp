#include "system/support/mouse.h"

#include <chrono>
#include <thread>

#include "system/support/application.h"
#include "system/support/x_display.h"

namespace memwright::systest {
namespace {

using Clock = std::chrono::steady_clock;

// Two clicks within this time at one place are a double click to most programs.
constexpr Milliseconds kDoubleClick{450};
constexpr int kDragSteps = 10;

// Of the last click on any desktop of this process; a person has only one hand on the mouse.
struct LastClick {
    Point point;
    Clock::time_point time;
};
LastClick last_click;

// Deliberate: a wait for time to pass. Nothing but time turns a second click into a click.
void keep_clicks_apart(Point point) {
    const auto apart = last_click.time + kDoubleClick;
    const bool near =
        std::abs(point.x - last_click.point.x) < 10 && std::abs(point.y - last_click.point.y) < 10;
    if (near && Clock::now() < apart) std::this_thread::sleep_until(apart);
}

int process_of_window_at_pointer(const XDisplay& display) {
    Window root = 0;
    Window child = display.root();
    int x = 0;
    int y = 0;
    unsigned mask = 0;
    // Down through the window manager's frame to the window that says whose it is.
    while (child != 0) {
        const Window window = child;
        const auto process = display.numbers(window, "_NET_WM_PID");
        if (window != display.root() && !process.empty()) return static_cast<int>(process.front());
        int root_x = 0;
        int root_y = 0;
        if (XQueryPointer(display.get(), window, &root, &child, &root_x, &root_y, &x, &y, &mask) ==
            0) {
            break;
        }
    }
    return 0;
}

}  // namespace

void Mouse::move(Point point) {
    XTestFakeMotionEvent(display_.get(), -1, point.x, point.y, CurrentTime);
    XSync(display_.get(), False);
}

void Mouse::press(Button button) {
    XTestFakeButtonEvent(display_.get(), static_cast<unsigned>(button), True, CurrentTime);
    // The window manager sees a press first, to raise the window, and holds the pointer until it
    // has. Keys are not held, and would overtake the click.
    display_.manager_is_done(kPatience);
}

void Mouse::release(Button button) {
    XTestFakeButtonEvent(display_.get(), static_cast<unsigned>(button), False, CurrentTime);
    XSync(display_.get(), False);
}

void Mouse::click(Point point, Button button) {
    keep_clicks_apart(point);
    move(point);
    press(button);
    release(button);
    last_click = {point, Clock::now()};
}

void Mouse::double_click(Point point) {
    click(point);
    press();
    release();
    last_click = {point, Clock::now()};
}

void Mouse::drag(Point from, Point to) {
    keep_clicks_apart(from);
    move(from);
    press();
    for (int step = 1; step <= kDragSteps; ++step) {
        move({from.x + (to.x - from.x) * step / kDragSteps,
              from.y + (to.y - from.y) * step / kDragSteps});
    }
    release();
    last_click = {to, Clock::now()};
}

void Mouse::wheel(Point point, Button direction, int steps) {
    move(point);
    for (int step = 0; step < steps; ++step) {
        press(direction);
        release(direction);
    }
}

Point Mouse::aim(const Accessible& target) const {
    const Application& application = target.application();
    target.wait_for(State::kShowing);
    Rectangle last;
    const auto still = [&] {
        application.settle();  // a window that just opened has its place only after that
        const Rectangle now = target.rectangle();
        const bool same = now == last && now.width > 0;
        last = now;
        return same;
    };
    if (wait_until(still)) return last.centre();
    throw NotThere("Never stands still: " + target.line());
}

void Mouse::click(const Accessible& target, Button button) {
    const Point point = aim(target);
    move(point);
    const auto uncovered = [&] {
        return process_of_window_at_pointer(display_) == target.application().pid();
    };
    if (!wait_until(uncovered)) {
        throw NotThere("Another program's window covers " + target.line());
    }
    click(point, button);
}

void Mouse::double_click(const Accessible& target) { double_click(aim(target)); }

}  // namespace memwright::systest
