// SPDX-License-Identifier: Apache-2.0
// What observers may do while they are told, and who may die meanwhile.
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include "tests/platform/objects/ObservedDoor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>

namespace qk {
namespace {

using Options = NSKeyValueObservingOptions;

class KeyValueObservers : public testing::Test {
protected:
    std::shared_ptr<Door> door = std::make_shared<Door>();
    std::shared_ptr<Watcher> watcher = std::make_shared<Watcher>();
};

TEST_F(KeyValueObservers, ObserverRemovedDuringANotificationIsNotToldOfThatChange) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::None);
    door->addObserver(*second, "name", Options::None);
    watcher->onChange = [&] { door->removeObserver(*second, "name"); };
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 1U);
    EXPECT_TRUE(second->told.empty());
}

TEST_F(KeyValueObservers, ObserverAddedDuringANotificationSeesLaterChangesOnly) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::None);
    watcher->onChange = [&] {
        watcher->onChange = nullptr;
        door->addObserver(*second, "name", Options::New);
    };
    door->setName("a");
    EXPECT_TRUE(second->told.empty());
    door->setName("b");
    ASSERT_EQ(second->told.size(), 1U);
    EXPECT_EQ(second->told[0].change, (NSDictionary{{"kind", 1}, {"new", "b"}}));
}

TEST_F(KeyValueObservers, ObserverThatPutsItselfBackDuringANotificationIsToldOnce) {
    door->addObserver(*watcher, "name", Options::None);
    watcher->onChange = [&] {
        door->removeObserver(*watcher, "name");
        door->addObserver(*watcher, "name", Options::None);
    };
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 1U);
    door->setName("b");
    EXPECT_EQ(watcher->told.size(), 2U);
}

TEST_F(KeyValueObservers, NestedChangeIsToldToItsEndFirst) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "width", Options::New | Options::Old);
    door->addObserver(*second, "width", Options::New | Options::Old);
    watcher->onChange = [&] {
        if (door->width() < 3) {
            door->setWidth(door->width() + 1);
        }
    };
    door->setWidth(1);
    ASSERT_EQ(watcher->told.size(), 3U);
    ASSERT_EQ(second->told.size(), 3U);
    for (int index = 0; index < 3; ++index) {
        const auto position = static_cast<std::size_t>(index);
        EXPECT_EQ(watcher->told[position].change, (NSDictionary{{"kind", 1}, {"old", index}, {"new", index + 1}}));
        EXPECT_EQ(second->told[position].change, (NSDictionary{{"kind", 1}, {"old", 2 - index}, {"new", 3 - index}}));
    }
}

TEST_F(KeyValueObservers, NestedChangeBeforeTheChangeKeepsBothApart) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "width", Options::Prior);
    door->addObserver(*second, "width", Options::New | Options::Old);
    watcher->onChange = [&] {
        watcher->onChange = nullptr;
        door->setWidth(5);
    };
    door->setWidth(9);
    ASSERT_EQ(second->told.size(), 2U);
    EXPECT_EQ(second->told[0].change, (NSDictionary{{"kind", 1}, {"old", 0}, {"new", 5}}));
    EXPECT_EQ(second->told[1].change, (NSDictionary{{"kind", 1}, {"old", 0}, {"new", 9}}));
}

TEST_F(KeyValueObservers, LastObserverMayGoBeforeTheChangeIsMade) {
    door->addObserver(*watcher, "width", Options::Prior);
    watcher->onChange = [&] { door->removeObserver(*watcher, "width"); };
    door->setWidth(9);
    EXPECT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(door->width(), 9);
}

TEST_F(KeyValueObservers, ChangeThatNobodyDealsWithRaises) {
    const auto plain = std::make_shared<NSObject>();
    door->addObserver(*plain, "name", Options::None);
    try {
        door->setName("a");
        FAIL() << "nothing was raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
    }
    EXPECT_EQ(door->name(), "a");
    door->removeObserver(*plain, "name");
    door->setName("b");
}

TEST_F(KeyValueObservers, StoreThatRaisesEndsTheChange) {
    door->addObserver(*watcher, "width", Options::New | Options::Old);
    EXPECT_THROW(door->change([] { throw std::runtime_error("stuck"); }), std::runtime_error);
    EXPECT_TRUE(watcher->told.empty());
    door->didChangeValueForKey("width");
    EXPECT_TRUE(watcher->told.empty());
    door->setWidth(2);
    EXPECT_EQ(watcher->told.size(), 1U);
    door->removeObserver(*watcher, "width");
}

TEST_F(KeyValueObservers, ObserverThatRaisesEndsTheNotification) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "width", Options::None);
    door->addObserver(*second, "width", Options::None);
    watcher->onChange = [] { throw std::runtime_error("no more"); };
    EXPECT_THROW(door->setWidth(1), std::runtime_error);
    EXPECT_EQ(door->width(), 1);
    EXPECT_TRUE(second->told.empty());
    watcher->onChange = nullptr;
    door->setWidth(2);
    EXPECT_EQ(second->told.size(), 1U);
}

TEST_F(KeyValueObservers, ObservedObjectMayDieWithObservers) {
    const std::weak_ptr<Door> life = door;
    door->addObserver(*watcher, "name", Options::None);
    door->willChangeValueForKey("name");
    door.reset();
    EXPECT_TRUE(life.expired()) << "an observation keeps the object";
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObservers, ObservedObjectMayBeLetGoWhileItTells) {
    const auto second = std::make_shared<Watcher>();
    const std::weak_ptr<Door> life = door;
    door->addObserver(*watcher, "width", Options::Prior | Options::New);
    door->addObserver(*second, "width", Options::New);
    watcher->onChange = [&] { door.reset(); };
    door->setWidth(80);
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(watcher->told.size(), 2U);
    ASSERT_EQ(second->told.size(), 1U);
    EXPECT_EQ(second->told[0].change, (NSDictionary{{"kind", 1}, {"new", 80}}));
}

TEST_F(KeyValueObservers, ObservedObjectMayBeLetGoWhileItIsSetByKeyOrTellsInitially) {
    door->addObserver(*watcher, "width", Options::None);
    watcher->onChange = [&] { door.reset(); };
    door->setValueForKey(1, "width");
    EXPECT_EQ(watcher->told.size(), 1U);
    door = std::make_shared<Door>();
    door->addObserver(*watcher, "width", Options::Initial);
    EXPECT_EQ(watcher->told.size(), 2U);
    EXPECT_EQ(door, nullptr);
}

TEST_F(KeyValueObservers, ObserverIsNotRetained) {
    const std::weak_ptr<Watcher> life = watcher;
    door->addObserver(*watcher, "name", Options::None);
    door->removeObserver(*watcher, "name");
    watcher.reset();
    EXPECT_TRUE(life.expired());
}

TEST_F(KeyValueObservers, ObserverMayTakeItselfAwayAndDieWhileItIsTold) {
    const std::weak_ptr<Watcher> life = watcher;
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::Old);
    door->addObserver(*second, "name", Options::Old);
    watcher->onChange = [&] {
        door->removeObserver(*watcher, "name");
        watcher.reset();
    };
    door->setName("a");
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(second->told.size(), 1U);
}

TEST_F(KeyValueObservers, ObserverThatDiedIsToldNothingMore) {
    door->addObserver(*watcher, "name", Options::New | Options::Prior);
    watcher.reset();
    door->setName("a");
    EXPECT_EQ(door->name(), "a");
}

TEST_F(KeyValueObservers, ObserverThatAnotherOneDestroysIsNotTold) {
    auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::None);
    door->addObserver(*second, "name", Options::None);
    watcher->onChange = [&] { second.reset(); };
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 1U);
}

TEST_F(KeyValueObservers, ObserverOutsideOfASharedPointerTakesItselfAway) {
    {
        Watcher local;
        door->addObserver(local, "name", Options::None);
        door->setName("a");
        EXPECT_EQ(local.told.size(), 1U);
        door->removeObserver(local, "name");
    }
    door->setName("b");
}

TEST_F(KeyValueObservers, ObserverAtTheAddressOfADeadOneIsItsOwn) {
    alignas(Watcher) std::byte place[sizeof(Watcher)]; // NOLINT(modernize-avoid-c-arrays): raw room for an object
    const auto destroy = [](Watcher* object) { object->~Watcher(); };
    auto first = std::shared_ptr<Watcher>(new (place) Watcher, destroy);
    door->addObserver(*first, "name", Options::None);
    first.reset();
    auto second = std::shared_ptr<Watcher>(new (place) Watcher, destroy);
    door->addObserver(*second, "name", Options::None);
    door->setName("a");
    EXPECT_EQ(second->told.size(), 1U);
    door->removeObserver(*second, "name");
    EXPECT_THROW(door->removeObserver(*second, "name"), NSRangeException);
}

} // namespace
} // namespace qk
