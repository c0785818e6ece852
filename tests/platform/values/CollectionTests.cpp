// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ProbeObject.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

TEST(NSArray, DefaultHoldsNothing) {
    const NSArray array;
    EXPECT_TRUE(array.isEmpty());
    EXPECT_EQ(array.count(), 0U);
    EXPECT_TRUE(array.values().empty());
    EXPECT_EQ(array.begin(), array.end());
    EXPECT_EQ(array, NSArray(std::vector<Value>()));
    EXPECT_EQ(array, NSArray(std::vector<NSString>()));
    EXPECT_EQ(array.hash(), NSArray(std::vector<Value>()).hash());
}

TEST(NSArray, KeepsItsValuesInOrder) {
    const NSArray array{"a", 2, true, NSNull()};
    ASSERT_EQ(array.count(), 4U);
    EXPECT_EQ(array[0], Value("a"));
    EXPECT_EQ(array[1], Value(2));
    EXPECT_EQ(array[2], Value(true));
    EXPECT_TRUE(array[3].isNull());
    std::size_t index = 0;
    for (const Value& value : array) {
        EXPECT_EQ(value, array[index++]);
    }
    EXPECT_EQ(index, 4U);
    EXPECT_EQ(array.values().size(), 4U);
}

TEST(NSArray, OfStringsHoldsStrings) {
    EXPECT_EQ(NSArray(std::vector<NSString>{"a", "b"}), (NSArray{"a", "b"}));
}

TEST(NSArray, CopySharesTheValues) {
    const NSArray array{"a", "b"};
    const NSArray copy = array; // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    EXPECT_EQ(copy.begin(), array.begin());
}

TEST(NSArray, AddingMakesANewArray) {
    const NSArray none;
    const NSArray one = none.arrayByAddingObject("a");
    const NSArray two = one.arrayByAddingObject(one);
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(one, NSArray{"a"});
    ASSERT_EQ(two.count(), 2U);
    EXPECT_EQ(two[1], Value(one));
}

TEST(NSArray, EqualityGoesByElementAndOrder) {
    EXPECT_EQ((NSArray{"a", 1}), (NSArray{"a", 1.0}));
    EXPECT_EQ((NSArray{"a", 1}).hash(), (NSArray{"a", 1.0}).hash());
    EXPECT_NE((NSArray{"a", "b"}), (NSArray{"b", "a"}));
    EXPECT_NE((NSArray{"a"}), (NSArray{"a", "a"}));
    EXPECT_NE((NSArray{"a"}), NSArray());
    EXPECT_EQ((NSArray{NSArray{"x", NSArray{}}}), (NSArray{NSArray{"x", NSArray{}}}));
    EXPECT_NE((NSArray{NSArray{"x", NSArray{}}}), (NSArray{NSArray{"x", NSArray{1}}}));
    EXPECT_NE((NSArray{NSArray{}}), (NSArray{NSDictionary{}}));
}

TEST(NSDictionary, DefaultHoldsNothing) {
    const NSDictionary dictionary;
    EXPECT_TRUE(dictionary.isEmpty());
    EXPECT_EQ(dictionary.count(), 0U);
    EXPECT_EQ(dictionary.objectForKey("a"), nullptr);
    EXPECT_EQ(dictionary.get<NSString>("a"), nullptr);
    EXPECT_TRUE(dictionary.allKeys().empty());
    EXPECT_TRUE(dictionary.entries().empty());
    EXPECT_EQ(dictionary.begin(), dictionary.end());
    EXPECT_EQ(dictionary, NSDictionary(std::vector<NSDictionary::Entry>()));
}

TEST(NSDictionary, FindsByKey) {
    const NSDictionary dictionary{{"b", 2}, {"a", "text"}, {"", NSNull()}};
    ASSERT_NE(dictionary.objectForKey("a"), nullptr);
    EXPECT_EQ(*dictionary.objectForKey("a"), Value("text"));
    EXPECT_EQ(*dictionary.objectForKey("b"), Value(2));
    EXPECT_EQ(dictionary.objectForKey("c"), nullptr);
    EXPECT_EQ(dictionary.objectForKey("A"), nullptr);
    ASSERT_NE(dictionary.objectForKey(""), nullptr) << "the empty key is a key, the null marker a value";
    EXPECT_TRUE(dictionary.objectForKey("")->isNull());
}

TEST(NSDictionary, GetWantsTheKind) {
    const NSDictionary dictionary{{"text", "x"}, {"number", 7}, {"flag", true}};
    ASSERT_NE(dictionary.get<NSString>("text"), nullptr);
    EXPECT_EQ(*dictionary.get<NSString>("text"), "x");
    EXPECT_EQ(dictionary.get<NSNumber>("text"), nullptr);
    ASSERT_NE(dictionary.get<NSNumber>("flag"), nullptr) << "a boolean is a number";
    EXPECT_TRUE(dictionary.get<NSNumber>("flag")->isBoolean());
    EXPECT_EQ(dictionary.get<NSString>("missing"), nullptr);
}

TEST(NSDictionary, KeysAscendByUnits) {
    const NSDictionary dictionary{{"b", 1}, {"B", 2}, {"\u00E9", 3}, {"10", 4}, {"9", 5}, {"", 6}};
    EXPECT_EQ(dictionary.allKeys(), (std::vector<NSString>{"", "10", "9", "B", "b", "\u00E9"}));
    std::vector<NSString> keys;
    for (const auto& [key, value] : dictionary) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, dictionary.allKeys());
}

TEST(NSDictionary, LastEntryOfAKeyCounts) {
    const NSDictionary dictionary{{"b", 1}, {"a", 1}, {"b", 2}, {"a", 2}, {"b", 3}};
    EXPECT_EQ(dictionary.count(), 2U);
    EXPECT_EQ(*dictionary.objectForKey("a"), Value(2));
    EXPECT_EQ(*dictionary.objectForKey("b"), Value(3));
    EXPECT_EQ((NSDictionary{{"a", 1}, {"a", 2}}).count(), 1U) << "in order already";
    EXPECT_EQ(*(NSDictionary{{"a", 1}, {"a", 2}}).objectForKey("a"), Value(2));
}

TEST(NSDictionary, EqualityGoesByEntry) {
    EXPECT_EQ((NSDictionary{{"a", 1}, {"b", 2}}), (NSDictionary{{"b", 2.0}, {"a", true}}));
    EXPECT_NE((NSDictionary{{"a", 1}}), (NSDictionary{{"a", 2}}));
    EXPECT_NE((NSDictionary{{"a", 1}}), (NSDictionary{{"b", 1}}));
    EXPECT_NE((NSDictionary{{"a", 1}}), NSDictionary());
    EXPECT_NE((NSDictionary{{"a", NSNull()}}), NSDictionary());
    EXPECT_EQ((NSDictionary{{"a", NSDictionary{{"b", NSArray{1}}}}}),
              (NSDictionary{{"a", NSDictionary{{"b", NSArray{1}}}}}));
    EXPECT_NE((NSDictionary{{"a", NSDictionary{{"b", NSArray{1}}}}}),
              (NSDictionary{{"a", NSDictionary{{"b", NSArray{2}}}}}));
}

TEST(NSMutableDictionary, DefaultHoldsNothing) {
    NSMutableDictionary dictionary;
    EXPECT_EQ(dictionary.count(), 0U);
    EXPECT_EQ(dictionary.objectForKey("a"), nullptr);
    dictionary.removeObjectForKey("a");
    EXPECT_EQ(dictionary.copy(), NSDictionary());
}

TEST(NSMutableDictionary, SetsReplacesAndRemoves) {
    NSMutableDictionary dictionary(NSDictionary{{"a", 1}, {"b", 2}});
    dictionary.setObject("new", "a");
    dictionary.setObject(3, "c");
    dictionary.removeObjectForKey("b");
    dictionary.removeObjectForKey("none");
    EXPECT_EQ(dictionary.count(), 2U);
    ASSERT_NE(dictionary.objectForKey("a"), nullptr);
    EXPECT_EQ(*dictionary.objectForKey("a"), Value("new"));
    EXPECT_EQ(dictionary.objectForKey("b"), nullptr);
    EXPECT_EQ(dictionary.copy(), (NSDictionary{{"a", "new"}, {"c", 3}}));
}

TEST(NSMutableDictionary, AddedEntriesReplace) {
    NSMutableDictionary dictionary;
    dictionary.setObject(1, "a");
    dictionary.setObject(1, "b");
    dictionary.addEntriesFromDictionary(NSDictionary{{"b", 2}, {"c", 2}});
    dictionary.addEntriesFromDictionary(NSDictionary());
    EXPECT_EQ(dictionary.copy(), (NSDictionary{{"a", 1}, {"b", 2}, {"c", 2}}));
}

TEST(NSMutableDictionary, CopyDoesNotChangeAfterwards) {
    NSMutableDictionary dictionary;
    dictionary.setObject(1, "a");
    const NSDictionary copy = dictionary.copy();
    dictionary.setObject(2, "a");
    EXPECT_EQ(copy, (NSDictionary{{"a", 1}}));
}

TEST(NSMutableDictionary, MovesItsEntries) {
    NSMutableDictionary source;
    source.setObject(1, "a");
    NSMutableDictionary target = std::move(source);
    EXPECT_EQ(target.count(), 1U);
    NSMutableDictionary other;
    other = std::move(target);
    EXPECT_EQ(other.copy(), (NSDictionary{{"a", 1}}));
}

/// `depth` arrays and dictionaries in turn, the innermost one holding `core`.
Value nested(std::size_t depth, Value core = "core") {
    for (std::size_t level = 0; level < depth; ++level) {
        if (level % 2 == 0) {
            core = NSArray{std::move(core)};
        } else {
            core = NSDictionary{{"key", std::move(core)}};
        }
    }
    return core;
}

TEST(DeepNesting, IsDestroyedWithoutACallPerLevel) {
    const Value value = nested(1'000'000);
    EXPECT_FALSE(value.isNull());
}

TEST(DeepNesting, IsComparedWithoutACallPerLevel) {
    EXPECT_EQ(nested(300'000), nested(300'000));
    EXPECT_FALSE(nested(300'000) == nested(300'000, "other"));
    EXPECT_FALSE(nested(300'000) == nested(300'001));
}

TEST(DeepNesting, IsHashedWithoutACallPerLevel) {
    EXPECT_EQ(nested(300'000).hash(), nested(300'000).hash());
}

TEST(DeepNesting, IsDescribedInProportionToItsDepth) {
    const std::size_t thousand = nested(1'000).description().length();
    const std::size_t tenThousand = nested(10'000).description().length();
    EXPECT_LT(tenThousand, 11 * thousand);
    EXPECT_GT(nested(100'000).description().length(), tenThousand);
}

TEST(DeepNesting, SharedLevelsSurviveTheirOtherHolder) {
    Value inner = nested(100'000);
    {
        const Value outer = NSArray{inner, NSDictionary{{"key", inner}}};
        EXPECT_FALSE(outer.isNull());
    }
    EXPECT_EQ(inner, nested(100'000));
}

TEST(DeepNesting, WideAndDeepTreesAreDestroyed) {
    Value value = "leaf";
    for (int level = 0; level < 1000; ++level) {
        value = NSArray{NSArray{1, NSDictionary{{"a", 1}}}, std::move(value), NSDictionary{{"x", NSArray{NSArray{}}}}};
    }
    EXPECT_FALSE(value.isNull());
}

TEST(DeepNesting, ObjectsInTheDepthDieWithIt) {
    auto object = std::make_shared<ProbeObject>(std::size_t{1});
    const std::weak_ptr<ProbeObject> watch = object;
    {
        const Value value = nested(100'000, Value(std::move(object)));
        EXPECT_FALSE(watch.expired());
    }
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace qk
