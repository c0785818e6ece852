// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/runtime/QKWeakContainer.h"
#include "QKFoundation/runtime/QKWeakDictionary.h"
#include "QKFoundation/runtime/QKWeakProxy.h"

#include "tests/platform/objects/ObservedDoor.h"
#include "tests/runtime/Animals.h"

#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <thread>

namespace qk {
namespace {

using tests::Animal;

std::array<std::optional<Value>, 1> with(Value argument) {
    return {std::move(argument)};
}

TEST(QKWeakContainer, NewContainerIsEmpty) {
    EXPECT_EQ(QKWeakContainer::init()->content(), nullptr);
}

TEST(QKWeakContainer, ContentIsNotKeptAlive) {
    const auto container = QKWeakContainer::init();
    auto animal = std::make_shared<Animal>();
    container->setContent(animal);
    EXPECT_EQ(container->content(), animal);
    EXPECT_EQ(container->valueForKey("content"), std::optional<Value>(animal));
    animal.reset();
    EXPECT_EQ(container->content(), nullptr);
    EXPECT_EQ(container->valueForKey("content"), std::nullopt);
}

TEST(QKWeakContainer, ObjectMayDieOnAnotherThreadWhileItIsRead) {
    for (int round = 0; round < 100; ++round) {
        const auto container = QKWeakContainer::init();
        auto animal = std::make_shared<Animal>("Ada");
        container->setContent(animal);
        std::barrier start(2);
        std::thread ending([&] {
            start.arrive_and_wait();
            animal.reset();
        });
        start.arrive_and_wait();
        if (const auto content = std::dynamic_pointer_cast<Animal>(container->content())) {
            EXPECT_EQ(content->name(), "Ada");
        }
        ending.join();
        EXPECT_EQ(container->content(), nullptr);
    }
}

TEST(QKWeakDictionary, UnknownKeyHasNoObject) {
    const auto dictionary = QKWeakDictionary::init();
    EXPECT_EQ(dictionary->objectForKeyedSubscript("a"), nullptr);
    EXPECT_EQ(dictionary->dictionary().count(), 0U);
}

TEST(QKWeakDictionary, EntryOfADeadObjectStays) {
    const auto dictionary = QKWeakDictionary::init();
    auto animal = std::make_shared<Animal>();
    dictionary->setObject(animal, "a");
    EXPECT_EQ(dictionary->objectForKeyedSubscript("a"), animal);
    animal.reset();
    EXPECT_EQ(dictionary->objectForKeyedSubscript("a"), nullptr);
    EXPECT_EQ(dictionary->dictionary().count(), 1U);
}

TEST(QKWeakDictionary, SettingNothingLeavesAnEmptyContainer) {
    const auto dictionary = QKWeakDictionary::init();
    dictionary->setObject(nullptr, "a");
    EXPECT_EQ(dictionary->objectForKeyedSubscript("a"), nullptr);
    ASSERT_NE(dictionary->dictionary().objectForKey("a"), nullptr);
    EXPECT_NE(dictionary->dictionary().objectForKey("a")->asObject<QKWeakContainer>(), nullptr);
}

TEST(QKWeakDictionary, SettingAKeyAgainMakesANewContainer) {
    const auto dictionary = QKWeakDictionary::init();
    const auto one = std::make_shared<Animal>();
    const auto other = std::make_shared<Animal>();
    dictionary->setObject(one, "a");
    const auto container = dictionary->dictionary().objectForKey("a")->asObject<QKWeakContainer>();
    dictionary->setObject(other, "a");
    EXPECT_EQ(dictionary->objectForKeyedSubscript("a"), other);
    EXPECT_EQ(container->content(), one);
}

TEST(QKWeakProxy, WithoutATargetNoMessageIsRecognised) {
    const auto proxy = QKWeakProxy::initWithObject(nullptr);
    EXPECT_EQ(proxy->qkUnsafeUnretainedContentObject(), nullptr);
    EXPECT_FALSE(proxy->respondsToSelector("name"));
    EXPECT_EQ(proxy->methodSignatureForSelector("name"), std::nullopt);
    EXPECT_THROW(proxy->performSelector("name"), NSInvalidArgumentException);
}

TEST(QKWeakProxy, MessagesReachTheTarget) {
    Animal animal("Ada");
    const auto proxy = QKWeakProxy::initWithObject(&animal);
    EXPECT_EQ(proxy->performSelector("name"), std::optional<Value>("Ada"));
    EXPECT_EQ(proxy->performSelector("setName:", with("Bea")), std::nullopt);
    EXPECT_EQ(animal.name(), "Bea");
    EXPECT_TRUE(proxy->respondsToSelector("name"));
    EXPECT_EQ(proxy->methodSignatureForSelector("setName:")->numberOfArguments, 1U);
}

TEST(QKWeakProxy, MessageThatTheTargetDoesNotKnowIsDropped) {
    Animal animal("Ada");
    const auto proxy = QKWeakProxy::initWithObject(&animal);
    EXPECT_FALSE(proxy->respondsToSelector("fly:"));
    EXPECT_EQ(proxy->performSelector("fly:", with(7)), std::nullopt);
    EXPECT_EQ(animal.name(), "Ada");
}

// Has signatures of what it does not respond to.
class Dreamer : public Animal {
public:
    bool respondsToSelector(const NSString& /*selector*/) const override { return false; }
};

TEST(QKWeakProxy, DroppedMessageGivesTheZeroOfItsSignature) {
    Dreamer dreamer;
    const auto proxy = QKWeakProxy::initWithObject(&dreamer);
    EXPECT_EQ(proxy->performSelector("legs"), std::optional<Value>(0));
    EXPECT_EQ(proxy->performSelector("name"), std::nullopt);
}

TEST(QKWeakProxy, TargetIsNotRetainedAndCanBeChanged) {
    auto animal = std::make_shared<Animal>();
    const auto proxy = QKWeakProxy::initWithObject(animal.get());
    EXPECT_EQ(animal.use_count(), 1);
    Animal other("Bea");
    proxy->setQkUnsafeUnretainedContentObject(&other);
    animal.reset();
    EXPECT_EQ(proxy->performSelector("name"), std::optional<Value>("Bea"));
}

TEST(QKWeakProxy, AsAnObserverWithoutATargetItRaises) {
    const auto door = std::make_shared<Door>();
    const auto proxy = QKWeakProxy::initWithObject(nullptr);
    door->addObserver(*proxy, "width", NSKeyValueObservingOptions::New);
    EXPECT_THROW(door->setWidth(90), NSInvalidArgumentException);
    door->removeObserver(*proxy, "width");
}

TEST(QKWeakProxy, AsAnObserverItTellsItsTarget) {
    const auto door = std::make_shared<Door>();
    Watcher watcher;
    int context = 0;
    const auto proxy = QKWeakProxy::initWithObject(&watcher);
    door->addObserver(*proxy, "width", NSKeyValueObservingOptions::New, &context);
    door->setWidth(90);
    door->removeObserver(*proxy, "width");
    door->setWidth(80);
    ASSERT_EQ(watcher.told.size(), 1U);
    EXPECT_EQ(watcher.told[0].keyPath, "width");
    EXPECT_EQ(watcher.told[0].object, door.get());
    EXPECT_EQ(watcher.told[0].change, (NSDictionary{{NSKeyValueChangeKindKey, 1}, {NSKeyValueChangeNewKey, 90}}));
    EXPECT_EQ(watcher.told[0].context, &context);
}

TEST(QKWeakProxy, ProxiesCanBeChained) {
    Animal animal("Ada");
    const auto inner = QKWeakProxy::initWithObject(&animal);
    const auto outer = QKWeakProxy::initWithObject(inner.get());
    EXPECT_EQ(outer->performSelector("name"), std::optional<Value>("Ada"));
}

} // namespace
} // namespace qk
