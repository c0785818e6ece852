// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/AssociatedObjects.h"
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/runtime/NSObject+AssociatedObject.h"

#include "tests/runtime/Animals.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace qk {
namespace {

using namespace NSObject_AssociatedObject;
using tests::Animal;
using tests::Stone;

constexpr char kKey = 0;
constexpr char kOtherKey = 0;

using Setter = void (*)(NSObject&, const std::optional<Value>&, const void*);

TEST(AssociatedObject, NothingIsAttachedAtFirst) {
    const Stone stone;
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::nullopt);
}

TEST(AssociatedObject, PoliciesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<std::uintptr_t>(objc_AssociationPolicy::OBJC_ASSOCIATION_RETAIN), 769U);
    EXPECT_EQ(static_cast<std::uintptr_t>(objc_AssociationPolicy::OBJC_ASSOCIATION_COPY), 771U);
}

class EveryPolicy : public testing::TestWithParam<Setter> {};
INSTANTIATE_TEST_SUITE_P(Of, EveryPolicy,
                         testing::Values(&setAssociatedAssignedValue, &setAssociatedNonatomicRetainedValue,
                                         &setAssociatedNonatomicCopiedAssignValue, &setAssociatedRetainedValue,
                                         &setAssociatedCopiedValue));

TEST_P(EveryPolicy, ValueIsFoundUnderItsKeyAlone) {
    Stone stone;
    GetParam()(stone, "grey", &kKey);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::optional<Value>("grey"));
    EXPECT_EQ(getAssociatedValueForKey(stone, &kOtherKey), std::nullopt);
}

TEST_P(EveryPolicy, AttachingNothingTakesTheAttachmentAway) {
    Stone stone;
    GetParam()(stone, std::nullopt, &kKey);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::nullopt);
    GetParam()(stone, "grey", &kKey);
    GetParam()(stone, std::nullopt, &kKey);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::nullopt);
}

TEST_P(EveryPolicy, LaterValueReplacesTheEarlier) {
    Stone stone;
    GetParam()(stone, "grey", &kKey);
    GetParam()(stone, NSNull{}, &kKey);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::optional<Value>(NSNull{}));
}

TEST(AssociatedObject, AssignedObjectIsNotRetained) {
    Stone stone;
    auto animal = std::make_shared<Animal>();
    setAssociatedAssignedValue(stone, animal, &kKey);
    EXPECT_EQ(animal.use_count(), 1);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::optional<Value>(animal));
    animal.reset();
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::nullopt);
}

TEST(AssociatedObject, RetainedObjectsGoWithTheirOwner) {
    for (const Setter set : {&setAssociatedNonatomicRetainedValue, &setAssociatedRetainedValue}) {
        const auto animal = std::make_shared<Animal>();
        {
            Stone stone;
            set(stone, animal, &kKey);
            EXPECT_EQ(animal.use_count(), 2);
        }
        EXPECT_EQ(animal.use_count(), 1);
    }
}

TEST(AssociatedObject, CopiedObjectIsAnotherOne) {
    for (const Setter set : {&setAssociatedNonatomicCopiedAssignValue, &setAssociatedCopiedValue}) {
        Stone stone;
        const auto animal = std::make_shared<Animal>("Ada");
        set(stone, animal, &kKey);
        animal->setName("Bea");
        const auto copy = getAssociatedValueForKey(stone, &kKey)->asObject<Animal>();
        ASSERT_NE(copy, nullptr);
        EXPECT_NE(copy, animal);
        EXPECT_EQ(copy->name(), "Ada");
    }
}

TEST(AssociatedObject, ObjectThatCannotBeCopiedRaises) {
    Stone stone;
    EXPECT_THROW(setAssociatedCopiedValue(stone, std::make_shared<Stone>(), &kKey), NSInvalidArgumentException);
    EXPECT_EQ(getAssociatedValueForKey(stone, &kKey), std::nullopt);
}

TEST(AssociatedObject, ManyThreadsAttachAtTheSameTime) {
    Stone stone;
    std::vector<char> keys(8);
    std::vector<std::thread> threads;
    for (const char& key : keys) {
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                setAssociatedRetainedValue(stone, std::make_shared<Animal>("Ada"), &key);
                EXPECT_EQ(getAssociatedValueForKey(stone, &key)->asObject<Animal>()->name(), "Ada");
                setAssociatedRetainedValue(stone, round, &keys.front());
                static_cast<void>(getAssociatedValueForKey(stone, &kKey));
            }
        });
        if (&key == &keys.front()) {
            threads.back().join(); // its key is everybody's afterwards
        }
    }
    for (std::thread& thread : threads) {
        if (thread.joinable()) {
            thread.join();
        }
    }
    EXPECT_EQ(getAssociatedValueForKey(stone, &keys.front()), std::optional<Value>(99));
}

} // namespace
} // namespace qk
