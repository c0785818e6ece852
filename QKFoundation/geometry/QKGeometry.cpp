// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/geometry/QKGeometry.h"

#include <cmath>
#include <limits>

namespace {

constexpr double kHalf = 0.5;
constexpr double kGoldenDivisor = 1.382;
constexpr double kLeastHeightOfAspect = 0.05;
constexpr double kLeastWindowExtent = 1.0;

double rightOf(CGRect rect) {
    return rect.origin.x + rect.size.width;
}

double topOf(CGRect rect) {
    return rect.origin.y + rect.size.height;
}

// A NaN on either side gives the second.
double smaller(double a, double b) {
    return a < b ? a : b;
}

// Relative to the origin of what it is placed in, or that origin when it is larger.
double centred(double extent, double origin, double room) {
    return extent > room ? origin : (room - extent) * kHalf;
}

CGRect windowRect(CGSize size, CGRect frame, CGRect bounds) {
    if (NSIsEmptyRect(bounds)) {
        return {frame.origin, size};
    }
    const CGRect hanging = {{frame.origin.x, frame.origin.y + frame.size.height - size.height}, size};
    if (NSContainsRect(bounds, hanging)) {
        return hanging;
    }
    if (bounds.size.width >= size.width && bounds.size.height >= size.height) {
        return {{bounds.origin.x, bounds.origin.y + bounds.size.height - size.height}, size};
    }
    return QKScaleRectInRect(bounds, hanging);
}

} // namespace

double QKSizeRatio(CGSize size) {
    return std::fabs(size.height) < std::numeric_limits<double>::epsilon() ? 0 : size.width / size.height;
}

CGSize QKSizeFit(CGSize bounds, CGSize size) {
    if (size.width > bounds.width) {
        return QKSizeFit(bounds, {bounds.width, bounds.width / QKSizeRatio(size)});
    }
    if (size.height > bounds.height) {
        return {QKSizeRatio(size) * bounds.height, bounds.height};
    }
    return size;
}

CGSize QKMaxSize(CGSize a, CGSize b) {
    return a.width * a.height > b.width * b.height ? a : b;
}

CGRect QKScaleRectInRect(CGRect A, CGRect B) {
    if (NSContainsRect(B, A)) {
        return B;
    }
    const double ratio = B.size.height > kLeastHeightOfAspect ? B.size.width / B.size.height : 1.0;
    const CGSize size = A.size.width > B.size.width ? CGSize{B.size.width, B.size.width / ratio}
                                                    : CGSize{ratio * B.size.height, B.size.height};
    return {{B.origin.x, B.origin.y + B.size.height}, size};
}

CGRect QKWindowRectWithSizeInRect(CGSize size, CGRect frame, CGRect bounds) {
    const bool atZero = NSEqualPoints({frame.origin.x, topOf(frame)}, {0, 0});
    CGRect rect = windowRect(size, frame, bounds);
    if (rect.size.width < kLeastWindowExtent) {
        rect.size.width = kLeastWindowExtent;
    }
    if (rect.size.height < kLeastWindowExtent) {
        rect.size.height = kLeastWindowExtent;
    }
    if (atZero) {
        rect.origin = {bounds.origin.x, bounds.origin.y + bounds.size.height - rect.size.height};
    }
    return NSIntegralRect(rect);
}

CGRect QKCenterRectInRectRespectOriginFromBig(CGRect A, CGRect B) {
    return QKCenteredRectWithInRect(A.size, B);
}

CGRect QKCenteredRectWithInRect(CGSize size, CGRect B) {
    const double x = B.origin.x + (B.size.width - size.width) * kHalf;
    const double y = B.origin.y + (B.size.height - size.height) * kHalf;
    return NSIntegralRect({{x, y}, size});
}

CGRect QKGoldenRectWithSizeInRect(CGSize size, CGRect B) {
    const double x = B.origin.x + (B.size.width - size.width) * kHalf;
    const double y = B.origin.y + (B.size.height - size.height) / kGoldenDivisor;
    return {NSIntegralRect({{x, y}, size}).origin, size};
}

bool QKIsRectGoldenInRectWith(CGRect A, CGRect B, double tolerance) {
    const CGRect golden = QKGoldenRectWithSizeInRect(A.size, B);
    const double distances[] = {std::fabs(golden.size.width - A.size.width),
                                std::fabs(golden.size.height - A.size.height), std::fabs(golden.origin.x - A.origin.x),
                                std::fabs(golden.origin.y - A.origin.y)};
    bool anyIsNaN = false;
    double largest = 0;
    for (const double distance : distances) {
        anyIsNaN = anyIsNaN || std::isnan(distance);
        largest = distance > largest ? distance : largest;
    }
    return anyIsNaN || !(largest > tolerance);
}

CGRect QKFitRectInRect(CGRect A, CGRect B) {
    const bool fits = B.size.width >= A.size.width && B.size.height >= A.size.height;
    const CGRect rect =
        fits ? CGRect{{(B.size.width - A.size.width) * kHalf, (B.size.height - A.size.height) * kHalf}, A.size}
             : QKScaleRectInRect(A, B);
    return NSOffsetRect(rect, B.origin.x, B.origin.y);
}

CGRect QKCenterRectInRect(CGRect A, CGRect B) {
    return QKCenterRectInRectVertically(QKCenterRectInRectHorizontally(A, B), B);
}

CGRect QKCenterRectInRectHorizontally(CGRect A, CGRect B) {
    A.origin.x = centred(A.size.width, B.origin.x, B.size.width);
    return A;
}

CGRect QKCenterRectInRectVertically(CGRect A, CGRect B) {
    A.origin.y = centred(A.size.height, B.origin.y, B.size.height);
    return A;
}

CGRect QKAlignLeft(CGRect A, CGRect B) {
    A.origin.x = B.origin.x - A.origin.x;
    return A;
}

CGRect QKAlignRight(CGRect A, CGRect B) {
    A.origin.x = rightOf(B) - rightOf(A);
    return A;
}

CGRect QKAlignBottom(CGRect A, CGRect B) {
    A.origin.y = B.origin.y - A.origin.y;
    return A;
}

CGRect QKAlignTop(CGRect A, CGRect B) {
    A.origin.y = topOf(B) - topOf(A);
    return A;
}

CGRect QKAlignTopLeft(CGRect A, CGRect B) {
    return QKAlignTop(QKAlignLeft(A, B), B);
}

CGRect QKAlignTopRight(CGRect A, CGRect B) {
    return QKAlignTop(QKAlignRight(A, B), B);
}

CGRect QKAlignBottomLeft(CGRect A, CGRect B) {
    return QKAlignBottom(QKAlignLeft(A, B), B);
}

CGRect QKAlignBottomRight(CGRect A, CGRect B) {
    return QKAlignBottom(QKAlignRight(A, B), B);
}

CGRect QKScaleRect(CGRect A, double factor) {
    return {A.origin, {A.size.width * factor, A.size.height * factor}};
}

CGRect QKCGIntegralRectWithMaxiumum(CGRect A, CGPoint maximum) {
    const double right = smaller(std::ceil(CGRectGetMaxX(A)), maximum.x);
    const double top = smaller(std::ceil(CGRectGetMaxY(A)), maximum.y);
    A.origin = {std::floor(A.origin.x), std::floor(A.origin.y)};
    A.size.width = right - CGRectGetMinX(A);
    A.size.height = top - CGRectGetMinY(A);
    return A;
}
