// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace qk {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int32_t kMax32 = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <typename T>
struct Parsing {
    NSString text;
    T value;
};

class IntegerValue : public testing::TestWithParam<Parsing<std::int64_t>> {};

TEST_P(IntegerValue, StopsAtTheFirstOtherUnitAndAtTheLimits) {
    EXPECT_EQ(GetParam().text.integerValue(), GetParam().value);
    const std::int64_t stopped = std::clamp(GetParam().value, std::int64_t{kMin32}, std::int64_t{kMax32});
    EXPECT_EQ(GetParam().text.intValue(), stopped);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IntegerValue,
    testing::Values(
        Parsing<std::int64_t>{"", 0}, Parsing<std::int64_t>{"   ", 0}, Parsing<std::int64_t>{"+", 0},
        Parsing<std::int64_t>{"-", 0}, Parsing<std::int64_t>{"a123", 0}, Parsing<std::int64_t>{"++123", 0},
        Parsing<std::int64_t>{"--123", 0}, Parsing<std::int64_t>{"+-123", 0}, Parsing<std::int64_t>{"- 5", 0},
        Parsing<std::int64_t>{"0x1F", 0}, Parsing<std::int64_t>{"123", 123}, Parsing<std::int64_t>{"123a", 123},
        Parsing<std::int64_t>{"+123", 123}, Parsing<std::int64_t>{"-123", -123}, Parsing<std::int64_t>{"-123a", -123},
        Parsing<std::int64_t>{"  12", 12}, Parsing<std::int64_t>{"\t12", 12}, Parsing<std::int64_t>{"\n12", 12},
        Parsing<std::int64_t>{"\r\n \u3000\u2028-12", -12}, Parsing<std::int64_t>{"12 34", 12},
        Parsing<std::int64_t>{"12.9", 12}, Parsing<std::int64_t>{"12,9", 12}, Parsing<std::int64_t>{"007", 7},
        Parsing<std::int64_t>{"-0", 0}, Parsing<std::int64_t>{"\uFF11\uFF12", 0}, // digits, but not ASCII ones
        Parsing<std::int64_t>{"2147483647", 2147483647}, Parsing<std::int64_t>{"2147483648", 2147483648},
        Parsing<std::int64_t>{"-2147483648", -2147483648}, Parsing<std::int64_t>{"-2147483649", -2147483649},
        Parsing<std::int64_t>{"9223372036854775806", kMax - 1}, Parsing<std::int64_t>{"9223372036854775807", kMax},
        Parsing<std::int64_t>{"9223372036854775808", kMax}, Parsing<std::int64_t>{"-9223372036854775807", kMin + 1},
        Parsing<std::int64_t>{"-9223372036854775808", kMin}, Parsing<std::int64_t>{"-9223372036854775809", kMin},
        Parsing<std::int64_t>{"99999999999999999999999999999", kMax},
        Parsing<std::int64_t>{"-99999999999999999999999999999", kMin},
        Parsing<std::int64_t>{"00000000000000000000000000000000000000012", 12}));

TEST(NSStringParsing, NulEndsTheDigits) {
    EXPECT_EQ(NSString("12\0"
                       "34")
                  .integerValue(),
              12);
}

class DoubleValue : public testing::TestWithParam<Parsing<double>> {};

TEST_P(DoubleValue, IsTheLongestNumberAtTheHead) {
    EXPECT_EQ(GetParam().text.doubleValue(), GetParam().value);
    EXPECT_EQ(std::signbit(GetParam().text.doubleValue()), std::signbit(GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DoubleValue,
    testing::Values(Parsing<double>{"", 0}, Parsing<double>{" ", 0}, Parsing<double>{"x", 0}, Parsing<double>{".", 0},
                    Parsing<double>{"-", 0}, Parsing<double>{"-x", 0}, Parsing<double>{"e5", 0},
                    Parsing<double>{".e5", 0}, Parsing<double>{"nan", 0}, Parsing<double>{"inf", 0},
                    Parsing<double>{"0x10", 0}, Parsing<double>{"1", 1}, Parsing<double>{"+1", 1},
                    Parsing<double>{"-1", -1}, Parsing<double>{"--1", 0}, Parsing<double>{"-0", -0.0},
                    Parsing<double>{"1.5", 1.5}, Parsing<double>{"1.", 1}, Parsing<double>{".5", 0.5},
                    Parsing<double>{"-.5e1", -5}, Parsing<double>{"1.5.5", 1.5}, Parsing<double>{"1,5", 1},
                    Parsing<double>{" \n\t2.25 kg", 2.25}, Parsing<double>{"1e3", 1000}, Parsing<double>{"1E+3", 1000},
                    Parsing<double>{"1e-3", 0.001}, Parsing<double>{"1e", 1}, Parsing<double>{"1e+", 1},
                    Parsing<double>{"1ex", 1}, Parsing<double>{"0.1", 0.1}, Parsing<double>{"1e308", 1e308},
                    Parsing<double>{"1e309", kInfinity}, Parsing<double>{"-1e309", -kInfinity},
                    Parsing<double>{"1e-400", 0}, Parsing<double>{"-1e-400", -0.0},
                    Parsing<double>{"1e99999999999999999999", kInfinity}, Parsing<double>{"1e-99999999999999999999", 0},
                    Parsing<double>{"0e99999999999999999999", 0},
                    Parsing<double>{"9007199254740993", 9007199254740992.0}, Parsing<double>{"5e-324", 5e-324}));

TEST(NSStringParsing, LongDoublesKeepTheirMagnitude) {
    const std::string zeros(400, '0');
    EXPECT_EQ(text("1" + zeros).doubleValue(), kInfinity);
    EXPECT_EQ(text("1" + zeros + "e-400").doubleValue(), 1);
    EXPECT_EQ(text("0." + zeros + "1").doubleValue(), 0);
    EXPECT_EQ(text("0." + zeros + "1e401").doubleValue(), 1);
    EXPECT_EQ(text("0." + zeros + "1e800").doubleValue(), kInfinity);
    EXPECT_EQ(text(std::string(1'000'000, '9')).doubleValue(), kInfinity);
}

class BoolValue : public testing::TestWithParam<Parsing<bool>> {};

TEST_P(BoolValue, IsTrueForYesTrueAndANumber) {
    EXPECT_EQ(GetParam().text.boolValue(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BoolValue,
    testing::Values(Parsing<bool>{"", false}, Parsing<bool>{" ", false}, Parsing<bool>{"0", false},
                    Parsing<bool>{"000", false}, Parsing<bool>{"-", false}, Parsing<bool>{"NO", false},
                    Parsing<bool>{"false", false}, Parsing<bool>{"+t", false}, Parsing<bool>{"0t", false},
                    Parsing<bool>{"<true>", false}, Parsing<bool>{"--1", false}, Parsing<bool>{"0.5", false},
                    Parsing<bool>{"0x1", false}, Parsing<bool>{"YES", true}, Parsing<bool>{"y", true},
                    Parsing<bool>{"Yellow", true}, Parsing<bool>{"true", true}, Parsing<bool>{"T", true},
                    Parsing<bool>{"  \n\tyes", true}, Parsing<bool>{"1", true}, Parsing<bool>{"9", true},
                    Parsing<bool>{"-1", true}, Parsing<bool>{"+0005x", true}, Parsing<bool>{" 0001", true}));

} // namespace
} // namespace qk
