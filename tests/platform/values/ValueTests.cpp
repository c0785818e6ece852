// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ProbeObject.h"

#include <gtest/gtest.h>

#include <unordered_map>

namespace qk {
namespace {

using namespace std::string_view_literals;

TEST(Value, DefaultIsTheNullMarker) {
    EXPECT_TRUE(Value().isNull());
    EXPECT_NE(Value().as<NSNull>(), nullptr);
    EXPECT_EQ(Value(), Value(NSNull()));
    EXPECT_EQ(Value().description(), "<null>");
}

TEST(Value, NullPointerIsTheNullMarker) {
    EXPECT_TRUE(Value(std::shared_ptr<ProbeObject>()).isNull());
}

/// One value of each kind, all different from each other.
std::vector<Value> oneOfEach() {
    return {NSNull(),
            "",
            "1",
            1,
            0,
            2.5,
            NSData("1"sv),
            NSData(),
            NSDate::dateWithTimeIntervalSince1970(1),
            *NSURL::URLWithString("1"),
            NSArray(),
            NSArray{1},
            NSDictionary(),
            NSDictionary{{"1", 1}},
            std::make_shared<ProbeObject>(std::size_t{1}),
            std::make_shared<ProbeObject>(std::size_t{2})};
}

TEST(Value, KindsAreToldApart) {
    const std::vector<Value> values = oneOfEach();
    for (std::size_t left = 0; left < values.size(); ++left) {
        for (std::size_t right = 0; right < values.size(); ++right) {
            EXPECT_EQ(values[left] == values[right], left == right)
                << testing::PrintToString(values[left]) << " and " << testing::PrintToString(values[right]);
        }
    }
}

TEST(Value, CopyIsEqualWithEqualHash) {
    for (const Value& value : oneOfEach()) {
        const Value copy = value;
        EXPECT_EQ(copy, value);
        EXPECT_EQ(copy.hash(), value.hash());
        EXPECT_EQ(copy.description(), value.description());
    }
}

TEST(Value, AsGivesWhatIsHeldAndNothingElse) {
    const Value value("text");
    ASSERT_NE(value.as<NSString>(), nullptr);
    EXPECT_EQ(*value.as<NSString>(), "text");
    EXPECT_EQ(value.as<NSNumber>(), nullptr);
    EXPECT_EQ(value.as<NSNull>(), nullptr);
    EXPECT_EQ(value.asObject<ProbeObject>(), nullptr);
    EXPECT_FALSE(value.isNull());
}

TEST(Value, NumbersKeepTheKindOfTheArgument) {
    EXPECT_TRUE(Value(true).as<NSNumber>()->isBoolean());
    EXPECT_TRUE(Value(1.5).as<NSNumber>()->isFloating());
    EXPECT_EQ(Value(1).as<NSNumber>()->kind(), NSNumber::Kind::Integer);
    EXPECT_EQ(Value(true), Value(1)) << "and are equal by value";
    EXPECT_EQ(Value(true).hash(), Value(1.0).hash());
}

TEST(Value, ObjectsDecideTheirEquality) {
    const auto first = std::make_shared<ProbeObject>(std::size_t{1});
    const auto twin = std::make_shared<ProbeObject>(std::size_t{1});
    const auto other = std::make_shared<ProbeObject>(std::size_t{2});
    EXPECT_EQ(Value(first), Value(twin));
    EXPECT_EQ(Value(first).hash(), Value(twin).hash());
    EXPECT_FALSE(Value(first) == Value(other));
    EXPECT_EQ((NSArray{first}), (NSArray{twin}));
    EXPECT_EQ(Value(first).asObject<ProbeObject>(), first);
    EXPECT_FALSE(Value(first) == Value("probe"));
    EXPECT_FALSE(Value("probe") == Value(first));
}

TEST(Value, VisitSeesTheOneThingHeld) {
    const bool sawString = Value("x").visit([]<typename T>(const T&) { return std::same_as<T, NSString>; });
    EXPECT_TRUE(sawString);
}

TEST(Value, ServesAsAKey) {
    const std::unordered_map<Value, int> map{{Value("a"), 1}, {Value(2), 2}, {Value(), 3}};
    EXPECT_EQ(map.at(Value("a")), 1);
    EXPECT_EQ(map.at(Value(2.0)), 2);
    EXPECT_EQ(map.at(Value(NSNull())), 3);
}

TEST(Value, GivesWhatItHoldsAway) {
    const NSString text("held");
    Value value = text;
    EXPECT_EQ(std::move(value).take<NSArray>(), std::nullopt);
    const auto taken = Value(text).take<NSString>();
    ASSERT_TRUE(taken.has_value());
    EXPECT_EQ(taken->storage(), text.storage());
    EXPECT_EQ(Value().take<NSString>(), std::nullopt);
}

} // namespace
} // namespace qk
