// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSSortDescriptor.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/objects/InterfaceObject.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace qk {
namespace {

constexpr auto kAscending = NSComparisonResult::NSOrderedAscending;
constexpr auto kSame = NSComparisonResult::NSOrderedSame;
constexpr auto kDescending = NSComparisonResult::NSOrderedDescending;

std::shared_ptr<InterfaceObject> named(const std::optional<NSString>& name, double speed = 0) {
    auto object = std::make_shared<InterfaceObject>();
    object->name = name;
    object->speed = speed;
    return object;
}

TEST(NSSortDescriptor, AbsentValueIsFirstAscendingAndLastDescending) {
    const NSSortDescriptor up("name", true);
    const NSSortDescriptor down("name", false);
    for (const Value& value : {Value("x"), Value(-1), Value(NSDate::dateWithTimeIntervalSince1970(-1e12)),
                               Value(NSArray()), Value(NSData())}) {
        EXPECT_EQ(up.compareValues(std::nullopt, value), kAscending);
        EXPECT_EQ(up.compareValues(value, NSNull{}), kDescending);
        EXPECT_EQ(down.compareValues(std::nullopt, value), kDescending);
        EXPECT_EQ(down.compareValues(value, std::nullopt), kAscending);
    }
    EXPECT_EQ(up.compareValues(std::nullopt, NSNull{}), kSame);
}

TEST(NSSortDescriptor, ValuesOfOneKindCompare) {
    const NSSortDescriptor up("name", true);
    EXPECT_EQ(up.compareValues("B", "a"), kAscending) << "literally";
    EXPECT_EQ(up.compareValues(2, 1.5), kDescending);
    EXPECT_EQ(up.compareValues(true, 1), kSame);
    EXPECT_EQ(up.compareValues(NSDate::dateWithTimeIntervalSince1970(1), NSDate::dateWithTimeIntervalSince1970(2)),
              kAscending);
    EXPECT_EQ(up.compareValues(NSArray{1}, NSArray{2}), kSame) << "arrays have no order";
    EXPECT_EQ(NSSortDescriptor("name", false).compareValues(2, 1), kAscending);
}

TEST(NSSortDescriptor, UnknownKeyIsRaised) {
    EXPECT_THROW((void)NSSortDescriptor("bogus", true).compareObject(*named("a"), *named("b")),
                 NSUndefinedKeyException);
}

TEST(NSSortDescriptor, KeyMayBeAPath) {
    const auto left = named("a");
    const auto right = named("b");
    left->parent = named("d");
    right->parent = named("c");
    EXPECT_EQ(NSSortDescriptor("parent.name", true).compareObject(*left, *right), kDescending);
}

TEST(SortedArrayUsingDescriptors, NothingStaysAsItIs) {
    EXPECT_TRUE(sortedArrayUsingDescriptors(std::vector<std::shared_ptr<InterfaceObject>>(), {{"name", true}}).empty());
    const std::vector objects{named("b"), named("a")};
    EXPECT_EQ(sortedArrayUsingDescriptors(objects, {}), objects);
    EXPECT_EQ(compareUsingDescriptors(*objects[0], *objects[1], {}), kSame);
}

TEST(SortedArrayUsingDescriptors, FirstDescriptorThatTellsThemApartDecides) {
    const auto a = named("a", 1);
    const auto b1 = named("b", 1);
    const auto b2 = named("b", 2);
    const auto none = named(std::nullopt, 9);
    const std::vector<NSSortDescriptor> descriptors{{"name", true}, {"speed", false}};
    EXPECT_EQ(sortedArrayUsingDescriptors(std::vector{b1, none, a, b2}, descriptors), (std::vector{none, a, b2, b1}));
    EXPECT_EQ(sortedArrayUsingDescriptors(std::vector{b1, none, a}, {{"name", false}}), (std::vector{b1, a, none}));
}

TEST(SortedArrayUsingDescriptors, EqualObjectsKeepTheirOrder) {
    const std::vector objects{named("b"), named("a"), named("b"), named("a")};
    EXPECT_EQ(sortedArrayUsingDescriptors(objects, {{"name", true}}),
              (std::vector{objects[1], objects[3], objects[0], objects[2]}));
}

} // namespace
} // namespace qk
