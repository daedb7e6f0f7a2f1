#include "system/support/top_window.h"

#include "system/support/x_display.h"

namespace memwright::systest {
namespace {

constexpr long kFromPager = 2;
constexpr long kMoves = (1L << 8) | (1L << 9) | (kFromPager << 12);
constexpr long kResizes = (1L << 10) | (1L << 11) | (kFromPager << 12);

}  // namespace

std::string TopWindow::title() const { return display_->text(id_, "_NET_WM_NAME"); }

int TopWindow::process() const {
    const auto found = display_->numbers(id_, "_NET_WM_PID");
    return found.empty() ? 0 : static_cast<int>(found.front());
}

std::string TopWindow::class_name() const {
    // The name of the program and the class, each with a zero at its end.
    const std::string both = display_->text(id_, "WM_CLASS");
    const auto end = both.find('\0');
    return end == std::string::npos ? "" : std::string(both.c_str() + end + 1);
}

std::vector<int> TopWindow::icon_sizes() const {
    // Width, height and pixels, one icon after the other.
    const auto icons = display_->numbers(id_, "_NET_WM_ICON");
    std::vector<int> sizes;
    for (std::size_t i = 0; i + 1 < icons.size(); i += 2 + icons[i] * icons[i + 1]) {
        if (icons[i] == icons[i + 1]) sizes.push_back(static_cast<int>(icons[i]));
    }
    return sizes;
}

bool TopWindow::active() const {
    const auto found = display_->numbers(display_->root(), "_NET_ACTIVE_WINDOW");
    return !found.empty() && found.front() == id_;
}

Rectangle TopWindow::rectangle() const {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display_->get(), id_, &attributes) == 0) return {};
    Rectangle result{0, 0, attributes.width, attributes.height};
    Window child = 0;
    XTranslateCoordinates(display_->get(), id_, display_->root(), 0, 0, &result.x, &result.y,
                          &child);
    return result;
}

void TopWindow::close() const { display_->ask_manager(id_, "_NET_CLOSE_WINDOW", {0, kFromPager}); }

void TopWindow::activate() const { display_->ask_manager(id_, "_NET_ACTIVE_WINDOW", {kFromPager}); }

void TopWindow::move_to(Point corner) const {
    display_->ask_manager(id_, "_NET_MOVERESIZE_WINDOW", {kMoves, corner.x, corner.y});
}

void TopWindow::resize(int width, int height) const {
    display_->ask_manager(id_, "_NET_MOVERESIZE_WINDOW", {kResizes, 0, 0, width, height});
}

}  // namespace memwright::systest
