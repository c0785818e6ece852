/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#include <stdbool.h>

/// Points, sizes and rectangles in 64-bit floating-point numbers; the origin is at the lower left, y grows upwards.
/// Plain structures that C, C++ and foreign-function interfaces share.
///
/// Every operation is evaluated as written, each step rounded on its own. Threads: any.

/* NOLINTBEGIN(modernize-use-using): C reads this header too */
typedef struct CGPoint {
    double x;
    double y;
} CGPoint;

typedef struct CGSize {
    double width;
    double height;
} CGSize;

typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
/* NOLINTEND(modernize-use-using) */

#ifdef __cplusplus
extern "C" {
#endif

/// `NSEqualPoints`. Whether both coordinates are equal; 0 equals -0, NaN equals nothing.
QK_EXPORT bool NSEqualPoints(NSPoint a, NSPoint b);

/// `NSIsEmptyRect`. Whether the width or the height is 0 or less; NaN is neither.
QK_EXPORT bool NSIsEmptyRect(NSRect rect);

/// `NSContainsRect`. Whether `b` is not empty and all of its edges lie within those of `a` or on them; false when an
/// edge is NaN.
QK_EXPORT bool NSContainsRect(NSRect a, NSRect b);

/// `NSIntegralRect`. The smallest rectangle with whole edges that contains `rect`; all zeros for an empty one.
QK_EXPORT NSRect NSIntegralRect(NSRect rect);

/// `NSOffsetRect`. `rect`, moved.
QK_EXPORT NSRect NSOffsetRect(NSRect rect, double dx, double dy);

/// `CGRectGetMinX`, `CGRectGetMinY`, `CGRectGetMaxX`, `CGRectGetMaxY`. The edges, also of a rectangle whose width or
/// height is negative.
QK_EXPORT double CGRectGetMinX(CGRect rect);
QK_EXPORT double CGRectGetMinY(CGRect rect);
QK_EXPORT double CGRectGetMaxX(CGRect rect);
QK_EXPORT double CGRectGetMaxY(CGRect rect);

#ifdef __cplusplus
} // extern "C"
#endif
