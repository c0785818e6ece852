/* SPDX-License-Identifier: Apache-2.0 */
#include "QKFoundation/geometry/QKGeometry.h"

#include <stdio.h>

static int differs(CGRect rect, double x, double y, double width, double height) {
    return rect.origin.x != x || rect.origin.y != y || rect.size.width != width || rect.size.height != height;
}

int main(void) {
    const CGRect big = {{10, 10}, {100, 100}};
    const CGRect small = {{0, 0}, {50, 50}};
    const CGSize bounds = {100, 100};
    const CGSize wide = {200, 100};
    const CGSize fitted = QKSizeFit(bounds, wide);
    if (differs(QKCenterRectInRect(small, big), 25, 25, 50, 50) || fitted.width != 100 || fitted.height != 50 ||
        !QKIsRectGoldenInRectWith(QKGoldenRectWithSizeInRect(bounds, big), big, 0)) {
        fputs("a result differs\n", stderr);
        return 1;
    }
    return 0;
}
