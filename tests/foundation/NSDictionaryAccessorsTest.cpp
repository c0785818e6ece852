// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDictionary+Accessors.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qk::NSDictionary_Accessors;

namespace qk {
namespace {

TEST(NSDictionaryAccessors, AMissingValueIsFalseAndZero) {
    EXPECT_FALSE(boolForKey({}, "key"));
    EXPECT_EQ(unsignedIntegerForKey({}, "key"), 0U);
}

TEST(NSDictionaryAccessors, TheNullMarkerIsFalseAndZero) {
    const NSDictionary dictionary{{"key", NSNull{}}};
    EXPECT_FALSE(boolForKey(dictionary, "key"));
    EXPECT_EQ(unsignedIntegerForKey(dictionary, "key"), 0U);
}

TEST(NSDictionaryAccessors, ANumberIsTrueUnlessItIsZero) {
    const struct {
        NSNumber number;
        bool truth;
    } rows[] = {{NSNumber(false), false}, {NSNumber(true), true},       {NSNumber(0), false},
                {NSNumber(2), true},      {NSNumber(-1), true},         {NSNumber(256), true},
                {NSNumber(0.5), true},    {NSNumber(4294967296), true}, {NSNumber(0.0), false}};
    for (const auto& row : rows) {
        EXPECT_EQ(boolForKey({{"key", row.number}}, "key"), row.truth) << row.number.stringValue().utf8Lossy();
    }
}

TEST(NSDictionaryAccessors, ATextIsTrueWhenItReadsSo) {
    EXPECT_TRUE(boolForKey({{"key", "YES"}}, "key"));
    EXPECT_TRUE(boolForKey({{"key", " +007"}}, "key"));
    EXPECT_FALSE(boolForKey({{"key", "no"}}, "key"));
    EXPECT_FALSE(boolForKey({{"key", ""}}, "key"));
}

TEST(NSDictionaryAccessors, NumbersAreReadUnsigned) {
    EXPECT_EQ(unsignedIntegerForKey({{"key", 7}}, "key"), 7U);
    EXPECT_EQ(unsignedIntegerForKey({{"key", -1}}, "key"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(unsignedIntegerForKey({{"key", std::numeric_limits<std::uint64_t>::max()}}, "key"),
              std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(unsignedIntegerForKey({{"key", 2.9}}, "key"), 2U);
    EXPECT_EQ(unsignedIntegerForKey({{"key", true}}, "key"), 1U);
}

} // namespace
} // namespace qk
