#pragma once

// A mouse: real pointer events of the X server. Aimed at an element, it waits until the element is
// on the screen and stands still, and until its program is really what lies under the pointer.
// Errors: as Accessible.

#include "system/support/accessible.h"
#include "system/support/desktop.h"
#include "system/support/geometry.h"

namespace memwright::systest {

enum class Button : unsigned { kLeft = 1, kMiddle = 2, kRight = 3, kWheelUp = 4, kWheelDown = 5 };

class Mouse {
  public:
    explicit Mouse(Desktop& desktop) : display_(desktop.display()) {}

    void move(Point point);
    void press(Button button = Button::kLeft);
    void release(Button button = Button::kLeft);

    void click(Point point, Button button = Button::kLeft);
    void double_click(Point point);
    void drag(Point from, Point to);
    void wheel(Point point, Button direction, int steps = 1);

    void click(const Accessible& target, Button button = Button::kLeft);
    void right_click(const Accessible& target) { click(target, Button::kRight); }
    void double_click(const Accessible& target);

    // Where a click on the element goes: its centre, once it is settled there.
    Point aim(const Accessible& target) const;

  private:
    const XDisplay& display_;
};

}  // namespace memwright::systest
