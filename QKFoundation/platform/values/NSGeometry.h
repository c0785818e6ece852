// SPDX-License-Identifier: Apache-2.0
#ifndef QKFOUNDATION_PLATFORM_VALUES_NSGEOMETRY_H
#define QKFOUNDATION_PLATFORM_VALUES_NSGEOMETRY_H

/* Points, sizes and rectangles, in 64-bit floating-point numbers; the origin is at the lower left, y grows upwards.
 * Plain structures that C, C++ and foreign-function interfaces share. */

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

#endif
