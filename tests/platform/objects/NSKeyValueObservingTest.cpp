// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"

#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include "tests/platform/objects/ObservedDoor.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

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

TEST_F(KeyValueObserving, ObjectMayObserveItself) {
    const auto self = std::make_shared<Watcher>();
    self->addObserver(*self, "anything", Options::None);
    self->willChangeValueForKey("anything");
    self->didChangeValueForKey("anything");
    EXPECT_EQ(self->told.size(), 1U);
}

} // namespace
} // namespace qk
