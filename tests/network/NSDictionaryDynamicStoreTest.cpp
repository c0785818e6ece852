// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qk {
namespace {

using namespace NSDictionary_DynamicStore;

NSDictionary holding(const Value& value) {
    return NSDictionary{{"key", value}};
}

TEST(NSDictionaryDynamicStore, WhatIsMissingHasAFixedAnswer) {
    EXPECT_FALSE(boolValueForDynamicStoreKey(NSDictionary(), "key"));
    EXPECT_EQ(stringValueForDynamicStoreKey(NSDictionary(), "key"), "");
    EXPECT_EQ(stringArrayValueForDynamicStoreKey(NSDictionary(), "key"), NSArray());
}

TEST(NSDictionaryDynamicStore, AnyNumberButZeroIsTrue) {
    for (const Value& value : {Value(true), Value(1), Value(2), Value(-1), Value(0.5), Value(256),
                               Value(std::int64_t{1} << 32U), Value(UINT64_MAX)}) {
        EXPECT_TRUE(boolValueForDynamicStoreKey(holding(value), "key")) << value.description().utf8Lossy();
    }
    for (const Value& value : {Value(false), Value(0), Value(0.0), Value(-0.0)}) {
        EXPECT_FALSE(boolValueForDynamicStoreKey(holding(value), "key")) << value.description().utf8Lossy();
    }
}

TEST(NSDictionaryDynamicStore, WhatIsNoNumberIsFalse) {
    for (const Value& value : {Value("1"), Value("YES"), Value(NSArray{1}), Value(NSNull{}), Value(NSDictionary())}) {
        EXPECT_FALSE(boolValueForDynamicStoreKey(holding(value), "key")) << value.description().utf8Lossy();
    }
}

TEST(NSDictionaryDynamicStore, OnlyATextIsAText) {
    EXPECT_EQ(stringValueForDynamicStoreKey(holding("text"), "key"), "text");
    EXPECT_EQ(stringValueForDynamicStoreKey(holding(""), "key"), "");
    for (const Value& value : {Value(1), Value(true), Value(NSArray{"text"}), Value(NSNull{})}) {
        EXPECT_EQ(stringValueForDynamicStoreKey(holding(value), "key"), "") << value.description().utf8Lossy();
    }
}

TEST(NSDictionaryDynamicStore, AnArrayIsReturnedWhateverItHolds) {
    EXPECT_EQ(stringArrayValueForDynamicStoreKey(holding(NSArray{"a", "b"}), "key"), (NSArray{"a", "b"}));
    EXPECT_EQ(stringArrayValueForDynamicStoreKey(holding(NSArray{64, 128}), "key"), (NSArray{64, 128}));
    EXPECT_EQ(stringArrayValueForDynamicStoreKey(holding(NSArray{NSNull{}}), "key"), (NSArray{NSNull{}}));
    for (const Value& value : {Value("a"), Value(1), Value(NSDictionary()), Value(NSNull{})}) {
        EXPECT_EQ(stringArrayValueForDynamicStoreKey(holding(value), "key"), NSArray())
            << value.description().utf8Lossy();
    }
}

} // namespace
} // namespace qk
