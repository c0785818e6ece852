// SPDX-License-Identifier: Apache-2.0
// Draws docs/geometry.svg: what each placement makes of the same two rectangles.
//
//     geometry-picture > docs/geometry.svg
#include "QKFoundation/geometry/QKGeometry.h"

#include <cstddef>
#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr CGRect kBig = {{20, 15}, {100, 60}};

struct Panel {
    std::string_view name;
    std::string_view remark;
    CGRect given; // drawn dashed
    CGRect container;
    CGRect result; // drawn filled
};

constexpr CGRect rect(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

std::vector<Panel> placements() {
    constexpr CGRect small = rect(0, 0, 30, 20);
    constexpr CGRect wide = rect(0, 0, 130, 40);
    constexpr CGRect frame = rect(60, 30, 40, 30);
    const auto place = [](std::string_view name, std::string_view remark, CGRect A,
                          CGRect (*function)(CGRect, CGRect)) {
        return Panel{name, remark, A, kBig, function(A, kBig)};
    };
    return {
        place("QKCenterRectInRectRespectOriginFromBig", "centred, in the container's coordinates", small,
              QKCenterRectInRectRespectOriginFromBig),
        place("QKCenterRectInRect", "centred, relative to the container's origin", small, QKCenterRectInRect),
        place("QKCenterRectInRect", "too wide: at the container's origin", wide, QKCenterRectInRect),
        place("QKCenterRectInRectHorizontally", "one axis only", small, QKCenterRectInRectHorizontally),
        place("QKCenterRectInRectVertically", "one axis only", small, QKCenterRectInRectVertically),
        {"QKGoldenRectWithSizeInRect", "a little above the middle", small, kBig,
         QKGoldenRectWithSizeInRect(small.size, kBig)},
        place("QKFitRectInRect", "fits: centred", small, QKFitRectInRect),
        place("QKFitRectInRect", "too wide: scaled, the origin added twice", wide, QKFitRectInRect),
        place("QKScaleRectInRect", "not inside: the container's size, above it", wide, QKScaleRectInRect),
        place("QKAlignLeft", "", small, QKAlignLeft),
        place("QKAlignRight", "", small, QKAlignRight),
        place("QKAlignTop", "", small, QKAlignTop),
        place("QKAlignBottom", "", small, QKAlignBottom),
        place("QKAlignTopLeft", "", small, QKAlignTopLeft),
        place("QKAlignTopRight", "", small, QKAlignTopRight),
        place("QKAlignBottomLeft", "", small, QKAlignBottomLeft),
        place("QKAlignBottomRight", "", small, QKAlignBottomRight),
        {"QKWindowRectWithSizeInRect", "hangs from its top-left corner", frame, kBig,
         QKWindowRectWithSizeInRect({50, 25}, frame, kBig)},
        {"QKWindowRectWithSizeInRect", "would leave the bounds: to their corner", frame, kBig,
         QKWindowRectWithSizeInRect({70, 50}, frame, kBig)},
        {"QKScaleRect", "by 1.5: the origin stays", frame, kBig, QKScaleRect(frame, 1.5)},
        {"QKCGIntegralRectWithMaxiumum", "no further than (80, 50)", frame, kBig,
         QKCGIntegralRectWithMaxiumum(frame, {80, 50})},
    };
}

constexpr double kPanelWidth = 290;
constexpr double kPanelHeight = 230;
constexpr std::size_t kColumns = 3;
constexpr double kGround = 180; // where y is 0, from the panel's upper edge
constexpr double kLeft = 40;    // where x is 0, from the panel's left edge
constexpr double kMargin = 10;

void drawRect(CGRect rect, const char* style) {
    std::printf("<rect x=\"%g\" y=\"%g\" width=\"%g\" height=\"%g\" class=\"%s\"/>\n", kLeft + CGRectGetMinX(rect),
                kGround - CGRectGetMaxY(rect), CGRectGetMaxX(rect) - CGRectGetMinX(rect),
                CGRectGetMaxY(rect) - CGRectGetMinY(rect), style);
}

void draw(const Panel& panel, double x, double y) {
    std::printf("<g transform=\"translate(%g %g)\">\n<text x=\"0\" y=\"14\" class=\"name\">%.*s</text>\n", x, y,
                static_cast<int>(panel.name.size()), panel.name.data());
    std::printf("<text x=\"0\" y=\"29\">%.*s</text>\n", static_cast<int>(panel.remark.size()), panel.remark.data());
    std::printf("<path d=\"M%g %g V40 M%g %g H230\" class=\"axis\"/>\n", kLeft, kGround, kLeft, kGround);
    drawRect(panel.result, "result");
    drawRect(panel.container, "container");
    drawRect(panel.given, "given");
    std::puts("</g>");
}

} // namespace

int main() {
    const std::vector<Panel> panels = placements();
    const std::size_t rows = (panels.size() + kColumns - 1) / kColumns;
    std::printf("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %g %g\" font-family=\"sans-serif\" "
                "font-size=\"11\">\n",
                2 * kMargin + kPanelWidth * kColumns, 3 * kMargin + 20 + kPanelHeight * static_cast<double>(rows));
    std::puts("<style>text{fill:#444}.name{font-weight:bold;fill:#111}.axis{stroke:#bbb;fill:none}"
              ".container{fill:none;stroke:#1b5e9e;stroke-width:1.5}"
              ".given{fill:none;stroke:#888;stroke-dasharray:4 3}"
              ".result{fill:#f2a541;fill-opacity:.6;stroke:#b8730d}</style>\n"
              "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>");
    std::printf("<text x=\"%g\" y=\"%g\">Dashed: the rectangle that is given. Blue: the one that it is placed in. "
                "Orange: the result. y grows upwards.</text>\n",
                kMargin, 2 * kMargin);
    for (std::size_t index = 0; index < panels.size(); ++index) {
        const std::size_t column = index % kColumns;
        const std::size_t row = index / kColumns;
        draw(panels[index], kMargin + kPanelWidth * static_cast<double>(column),
             3 * kMargin + 10 + kPanelHeight * static_cast<double>(row));
    }
    std::puts("</svg>");
    return 0;
}
