// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"

#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include "tests/platform/objects/ObservedDoor.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace qk {
namespace {

using Options = NSKeyValueObservingOptions;

class KeyValueObserving : public testing::Test {
protected:
    std::shared_ptr<Door> door = std::make_shared<Door>();
    std::shared_ptr<Watcher> watcher = std::make_shared<Watcher>();
};

TEST_F(KeyValueObserving, NothingIsToldWithoutAnObserver) {
    door->setName("front");
    door->willChangeValueForKey("name");
    door->didChangeValueForKey("name");
    door->didChangeValueForKey("no such key");
    EXPECT_EQ(door->name(), "front");
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObserving, NothingIsToldOnAdding) {
    door->addObserver(*watcher, "name", Options::New | Options::Old);
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObserving, SetterTellsOldAndNew) {
    int context = 0;
    door->setName("front");
    door->addObserver(*watcher, "name", Options::New | Options::Old, &context);
    door->setName("back");
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].keyPath, "name");
    EXPECT_EQ(watcher->told[0].object, door.get());
    EXPECT_EQ(watcher->told[0].context, &context);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"old", "front"}, {"new", "back"}}));
}

TEST_F(KeyValueObserving, NilIsToldAsTheNullMarker) {
    door->addObserver(*watcher, "name", Options::New | Options::Old);
    door->setName("front");
    door->setName(std::nullopt);
    ASSERT_EQ(watcher->told.size(), 2U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"old", NSNull{}}, {"new", "front"}}));
    EXPECT_EQ(watcher->told[1].change, (NSDictionary{{"kind", 1}, {"old", "front"}, {"new", NSNull{}}}));
}

TEST_F(KeyValueObserving, OptionsChooseWhatTheChangeHolds) {
    const auto onlyOld = std::make_shared<Watcher>();
    const auto onlyNew = std::make_shared<Watcher>();
    door->addObserver(*watcher, "width", Options::None);
    door->addObserver(*onlyOld, "width", Options::Old);
    door->addObserver(*onlyNew, "width", Options::New);
    door->setWidth(80);
    EXPECT_EQ(watcher->told.at(0).change, (NSDictionary{{"kind", 1}}));
    EXPECT_EQ(onlyOld->told.at(0).change, (NSDictionary{{"kind", 1}, {"old", 0}}));
    EXPECT_EQ(onlyNew->told.at(0).change, (NSDictionary{{"kind", 1}, {"new", 80}}));
}

TEST_F(KeyValueObserving, EqualValueSetAgainIsTold) {
    door->setWidth(80);
    door->addObserver(*watcher, "width", Options::New | Options::Old);
    door->setWidth(80);
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"old", 80}, {"new", 80}}));
}

TEST_F(KeyValueObserving, OtherKeysAreNotTold) {
    door->addObserver(*watcher, "name", Options::None);
    door->setWidth(1);
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObserving, DirectWriteIsNotTold) {
    door->addObserver(*watcher, "name", Options::None);
    door->setNameDirectly("front");
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObserving, SettingByKeyGoesThroughTheSetter) {
    door->addObserver(*watcher, "width", Options::New);
    door->setValueForKey(7, "width");
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"new", 7}}));
    EXPECT_THROW(door->setValueForKey(std::nullopt, "width"), NSInvalidArgumentException);
    EXPECT_EQ(watcher->told.size(), 1U);
}

TEST_F(KeyValueObserving, ChangeBesideTheSetterIsToldByItsAuthor) {
    door->addObserver(*watcher, "key", Options::New | Options::Old);
    door->setKey(1);
    EXPECT_TRUE(watcher->told.empty());
    door->willChangeValueForKey("key");
    door->setKey(2);
    EXPECT_TRUE(watcher->told.empty());
    door->didChangeValueForKey("key");
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"old", 1}, {"new", 2}}));
    door->didChangeValueForKey("key");
    EXPECT_EQ(watcher->told.size(), 1U) << "an end without a beginning";
}

TEST_F(KeyValueObserving, UnknownKeyFailsOnlyWhenItsValueIsAsked) {
    door->addObserver(*watcher, "colour", Options::None);
    door->willChangeValueForKey("colour");
    door->didChangeValueForKey("colour");
    EXPECT_EQ(watcher->told.size(), 1U);
    EXPECT_THROW(door->addObserver(*watcher, "colour", Options::Initial | Options::New), NSUndefinedKeyException);
    door->removeObserver(*watcher, "colour");
    EXPECT_THROW(door->removeObserver(*watcher, "colour"), NSRangeException);
}

TEST_F(KeyValueObserving, SeveralObserversAreToldInTheOrderOfRegistration) {
    std::vector<int> order;
    std::vector<std::shared_ptr<Watcher>> watchers;
    for (int index = 0; index < 4; ++index) {
        watchers.push_back(std::make_shared<Watcher>());
        watchers.back()->onChange = [&order, index] { order.push_back(index); };
        door->addObserver(*watchers.back(), "name", Options::None);
    }
    door->setName("front");
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3}));
}

TEST_F(KeyValueObserving, ObserverAddedTwiceIsToldTwiceAndEachRemovalTakesOne) {
    door->addObserver(*watcher, "name", Options::None);
    door->addObserver(*watcher, "name", Options::None);
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 2U);
    door->removeObserver(*watcher, "name");
    door->setName("b");
    EXPECT_EQ(watcher->told.size(), 3U);
    door->removeObserver(*watcher, "name");
    door->setName("c");
    EXPECT_EQ(watcher->told.size(), 3U);
}

TEST_F(KeyValueObserving, RemovalWithAContextTakesTheOneOfThatContext) {
    int first = 0;
    int second = 0;
    door->addObserver(*watcher, "name", Options::None, &first);
    door->addObserver(*watcher, "name", Options::None, &second);
    EXPECT_THROW(door->removeObserver(*watcher, "name", nullptr), NSRangeException);
    door->removeObserver(*watcher, "name", &first);
    door->setName("a");
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].context, &second);
    EXPECT_THROW(door->removeObserver(*watcher, "name", &first), NSRangeException);
}

TEST_F(KeyValueObserving, RemovingOneThatIsNotRegisteredRaises) {
    EXPECT_THROW(door->removeObserver(*watcher, "name"), NSRangeException);
    door->addObserver(*watcher, "width", Options::None);
    EXPECT_THROW(door->removeObserver(*watcher, "name"), NSRangeException);
    EXPECT_THROW(door->removeObserver(*door, "width"), NSRangeException);
    door->removeObserver(*watcher, "width");
    EXPECT_THROW(door->removeObserver(*watcher, "width"), NSRangeException);
}

TEST_F(KeyValueObserving, InitialTellsAtOnceAndWithoutAnOldValue) {
    door->setWidth(80);
    door->addObserver(*watcher, "width", Options::Initial | Options::New | Options::Old);
    ASSERT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"new", 80}}));
    const auto other = std::make_shared<Watcher>();
    door->addObserver(*other, "width", Options::Initial);
    EXPECT_EQ(other->told.at(0).change, (NSDictionary{{"kind", 1}}));
    EXPECT_EQ(watcher->told.size(), 1U);
}

TEST_F(KeyValueObserving, PriorTellsBeforeTheChangeAsWell) {
    std::vector<int> widths;
    watcher->onChange = [&] { widths.push_back(door->width()); };
    door->addObserver(*watcher, "width", Options::Prior | Options::New | Options::Old);
    door->setWidth(80);
    EXPECT_EQ(widths, (std::vector{0, 80}));
    ASSERT_EQ(watcher->told.size(), 2U);
    EXPECT_EQ(watcher->told[0].change, (NSDictionary{{"kind", 1}, {"notificationIsPrior", true}, {"old", 0}}));
    EXPECT_EQ(watcher->told[1].change, (NSDictionary{{"kind", 1}, {"old", 0}, {"new", 80}}));
}

TEST_F(KeyValueObserving, ObserverRemovedDuringANotificationIsNotToldOfThatChange) {
    const auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::None);
    door->addObserver(*second, "name", Options::None);
    watcher->onChange = [&] { door->removeObserver(*second, "name"); };
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 1U);
    EXPECT_TRUE(second->told.empty());
}

TEST_F(KeyValueObserving, ObserverAddedDuringANotificationSeesLaterChangesOnly) {
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

TEST_F(KeyValueObserving, ObserverThatPutsItselfBackDuringANotificationIsToldOnce) {
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

TEST_F(KeyValueObserving, NestedChangeIsToldToItsEndFirst) {
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

TEST_F(KeyValueObserving, NestedChangeBeforeTheChangeKeepsBothApart) {
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

TEST_F(KeyValueObserving, LastObserverMayGoBeforeTheChangeIsMade) {
    door->addObserver(*watcher, "width", Options::Prior);
    watcher->onChange = [&] { door->removeObserver(*watcher, "width"); };
    door->setWidth(9);
    EXPECT_EQ(watcher->told.size(), 1U);
    EXPECT_EQ(door->width(), 9);
}

TEST_F(KeyValueObserving, ObjectMayObserveItself) {
    const auto self = std::make_shared<Watcher>();
    self->addObserver(*self, "anything", Options::None);
    self->willChangeValueForKey("anything");
    self->didChangeValueForKey("anything");
    EXPECT_EQ(self->told.size(), 1U);
}

TEST_F(KeyValueObserving, ChangeThatNobodyDealsWithRaises) {
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

TEST_F(KeyValueObserving, StoreThatRaisesEndsTheChange) {
    door->addObserver(*watcher, "width", Options::New | Options::Old);
    EXPECT_THROW(door->change([] { throw std::runtime_error("stuck"); }), std::runtime_error);
    EXPECT_TRUE(watcher->told.empty());
    door->didChangeValueForKey("width");
    EXPECT_TRUE(watcher->told.empty());
    door->setWidth(2);
    EXPECT_EQ(watcher->told.size(), 1U);
    door->removeObserver(*watcher, "width");
}

TEST_F(KeyValueObserving, ObserverThatRaisesEndsTheNotification) {
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

TEST_F(KeyValueObserving, ObservedObjectMayDieWithObservers) {
    const std::weak_ptr<Door> life = door;
    door->addObserver(*watcher, "name", Options::None);
    door->willChangeValueForKey("name");
    door.reset();
    EXPECT_TRUE(life.expired()) << "an observation keeps the object";
    EXPECT_TRUE(watcher->told.empty());
}

TEST_F(KeyValueObserving, ObservedObjectMayBeLetGoWhileItTells) {
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

TEST_F(KeyValueObserving, ObservedObjectMayBeLetGoWhileItIsSetByKeyOrTellsInitially) {
    door->addObserver(*watcher, "width", Options::None);
    watcher->onChange = [&] { door.reset(); };
    door->setValueForKey(1, "width");
    EXPECT_EQ(watcher->told.size(), 1U);
    door = std::make_shared<Door>();
    door->addObserver(*watcher, "width", Options::Initial);
    EXPECT_EQ(watcher->told.size(), 2U);
    EXPECT_EQ(door, nullptr);
}

TEST_F(KeyValueObserving, ObserverIsNotRetained) {
    const std::weak_ptr<Watcher> life = watcher;
    door->addObserver(*watcher, "name", Options::None);
    door->removeObserver(*watcher, "name");
    watcher.reset();
    EXPECT_TRUE(life.expired());
}

TEST_F(KeyValueObserving, ObserverMayTakeItselfAwayAndDieWhileItIsTold) {
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

TEST_F(KeyValueObserving, ObserverThatDiedIsToldNothingMore) {
    door->addObserver(*watcher, "name", Options::New | Options::Prior);
    watcher.reset();
    door->setName("a");
    EXPECT_EQ(door->name(), "a");
}

TEST_F(KeyValueObserving, ObserverThatAnotherOneDestroysIsNotTold) {
    auto second = std::make_shared<Watcher>();
    door->addObserver(*watcher, "name", Options::None);
    door->addObserver(*second, "name", Options::None);
    watcher->onChange = [&] { second.reset(); };
    door->setName("a");
    EXPECT_EQ(watcher->told.size(), 1U);
}

TEST_F(KeyValueObserving, ObserverOutsideOfASharedPointerTakesItselfAway) {
    {
        Watcher local;
        door->addObserver(local, "name", Options::None);
        door->setName("a");
        EXPECT_EQ(local.told.size(), 1U);
        door->removeObserver(local, "name");
    }
    door->setName("b");
}

TEST_F(KeyValueObserving, ObserverAtTheAddressOfADeadOneIsItsOwn) {
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

TEST(NSObjectSelectors, UnrecognisedSelectorsGoThroughOneHook) {
    class Lenient : public NSObject {
    public:
        void doesNotRecognizeSelector(const NSString& selector) const override { asked = selector; }
        mutable NSString asked;
    };
    EXPECT_THROW(std::make_shared<NSObject>()->doesNotRecognizeSelector("fly"), NSInvalidArgumentException);
    const auto lenient = std::make_shared<Lenient>();
    EXPECT_EQ(lenient->performSelector("fly"), std::nullopt);
    EXPECT_EQ(lenient->asked, "fly");
}

} // namespace
} // namespace qk
