// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSNotificationCenter.h"

#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/objects/NotificationListener.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace qk {
namespace {

class NotificationCenter : public testing::Test {
protected:
    NotificationCenter() {
        first->onNotification = [this](const auto&) { told += 'a'; };
        second->onNotification = [this](const auto&) { told += 'b'; };
    }

    void add(NotificationListener& listener, const std::optional<NSString>& name = "Name",
             const NSObject* object = nullptr) {
        center.addObserver(listener, "handle:", name, object);
    }

    /// Who was told of a notification, in order.
    std::string post(const NSString& name = "Name", const std::shared_ptr<NSObject>& object = nullptr) {
        told.clear();
        center.postNotificationName(name, object);
        return told;
    }

    NSNotificationCenter center;
    std::shared_ptr<NotificationListener> first = std::make_shared<NotificationListener>();
    std::shared_ptr<NotificationListener> second = std::make_shared<NotificationListener>();
    std::string told;
};

TEST_F(NotificationCenter, WithoutObserversNobodyIsTold) {
    EXPECT_EQ(post(), "");
    EXPECT_EQ(post("Name", first), "");
}

TEST_F(NotificationCenter, RemovingWhoNeverAskedDoesNothing) {
    center.removeObserver(*first);
    center.removeObserver(*first, "Name", first.get());
    EXPECT_EQ(post(), "");
}

TEST_F(NotificationCenter, TellsNameObjectAndMore) {
    std::shared_ptr<NSNotification> seen;
    first->onNotification = [&](const auto& notification) { seen = notification; };
    add(*first);
    center.postNotificationName("Name", second, NSDictionary{{"key", 1}});
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->name(), "Name");
    EXPECT_EQ(seen->object(), second);
    EXPECT_EQ(seen->userInfo(), (NSDictionary{{"key", 1}}));
    EXPECT_EQ(seen->valueForKey("name"), Value("Name"));
    EXPECT_EQ(seen->valueForKey("object"), Value(second));
    EXPECT_EQ(seen->classDescription().name(), "NSNotification");
    EXPECT_EQ(post(), "");
    EXPECT_EQ(seen->object(), nullptr);
    EXPECT_EQ(seen->valueForKey("object"), std::nullopt);
    EXPECT_EQ(seen->userInfo(), std::nullopt);
}

TEST_F(NotificationCenter, TellsThoseWhoAskedForNameAndObject) {
    const auto object = std::make_shared<NSObject>();
    add(*first);
    add(*second, std::nullopt, object.get());
    EXPECT_EQ(post("Name", object), "ab");
    EXPECT_EQ(post("Name"), "a");
    EXPECT_EQ(post("Other", object), "b");
    EXPECT_EQ(post("Other"), "");
    EXPECT_EQ(post("Other", std::make_shared<NSObject>()), "");
}

TEST_F(NotificationCenter, TellsOfEverythingWhenAskedForNothingSpecial) {
    add(*first, std::nullopt);
    EXPECT_EQ(post("", nullptr), "a");
    EXPECT_EQ(post("Other", first), "a");
}

TEST_F(NotificationCenter, TellsInTheOrderInWhichTheyAsked) {
    add(*second);
    add(*first);
    add(*second, std::nullopt);
    EXPECT_EQ(post(), "bab") << "asked twice, told twice";
}

TEST_F(NotificationCenter, RemovesWhatWasAskedForThatNameAndObject) {
    const auto object = std::make_shared<NSObject>();
    add(*first, "Name", object.get());
    add(*first, "Name");
    add(*first, "Other");
    add(*second, "Name");
    center.removeObserver(*first, "Name", object.get());
    EXPECT_EQ(post("Name", object), "ab");
    center.removeObserver(*first, "Name", nullptr);
    EXPECT_EQ(post("Name", object), "b");
    EXPECT_EQ(post("Other"), "a");
    center.removeObserver(*first, std::nullopt, object.get());
    EXPECT_EQ(post("Other"), "a");
    center.removeObserver(*first);
    EXPECT_EQ(post("Other"), "");
    EXPECT_EQ(post("Name"), "b");
}

TEST_F(NotificationCenter, RegistrationForAllNamesIsNotRemovedByOneName) {
    add(*first, std::nullopt);
    center.removeObserver(*first, "Name", nullptr);
    EXPECT_EQ(post(), "a");
}

TEST_F(NotificationCenter, ObserverRemovedDuringAPostIsNotTold) {
    add(*first);
    add(*second);
    first->onNotification = [&](const auto&) {
        told += 'a';
        center.removeObserver(*second);
    };
    EXPECT_EQ(post(), "a");
}

TEST_F(NotificationCenter, ObserverMayRemoveItself) {
    add(*first);
    add(*first);
    add(*second);
    first->onNotification = [&](const auto&) {
        told += 'a';
        center.removeObserver(*first);
    };
    EXPECT_EQ(post(), "ab");
    EXPECT_EQ(post(), "b");
}

TEST_F(NotificationCenter, ObserverAddedDuringAPostIsToldOfLaterOnes) {
    add(*first);
    first->onNotification = [&](const auto&) {
        told += 'a';
        first->onNotification = nullptr;
        add(*second);
    };
    EXPECT_EQ(post(), "a");
    EXPECT_EQ(post(), "b");
}

TEST_F(NotificationCenter, NestedPostIsToldToItsEndFirst) {
    add(*first);
    add(*second);
    first->onNotification = [&](const auto& notification) {
        told += '(';
        if (notification->object() == nullptr) {
            center.postNotificationName("Name", first);
        }
        told += ')';
    };
    EXPECT_EQ(post(), "(()b)b");
}

TEST_F(NotificationCenter, ObserverThatDiedIsToldNothing) {
    add(*first);
    add(*second);
    first.reset();
    EXPECT_EQ(post(), "b");
}

TEST_F(NotificationCenter, ObserverThatDiesDuringAPostIsNotTold) {
    add(*first);
    add(*second);
    first->onNotification = [&](const auto&) {
        told += 'a';
        second.reset();
    };
    EXPECT_EQ(post(), "a");
}

TEST_F(NotificationCenter, ObserverLivesUntilItHasBeenTold) {
    std::weak_ptr<NotificationListener> life = first;
    add(*first);
    first->onNotification = [&, life](const auto&) {
        first.reset();
        told += life.expired() ? "dead" : "alive";
    };
    EXPECT_EQ(post(), "alive");
    EXPECT_TRUE(life.expired());
}

TEST_F(NotificationCenter, ObserverOutsideOfASharedPointerIsToldUntilItIsRemoved) {
    NotificationListener listener;
    listener.onNotification = [this](const auto&) { told += 'l'; };
    add(listener);
    EXPECT_EQ(post(), "l");
    center.removeObserver(listener);
    EXPECT_EQ(post(), "");
}

TEST_F(NotificationCenter, ObserverRemovesItselfWhileItDies) {
    struct Removing : NotificationListener {
        explicit Removing(NSNotificationCenter& theCenter) : center(&theCenter) {}
        ~Removing() override { center->removeObserver(*this); }
        NSNotificationCenter* center;
    };
    auto listener = std::make_shared<Removing>(center);
    add(*listener);
    listener.reset();
    EXPECT_EQ(post(), "");
}

TEST_F(NotificationCenter, ObjectIsNotRetainedNorTakenForAnotherAtItsAddress) {
    // One place for both objects, so that the second has the address of the first.
    alignas(NSObject) std::byte place[sizeof(NSObject)];
    const auto make = [&] {
        return std::shared_ptr<NSObject>(new (place) NSObject, [](NSObject* o) { o->~NSObject(); });
    };
    auto object = make();
    add(*first, "Name", object.get());
    EXPECT_EQ(post("Name", object), "a");
    EXPECT_EQ(object.use_count(), 1);
    object.reset();
    object = make();
    EXPECT_EQ(post("Name", object), "");
}

TEST_F(NotificationCenter, ManyWhoDiedAreForgotten) {
    for (int index = 0; index < 20'000; ++index) {
        add(*std::make_shared<NotificationListener>());
    }
    add(*first);
    EXPECT_EQ(post(), "a");
}

TEST_F(NotificationCenter, WhatAnObserverRaisesGoesThrough) {
    add(*first);
    add(*second);
    first->onNotification = [&](const auto&) { throw std::runtime_error("no"); };
    EXPECT_THROW(post(), std::runtime_error);
    EXPECT_EQ(told, "");
    center.removeObserver(*first);
    EXPECT_EQ(post(), "b");
}

TEST_F(NotificationCenter, SelectorThatTheObserverDoesNotHaveIsRaisedByThePost) {
    center.addObserver(*first, "bogus:", "Name", nullptr);
    EXPECT_THROW(post(), NSInvalidArgumentException);
}

TEST(NSNotificationCenterDefault, IsOne) {
    EXPECT_EQ(&NSNotificationCenter::defaultCenter(), &NSNotificationCenter::defaultCenter());
}

} // namespace
} // namespace qk
