// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKDateSince1970ValueTransformer.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace qk {
namespace {

NSDate date(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

std::optional<Value> forth(const std::optional<Value>& value) {
    return QKDateSince1970ValueTransformer::init()->transformedValue(value);
}

std::optional<Value> back(const std::optional<Value>& value) {
    return QKDateSince1970ValueTransformer::init()->reverseTransformedValue(value);
}

TEST(QKDateSince1970ValueTransformer, WhatIsNoNumberIsNoDate) {
    EXPECT_EQ(forth(std::nullopt), std::nullopt);
    EXPECT_EQ(forth(NSNull{}), std::nullopt);
    EXPECT_EQ(forth("1000"), std::nullopt);
    EXPECT_EQ(forth(date(1)), std::nullopt);
}

TEST(QKDateSince1970ValueTransformer, ZeroAndTheLargestNumberAreNoDate) {
    EXPECT_EQ(forth(0), std::nullopt);
    EXPECT_EQ(forth(false), std::nullopt);
    EXPECT_EQ(forth(INT64_MAX), std::nullopt);
    EXPECT_EQ(forth(0.5), std::nullopt) << "cut towards zero";
    EXPECT_EQ(forth(-0.9), std::nullopt);
    EXPECT_EQ(forth(std::nan("")), std::nullopt);
    EXPECT_EQ(forth(1e30), std::nullopt) << "stops at the largest number";
}

TEST(QKDateSince1970ValueTransformer, NumbersAreMilliseconds) {
    EXPECT_EQ(forth(1000), Value(date(1)));
    EXPECT_EQ(forth(1000)->description(), "1970-01-01 00:00:01 +0000");
    EXPECT_EQ(forth(-1000), Value(date(-1)));
    EXPECT_EQ(forth(1), Value(date(0.001)));
    EXPECT_EQ(forth(true), Value(date(0.001)));
    EXPECT_EQ(forth(1999.9), Value(date(1.999)));
    EXPECT_EQ(forth(1479269100123), Value(date(1479269100.123)));
}

TEST(QKDateSince1970ValueTransformer, OnlyTheLargestNumberIsSpecial) {
    EXPECT_EQ(forth(INT64_MAX - 1), Value(date(static_cast<double>(INT64_MAX - 1) / 1000.0)));
    EXPECT_EQ(forth(INT64_MIN), Value(date(static_cast<double>(INT64_MIN) / 1000.0)));
    EXPECT_EQ(forth(std::uint64_t{1} << 63U), Value(date(static_cast<double>(INT64_MIN) / 1000.0))) << "wraps";
    EXPECT_EQ(forth(UINT64_MAX), Value(date(-0.001))) << "wraps";
}

TEST(QKDateSince1970ValueTransformer, WayBackOfWhatIsNoDateIsTheIntegerZero) {
    for (const std::optional<Value>& none :
         {std::optional<Value>(), std::optional<Value>(NSNull{}), std::optional<Value>("x"), std::optional<Value>(5)}) {
        const auto number = back(none);
        ASSERT_TRUE(number.has_value() && number->as<NSNumber>() != nullptr);
        EXPECT_EQ(number, Value(0));
        EXPECT_EQ(number->as<NSNumber>()->kind(), NSNumber::Kind::Integer);
    }
}

TEST(QKDateSince1970ValueTransformer, WayBackOfADateIsAFloatingNumber) {
    EXPECT_EQ(back(date(0.0015)), Value(1.5));
    EXPECT_EQ(back(date(-1)), Value(-1000.0));
    const auto zero = back(date(0));
    EXPECT_EQ(zero, Value(0.0));
    EXPECT_TRUE(zero->as<NSNumber>()->isFloating());
}

TEST(QKDateSince1970ValueTransformer, WholeMillisecondsReturn) {
    for (const std::int64_t milliseconds : {1LL, -1LL, 999LL, 1479269100123LL, 253402300799999LL, -62135596800000LL}) {
        EXPECT_EQ(std::llround(back(forth(milliseconds))->as<NSNumber>()->doubleValue()), milliseconds);
    }
}

TEST(QKDateSince1970ValueTransformer, IsRegisteredByTheApplication) {
    const NSString name = QKDateSince1970ValueTransformerName;
    EXPECT_EQ(name, "QKDateSince1970ValueTransformer");
    EXPECT_EQ(NSValueTransformer::valueTransformerForName(name), nullptr);
    const auto transformer = QKDateSince1970ValueTransformer::init();
    NSValueTransformer::setValueTransformer(transformer, name);
    EXPECT_EQ(NSValueTransformer::valueTransformerForName(name), transformer);
    EXPECT_EQ(NSValueTransformer::valueTransformerForName(name)->transformedValue(1000), Value(date(1)));
    NSValueTransformer::setValueTransformer(nullptr, name);
}

TEST(QKDateSince1970ValueTransformer, SaysWhatItMakes) {
    EXPECT_EQ(QKDateSince1970ValueTransformer::transformedValueClass(), typeid(NSDate));
    EXPECT_TRUE(QKDateSince1970ValueTransformer::allowsReverseTransformation());
    EXPECT_EQ(QKDateSince1970ValueTransformer::init()->classDescription().name(), "QKDateSince1970ValueTransformer");
}

} // namespace
} // namespace qk
