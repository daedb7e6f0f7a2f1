#include "system/support/screen.h"

#include <png.h>

#include <stdexcept>
#include <utility>

#include "system/support/x_display.h"

namespace memwright::systest {

static_assert(sizeof(Colour) == 3, "a row of colours is what the PNG writer reads");

Picture::Picture(int width, int height, std::vector<Colour> pixels)
    : width_(width), height_(height), pixels_(std::move(pixels)) {}

Colour Picture::pixel(Point point) const {
    if (!Rectangle{0, 0, width_, height_}.contains(point)) {
        throw std::out_of_range("The picture has no such pixel");
    }
    return pixels_[static_cast<std::size_t>(point.y) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(point.x)];
}

void Picture::save(const std::filesystem::path& png_file) const {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width_);
    image.height = static_cast<png_uint_32>(height_);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, png_file.c_str(), 0, pixels_.data(), 0, nullptr) == 0) {
        throw std::runtime_error("Cannot write " + png_file.string() + ": " + image.message);
    }
}

Rectangle Screen::rectangle() const {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display_.get(), display_.root(), &attributes);
    return {0, 0, attributes.width, attributes.height};
}

Picture Screen::picture(const Rectangle& part) const {
    if (part.width <= 0 || part.height <= 0 || !rectangle().contains(part)) {
        throw std::runtime_error("Cannot take a picture of what is not on the screen");
    }
    XImage* image = XGetImage(display_.get(), display_.root(), part.x, part.y,
                              static_cast<unsigned>(part.width), static_cast<unsigned>(part.height),
                              AllPlanes, ZPixmap);
    if (image == nullptr) throw std::runtime_error("The X server gave no picture of the screen");
    std::vector<Colour> pixels;
    pixels.reserve(static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height));
    for (int y = 0; y < part.height; ++y) {
        for (int x = 0; x < part.width; ++x) {
            const unsigned long value = XGetPixel(image, x, y);
            pixels.push_back({static_cast<std::uint8_t>(value >> 16),
                              static_cast<std::uint8_t>(value >> 8),
                              static_cast<std::uint8_t>(value)});
        }
    }
    XDestroyImage(image);
    return {part.width, part.height, std::move(pixels)};
}

}  // namespace memwright::systest
