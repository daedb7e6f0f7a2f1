#pragma once

// What the screen shows: single pixels, and pictures for people to look at.
// Errors: std::runtime_error when a picture cannot be taken or written.

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <vector>

#include "system/support/geometry.h"

namespace memwright::systest {

class XDisplay;

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Colour&, const Colour&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Colour& colour) {
        return out << "rgb(" << int{colour.red} << ',' << int{colour.green} << ','
                   << int{colour.blue} << ')';
    }
};

class Picture {
  public:
    Picture(int width, int height, std::vector<Colour> pixels);
    int width() const { return width_; }
    int height() const { return height_; }
    Colour pixel(Point point) const;  // throws std::out_of_range outside
    void save(const std::filesystem::path& png_file) const;

  private:
    int width_;
    int height_;
    std::vector<Colour> pixels_;  // row by row
};

class Screen {
  public:
    explicit Screen(const XDisplay& display) : display_(display) {}
    Rectangle rectangle() const;
    Picture picture() const { return picture(rectangle()); }
    Picture picture(const Rectangle& part) const;
    Colour pixel(Point point) const { return picture({point.x, point.y, 1, 1}).pixel({0, 0}); }

  private:
    const XDisplay& display_;
};

}  // namespace memwright::systest
