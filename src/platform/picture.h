#pragma once

// A drawing of rectangles, lines and texts, to be painted sharply at any resolution. Lengths are in
// twips from its upper left corner; what comes later lies above. Texts are UTF-8.

#include <cstdint>
#include <string>
#include <vector>

namespace memwright {

using Colour = std::uint32_t;  // 0xRRGGBB

struct Picture {
    struct Area {
        double left;
        double top;
        double width;
        double height;
        friend bool operator==(const Area&, const Area&) = default;
    };
    struct Fill {
        Area area;
        Colour colour;
    };
    struct Line {
        double x1;
        double y1;
        double x2;
        double y2;
        Colour colour;
    };
    // Left and vertically centred in its area, which it does not leave.
    struct Text {
        Area area;
        std::string text;
        double points;
        bool bold;
        Colour colour;
    };

    double width = 0;
    double height = 0;
    std::vector<Fill> fills;
    std::vector<Line> lines;
    std::vector<Text> texts;
};

}  // namespace memwright
