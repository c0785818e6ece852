// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSGeometry.h"

#include <cmath>

bool NSEqualPoints(NSPoint a, NSPoint b) {
    return a.x == b.x && a.y == b.y;
}

bool NSIsEmptyRect(NSRect rect) {
    return rect.size.width <= 0 || rect.size.height <= 0;
}

bool NSContainsRect(NSRect a, NSRect b) {
    return !NSIsEmptyRect(b) && CGRectGetMinX(a) <= CGRectGetMinX(b) && CGRectGetMinY(a) <= CGRectGetMinY(b) &&
           CGRectGetMaxX(b) <= CGRectGetMaxX(a) && CGRectGetMaxY(b) <= CGRectGetMaxY(a);
}

NSRect NSIntegralRect(NSRect rect) {
    if (NSIsEmptyRect(rect)) {
        return {};
    }
    const double x = std::floor(rect.origin.x);
    const double y = std::floor(rect.origin.y);
    const double right = std::ceil(rect.origin.x + rect.size.width);
    const double top = std::ceil(rect.origin.y + rect.size.height);
    return {{x, y}, {right - x, top - y}};
}

NSRect NSOffsetRect(NSRect rect, double dx, double dy) {
    return {{rect.origin.x + dx, rect.origin.y + dy}, rect.size};
}

double CGRectGetMinX(CGRect rect) {
    return rect.size.width < 0 ? rect.origin.x + rect.size.width : rect.origin.x;
}

double CGRectGetMinY(CGRect rect) {
    return rect.size.height < 0 ? rect.origin.y + rect.size.height : rect.origin.y;
}

double CGRectGetMaxX(CGRect rect) {
    return rect.size.width < 0 ? rect.origin.x : rect.origin.x + rect.size.width;
}

double CGRectGetMaxY(CGRect rect) {
    return rect.size.height < 0 ? rect.origin.y : rect.origin.y + rect.size.height;
}
