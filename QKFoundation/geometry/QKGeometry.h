/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSGeometry.h"

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Sizes and rectangles scaled, fitted, centred, aligned and placed within one another, for windows and views. docs/
/// geometry.svg shows what each placement does.
///
/// `A` is the rectangle that is placed, `B` the one that it is placed in. Nothing is checked: NaN, infinities and
/// negative extents go through the arithmetic, which is evaluated as written, each step rounded on its own. Threads:
/// any.

/// `QKSizeRatio`. Width by height; 0 when the height is smaller than the machine's epsilon, whatever its sign.
QK_EXPORT double QKSizeRatio(CGSize size);

/// `QKSizeFit`. `size`, shrunk with its aspect kept until it fits into `bounds`. A size that fits is not enlarged.
QK_EXPORT CGSize QKSizeFit(CGSize bounds, CGSize size);

/// `QKMaxSize`. The size with the larger area; `b` when neither is larger.
QK_EXPORT CGSize QKMaxSize(CGSize a, CGSize b);

/// `QKScaleRectInRect`. `B` itself when `A` lies inside it, else a rectangle of B's aspect and, but for rounding, its
/// size.
/// Deliberate: the result takes its size from `B`, and lies B's height above it. `QKFitRectInRect` and
/// `QKWindowRectWithSizeInRect` are built on that.
QK_EXPORT CGRect QKScaleRectInRect(CGRect A, CGRect B);

/// `QKWindowRectWithSizeInRect`. The frame of a window that gets `size`: it hangs from the top-left corner of `frame`
/// where that lies inside `bounds` (a screen's visible area), else from the top-left corner of `bounds`. A frame whose
/// top-left corner is the zero point always goes to that corner of `bounds`. Without bounds (an empty rectangle) the
/// lower-left corner stays. At least 1 wide and high, and on whole points.
QK_EXPORT CGRect QKWindowRectWithSizeInRect(CGSize size, CGRect frame, CGRect bounds);

/// `QKCenterRectInRectRespectOriginFromBig`. `A` centred in `B`, in B's coordinates, on whole points.
QK_EXPORT CGRect QKCenterRectInRectRespectOriginFromBig(CGRect A, CGRect B);

/// `QKCenteredRectWithInRect`. A rectangle of that size centred in `B`, in B's coordinates, on whole points; all zeros
/// for an empty size.
QK_EXPORT CGRect QKCenteredRectWithInRect(CGSize size, CGRect B);

/// `QKGoldenRectWithSizeInRect`. A rectangle of that size in `B`, centred across and a little above the middle: about
/// 72.4 % of the free height lies below it. The origin is rounded down to whole points, the size is kept.
QK_EXPORT CGRect QKGoldenRectWithSizeInRect(CGSize size, CGRect B);

/// `QKIsRectGoldenInRectWith`. Whether `A` is where `QKGoldenRectWithSizeInRect` puts its size, no distance being
/// larger than `tolerance`; true when a distance or the tolerance is NaN.
QK_EXPORT bool QKIsRectGoldenInRectWith(CGRect A, CGRect B, double tolerance);

/// `QKFitRectInRect`. `A` centred in `B` when it is not larger, else scaled as `QKScaleRectInRect` does it.
/// Deliberate: in the second case B's origin is added a second time.
QK_EXPORT CGRect QKFitRectInRect(CGRect A, CGRect B);

/// `QKCenterRectInRect`. `A` centred in `B`, in coordinates relative to B's origin; on an axis where `A` is larger, at
/// B's origin.
QK_EXPORT CGRect QKCenterRectInRect(CGRect A, CGRect B);

/// `QKCenterRectInRectHorizontally`, `QKCenterRectInRectVertically`. The same on one axis; the other stays.
QK_EXPORT CGRect QKCenterRectInRectHorizontally(CGRect A, CGRect B);
QK_EXPORT CGRect QKCenterRectInRectVertically(CGRect A, CGRect B);

/// `QKAlignLeft` and its like. `A` with an edge (or two) put to that of `B`.
/// Deliberate: A's own edge is subtracted from B's, so the result is right for an `A` at the zero point and shifted by
/// A's origin otherwise.
QK_EXPORT CGRect QKAlignLeft(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignRight(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignBottom(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignTop(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignTopLeft(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignTopRight(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignBottomLeft(CGRect A, CGRect B);
QK_EXPORT CGRect QKAlignBottomRight(CGRect A, CGRect B);

/// `QKScaleRect`. Width and height times `factor`; the origin stays.
QK_EXPORT CGRect QKScaleRect(CGRect A, double factor);

/// `QKCGIntegralRectWithMaxiumum`. `A` on whole points, its right and upper edges no further than `maximum`; its
/// extents are negative where its origin is.
QK_EXPORT CGRect QKCGIntegralRectWithMaxiumum(CGRect A, CGPoint maximum);

#ifdef __cplusplus
} // extern "C"
#endif
