// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSGeometry.h"

#include "tests/geometry/SameBits.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using qk::tests::rect;
using qk::tests::same;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(NSGeometry, PointsAreEqualByValue) {
    EXPECT_TRUE(NSEqualPoints({0, -0.0}, {-0.0, 0}));
    EXPECT_FALSE(NSEqualPoints({0, 1}, {0, 2}));
    EXPECT_FALSE(NSEqualPoints({kNaN, 1}, {kNaN, 1}));
}

TEST(NSGeometry, NaNIsNotEmpty) {
    EXPECT_TRUE(NSIsEmptyRect(rect(1, 1, 0, 5)));
    EXPECT_TRUE(NSIsEmptyRect(rect(1, 1, 5, -1)));
    EXPECT_FALSE(NSIsEmptyRect(rect(1, 1, kNaN, 5)));
    EXPECT_FALSE(NSIsEmptyRect(rect(1, 1, 5, 5)));
}

TEST(NSGeometry, EmptyRectangleIsNotContained) {
    EXPECT_FALSE(NSContainsRect(rect(0, 0, 10, 10), rect(5, 5, 0, 1)));
}

TEST(NSGeometry, TouchingEdgesAreContained) {
    EXPECT_TRUE(NSContainsRect(rect(0, 0, 10, 10), rect(0, 0, 10, 10)));
    EXPECT_TRUE(NSContainsRect(rect(10, 10, -10, -10), rect(1, 1, 2, 2)));
    EXPECT_FALSE(NSContainsRect(rect(0, 0, 10, 10), rect(9, 0, 2, 1)));
    EXPECT_FALSE(NSContainsRect(rect(0, 0, kNaN, 10), rect(1, 1, 2, 2)));
}

TEST(NSGeometry, IntegralRectangleContainsTheRectangle) {
    EXPECT_PRED2(same, NSIntegralRect(rect(0.6, 5.4, 105.7, 24.3)), rect(0, 5, 107, 25));
    EXPECT_PRED2(same, NSIntegralRect(rect(-0.6, -5.4, 105.7, 24.3)), rect(-1, -6, 107, 25));
    EXPECT_PRED2(same, NSIntegralRect(rect(1, 2, 3, 4)), rect(1, 2, 3, 4));
}

TEST(NSGeometry, IntegralRectangleOfAnEmptyOneIsZero) {
    EXPECT_PRED2(same, NSIntegralRect(rect(7.5, 7.5, 0, 4)), rect(0, 0, 0, 0));
    EXPECT_PRED2(same, NSIntegralRect(rect(7.5, 7.5, 4, -4)), rect(0, 0, 0, 0));
}

TEST(NSGeometry, OffsetMovesTheOrigin) {
    EXPECT_PRED2(same, NSOffsetRect(rect(1, 2, 3, 4), -5, 0.5), rect(-4, 2.5, 3, 4));
}

TEST(NSGeometry, EdgesOfNegativeExtents) {
    EXPECT_PRED2(same, CGRectGetMinX(rect(1, 2, -3, -4)), -2.0);
    EXPECT_PRED2(same, CGRectGetMinY(rect(1, 2, -3, -4)), -2.0);
    EXPECT_PRED2(same, CGRectGetMaxX(rect(1, 2, -3, -4)), 1.0);
    EXPECT_PRED2(same, CGRectGetMaxY(rect(1, 2, -3, -4)), 2.0);
    EXPECT_PRED2(same, CGRectGetMaxX(rect(1, 2, 3, 4)), 4.0);
    EXPECT_PRED2(same, CGRectGetMaxY(rect(1, 2, 3, 4)), 6.0);
}

} // namespace
