// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/geometry/QKGeometry.h"

#include "tests/geometry/SameBits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using qk::tests::rect;
using qk::tests::same;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

TEST(QKSizeRatio, HeightOfAlmostNothingGivesZero) {
    EXPECT_PRED2(same, QKSizeRatio({4, 0}), 0.0);
    EXPECT_PRED2(same, QKSizeRatio({4, 1e-17}), 0.0);
    EXPECT_PRED2(same, QKSizeRatio({4, -1e-17}), 0.0);
}

TEST(QKSizeRatio, HeightOfEpsilonDivides) {
    EXPECT_PRED2(same, QKSizeRatio({kEpsilon, kEpsilon}), 1.0);
    EXPECT_PRED2(same, QKSizeRatio({kEpsilon, std::nextafter(kEpsilon, 0.0)}), 0.0);
}

TEST(QKSizeRatio, IsWidthByHeight) {
    EXPECT_PRED2(same, QKSizeRatio({3, 2}), 1.5);
    EXPECT_PRED2(same, QKSizeRatio({3, -2}), -1.5);
    EXPECT_TRUE(std::isnan(QKSizeRatio({kNaN, 2})));
}

TEST(QKSizeFit, SmallerSizeIsNotEnlarged) {
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {40, 40}), (CGSize{40, 40}));
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {100, 100}), (CGSize{100, 100}));
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {-5, 0}), (CGSize{-5, 0}));
}

TEST(QKSizeFit, LargerSizeShrinksWithItsAspect) {
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {200, 100}), (CGSize{100, 50}));
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {50, 200}), (CGSize{25, 100}));
    EXPECT_PRED2(same, QKSizeFit({100, 100}, {400, 800}), (CGSize{50, 100}));
}

TEST(QKSizeFit, SizeWithoutHeightBecomesAsHighAsTheBoundsAndHasNoWidth) {
    EXPECT_PRED2(same, QKSizeFit({100, 80}, {200, 0}), (CGSize{0, 80}));
}

TEST(QKSizeFit, ZeroRatioInBoundsWithoutWidth) {
    EXPECT_PRED2(same, QKSizeFit({0, 80}, {200, 0}), (CGSize{0, kNaN}));
    EXPECT_PRED2(same, QKSizeFit({-1, 80}, {200, 0}), (CGSize{-1, -kInfinity}));
}

TEST(QKSizeFit, SecondStepTakesTheRatioOfTheFirstStepsSize) {
    const double firstHeight = 3.0 / (7.0 / 5.0);
    EXPECT_PRED2(same, QKSizeFit({3, 2}, {7, 5}), (CGSize{3.0 / firstHeight * 2, 2}));
}

TEST(QKMaxSize, IsTheLargerArea) {
    EXPECT_PRED2(same, QKMaxSize({3, 3}, {2, 4}), (CGSize{3, 3}));
    EXPECT_PRED2(same, QKMaxSize({2, 4}, {3, 3}), (CGSize{3, 3}));
    EXPECT_PRED2(same, QKMaxSize({-3, -3}, {2, 4}), (CGSize{-3, -3}));
}

TEST(QKMaxSize, IsTheSecondWhenNeitherIsLarger) {
    EXPECT_PRED2(same, QKMaxSize({2, 3}, {3, 2}), (CGSize{3, 2}));
    EXPECT_PRED2(same, QKMaxSize({kNaN, 3}, {1, 1}), (CGSize{1, 1}));
    EXPECT_PRED2(same, QKMaxSize({kInfinity, 1}, {1, kInfinity}), (CGSize{1, kInfinity}));
}

TEST(QKScaleRectInRect, ContainedRectangleGivesTheContainer) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(2, 2, 4, 4), rect(0, 0, 10, 20)), rect(0, 0, 10, 20));
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 10, 20), rect(0, 0, 10, 20)), rect(0, 0, 10, 20));
}

TEST(QKScaleRectInRect, EmptyRectangleIsNeverContained) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(2, 2, 0, 4), rect(0, 0, 10, 20)), rect(0, 20, 10, 20));
}

TEST(QKScaleRectInRect, LargerRectangleGivesTheContainersSizeAboveIt) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 40, 10), rect(1, 2, 10, 20)), rect(1, 22, 10, 20));
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 10, 40), rect(1, 2, 10, 20)), rect(1, 22, 10, 20));
}

TEST(QKScaleRectInRect, RatioIsRounded) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 800, 600), rect(0, 0, 900, 700)).size.width, 900.0);
    const CGRect scaled = QKScaleRectInRect(rect(0, 0, 800, 900), rect(0, 0, 900, 700));
    EXPECT_PRED2(same, scaled.size, (CGSize{900.0 / 700.0 * 700.0, 700}));
    EXPECT_NE(scaled.size.width, 900.0);
}

TEST(QKScaleRectInRect, EqualWidthIsNotLarger) {
    const CGRect scaled = QKScaleRectInRect(rect(0, 0, 900, 800), rect(0, 0, 900, 700));
    EXPECT_PRED2(same, scaled.size, (CGSize{900.0 / 700.0 * 700.0, 700}));
}

TEST(QKScaleRectInRect, FlatContainerHasTheAspectOne) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 40, 10), rect(0, 0, 10, 0.05)), rect(0, 0.05, 10, 10));
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 4, 10), rect(0, 0, 10, 0.05)), rect(0, 0.05, 0.05, 0.05));
}

TEST(QKScaleRectInRect, ContainerWithoutWidthHasNoHeightEither) {
    EXPECT_PRED2(same, QKScaleRectInRect(rect(0, 0, 40, 10), rect(0, 0, 0, 10)), rect(0, 10, 0, kNaN));
}

TEST(QKWindowRectWithSizeInRect, WithoutBoundsTheLowerLeftCornerStays) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(5, 6, 7, 8), rect(0, 0, 0, 9)), rect(5, 6, 20, 30));
}

TEST(QKWindowRectWithSizeInRect, HangsFromTheFramesTopLeftCorner) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(10, 50, 40, 40), rect(0, 0, 200, 200)),
                 rect(10, 60, 20, 30));
}

TEST(QKWindowRectWithSizeInRect, UpperEdgeOfTheFrameIsRoundedBeforeTheHeightIsTaken) {
    const double large = std::ldexp(1.0, 53); // where one more is lost
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({1, 1}, rect(0, large, 1, 1), rect(0, 0, 10, 2 * large)),
                 rect(0, large - 1, 1, 1));
}

TEST(QKWindowRectWithSizeInRect, MovesToTheBoundsCornerWhenItWouldLeaveThem) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({100, 100}, rect(10, 10, 40, 40), rect(0, 0, 200, 200)),
                 rect(0, 100, 100, 100));
}

TEST(QKWindowRectWithSizeInRect, SizeThatTheBoundsCannotHoldIsPlacedByScaling) {
    const CGRect placed = QKWindowRectWithSizeInRect({900, 700}, rect(10, 10, 40, 40), rect(0, 0, 200, 800));
    EXPECT_PRED2(same, placed, NSIntegralRect(QKScaleRectInRect(rect(0, 0, 200, 800), rect(10, -650, 900, 700))));
    EXPECT_PRED2(same, placed.size.width, 901.0); // the rounding of the ratio, rounded up
}

TEST(QKWindowRectWithSizeInRect, FrameWithItsTopLeftCornerAtZeroGoesToTheBoundsCorner) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(0, -40, 40, 40), rect(-100, -100, 300, 300)),
                 rect(-100, 170, 20, 30));
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(-0.0, -40, 40, 40), rect(-100, -100, 300, 300)),
                 rect(-100, 170, 20, 30));
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(0, -40, 40, 40), rect(3, 4, 0, 0)),
                 rect(3, -26, 20, 30));
}

TEST(QKWindowRectWithSizeInRect, FractionalBoundsAreRoundedOutwards) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({20, 30}, rect(0, -40, 40, 40), rect(0.5, 0.5, 100, 100)),
                 rect(0, 70, 21, 31));
}

TEST(QKWindowRectWithSizeInRect, IsAtLeastOneByOneBeforeRounding) {
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({0.5, 0}, rect(10, 10, 40, 40), rect(0, 0, 200, 200)),
                 rect(0, 200, 1, 1)); // an empty size lies in no bounds, and so hangs above their corner
    EXPECT_PRED2(same, QKWindowRectWithSizeInRect({0.5, 0}, rect(0, -40, 40, 40), rect(0, 0, 200, 200)),
                 rect(0, 199, 1, 1));
}

TEST(QKCenterRectInRectRespectOriginFromBig, CentresInTheOthersCoordinates) {
    EXPECT_PRED2(same, QKCenterRectInRectRespectOriginFromBig(rect(7, 7, 50, 50), rect(10, 10, 100, 100)),
                 rect(35, 35, 50, 50));
    EXPECT_PRED2(same, QKCenterRectInRectRespectOriginFromBig(rect(7, 7, 25, 50), rect(10, 10, 100, 100)),
                 rect(47, 35, 26, 50));
}

TEST(QKCenteredRectWithInRect, EmptySizeGivesZeros) {
    EXPECT_PRED2(same, QKCenteredRectWithInRect({0, 10}, rect(10, 10, 100, 100)), rect(0, 0, 0, 0));
}

TEST(QKCenteredRectWithInRect, CentresTheSize) {
    EXPECT_PRED2(same, QKCenteredRectWithInRect({50, 20}, rect(10, 10, 100, 100)), rect(35, 50, 50, 20));
    EXPECT_PRED2(same, QKCenteredRectWithInRect({200, 20}, rect(10, 10, 100, 100)), rect(-40, 50, 200, 20));
}

TEST(QKGoldenRectWithSizeInRect, EmptySizeLiesAtZeroAndIsKept) {
    EXPECT_PRED2(same, QKGoldenRectWithSizeInRect({0, 10}, rect(10, 10, 100, 100)), rect(0, 0, 0, 10));
    EXPECT_PRED2(same, QKGoldenRectWithSizeInRect({10, 0}, rect(10, 10, 100, 100)), rect(0, 0, 10, 0));
}

TEST(QKGoldenRectWithSizeInRect, LiesAboveTheMiddle) {
    EXPECT_PRED2(same, QKGoldenRectWithSizeInRect({100, 100}, rect(0, 0, 300, 238.2)), rect(100, 100, 100, 100));
    EXPECT_PRED2(same, QKGoldenRectWithSizeInRect({10.5, 10.5}, rect(0, 0, 100, 100)), rect(44, 64, 10.5, 10.5));
}

TEST(QKIsRectGoldenInRectWith, NaNComparesAsTrue) {
    const CGRect screen = rect(0, 0, 300, 238.2);
    EXPECT_TRUE(QKIsRectGoldenInRectWith(rect(kNaN, 0, 100, 100), screen, 0));
    EXPECT_TRUE(QKIsRectGoldenInRectWith(rect(0, 0, kInfinity, 100), screen, 0));
    EXPECT_TRUE(QKIsRectGoldenInRectWith(rect(0, 0, 100, 100), screen, kNaN));
}

TEST(QKIsRectGoldenInRectWith, DistancesUpToTheToleranceCount) {
    const CGRect screen = rect(0, 0, 300, 238.2);
    EXPECT_TRUE(QKIsRectGoldenInRectWith(rect(100, 100, 100, 100), screen, 0));
    EXPECT_TRUE(QKIsRectGoldenInRectWith(rect(102, 98, 100, 100), screen, 2));
    EXPECT_FALSE(QKIsRectGoldenInRectWith(rect(102.5, 100, 100, 100), screen, 2));
    EXPECT_FALSE(QKIsRectGoldenInRectWith(rect(100, 97.5, 100, 100), screen, 2));
    EXPECT_FALSE(QKIsRectGoldenInRectWith(rect(100, 100, 100, 100), screen, -1));
}

TEST(QKFitRectInRect, SmallerRectangleIsCentred) {
    EXPECT_PRED2(same, QKFitRectInRect(rect(1, 2, 50, 20), rect(10, 10, 100, 100)), rect(35, 50, 50, 20));
}

TEST(QKFitRectInRect, LargerRectangleAddsTheContainersOriginTwice) {
    EXPECT_PRED2(same, QKFitRectInRect(rect(0, 0, 40, 10), rect(1, 2, 10, 20)), rect(2, 24, 10, 20));
}

TEST(QKFitRectInRect, ContainerThatIsTheAnswerIsMovedByItsOwnOrigin) {
    EXPECT_PRED2(same, QKFitRectInRect(rect(1, 1, 2, 2), rect(10, 11, -10, -11)), rect(20, 22, -10, -11));
}

TEST(QKCenterRectInRect, LargerExtentLiesAtTheContainersOrigin) {
    EXPECT_PRED2(same, QKCenterRectInRect(rect(0, 0, 150, 50), rect(10, 10, 100, 100)), rect(10, 25, 150, 50));
    EXPECT_PRED2(same, QKCenterRectInRect(rect(0, 0, 50, 150), rect(10, 20, 100, 100)), rect(25, 20, 50, 150));
}

TEST(QKCenterRectInRect, IsRelativeToTheContainer) {
    EXPECT_PRED2(same, QKCenterRectInRect(rect(0, 0, 50, 50), rect(10, 10, 100, 100)), rect(25, 25, 50, 50));
}

TEST(QKCenterRectInRect, OneAxisLeavesTheOther) {
    EXPECT_PRED2(same, QKCenterRectInRectHorizontally(rect(3, 4, 50, 50), rect(10, 10, 100, 100)), rect(25, 4, 50, 50));
    EXPECT_PRED2(same, QKCenterRectInRectVertically(rect(3, 4, 50, 50), rect(10, 10, 100, 100)), rect(3, 25, 50, 50));
}

TEST(QKAlign, RectangleAtZeroTakesTheEdge) {
    const CGRect small = rect(0, 0, 20, 10);
    const CGRect big = rect(0, 0, 100, 50);
    EXPECT_PRED2(same, QKAlignLeft(small, big), rect(0, 0, 20, 10));
    EXPECT_PRED2(same, QKAlignRight(small, big), rect(80, 0, 20, 10));
    EXPECT_PRED2(same, QKAlignBottom(small, big), rect(0, 0, 20, 10));
    EXPECT_PRED2(same, QKAlignTop(small, big), rect(0, 40, 20, 10));
}

TEST(QKAlign, OwnEdgeIsSubtracted) {
    const CGRect small = rect(3, 4, 20, 10);
    const CGRect big = rect(10, 20, 100, 50);
    EXPECT_PRED2(same, QKAlignTopLeft(small, big), rect(7, 56, 20, 10));
    EXPECT_PRED2(same, QKAlignTopRight(small, big), rect(87, 56, 20, 10));
    EXPECT_PRED2(same, QKAlignBottomLeft(small, big), rect(7, 16, 20, 10));
    EXPECT_PRED2(same, QKAlignBottomRight(small, big), rect(87, 16, 20, 10));
}

TEST(QKAlign, NegativeExtentsAreTakenAsTheyAre) {
    EXPECT_PRED2(same, QKAlignRight(rect(0, 0, -20, 10), rect(0, 0, 100, 50)), rect(120, 0, -20, 10));
}

TEST(QKScaleRect, OriginStays) {
    EXPECT_PRED2(same, QKScaleRect(rect(3, 4, 5, 6), 2), rect(3, 4, 10, 12));
    EXPECT_PRED2(same, QKScaleRect(rect(3, 4, 5, 6), -0.5), rect(3, 4, -2.5, -3));
}

TEST(QKCGIntegralRectWithMaxiumum, EdgesStopAtTheMaximum) {
    EXPECT_PRED2(same, QKCGIntegralRectWithMaxiumum(rect(0.5, 0.5, 10, 10), {8, 100}), rect(0, 0, 8, 11));
}

TEST(QKCGIntegralRectWithMaxiumum, SmallMaximumGivesNegativeExtents) {
    EXPECT_PRED2(same, QKCGIntegralRectWithMaxiumum(rect(10, 10, 10, 10), {8, 5}), rect(10, 10, -2, -5));
}

TEST(QKCGIntegralRectWithMaxiumum, NegativeWidthIsMeasuredFromTheUpdatedOrigin) {
    EXPECT_PRED2(same, QKCGIntegralRectWithMaxiumum(rect(10.5, 0, -4.5, 10), {100, 100}), rect(10, 0, 5.5, 10));
}

TEST(QKCGIntegralRectWithMaxiumum, NaNGivesTheMaximum) {
    const CGRect rounded = QKCGIntegralRectWithMaxiumum(rect(1, 1, kNaN, 4), {8, 9});
    EXPECT_PRED2(same, rounded, rect(1, 1, 7, 4));
    EXPECT_PRED2(same, QKCGIntegralRectWithMaxiumum(rect(1, 1, 3, 4), {kNaN, 9}), rect(1, 1, kNaN, 4));
}

TEST(QKCGIntegralRectWithMaxiumum, SignOfZeroIsKept) {
    EXPECT_PRED2(same, QKCGIntegralRectWithMaxiumum(rect(-0.0, 0, 1, 1), {8, 9}).origin.x, -0.0);
}

} // namespace
