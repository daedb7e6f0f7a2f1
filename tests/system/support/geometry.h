#pragma once

// Places on the screen, in the X server's pixels, from its top left corner.

#include <ostream>

namespace memwright::systest {

struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    Point centre() const { return {x + width / 2, y + height / 2}; }
    bool contains(Point point) const {
        return point.x >= x && point.x < x + width && point.y >= y && point.y < y + height;
    }
    bool contains(const Rectangle& other) const {
        return other.x >= x && other.y >= y && other.x + other.width <= x + width &&
               other.y + other.height <= y + height;
    }
    friend bool operator==(const Rectangle&, const Rectangle&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Rectangle& shown) {
        return out << shown.width << 'x' << shown.height << '+' << shown.x << '+' << shown.y;
    }
};

}  // namespace memwright::systest
