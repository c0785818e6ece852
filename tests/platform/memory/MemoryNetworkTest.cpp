// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryNetwork.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qk::platform::memory {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

template <typename... Texts>
auto elementsAreTexts(const Texts&... texts) {
    return testing::ElementsAreArray(std::vector<NSString>{NSString(texts)...});
}

TEST(MemorySystemConfiguration, StartsWithAnEmptyStoreAndNoServices) {
    const MemorySystemConfiguration configuration;
    const auto store = configuration.createDynamicStore(NSString("test"));
    ASSERT_NE(store, nullptr);
    EXPECT_EQ(store->copyValue("State:/Network/Global/IPv4"), std::nullopt);
    EXPECT_THAT(store->copyKeyList(".*"), Optional(IsEmpty()));
    const auto preferences = configuration.createPreferences("test");
    ASSERT_NE(preferences, nullptr);
    EXPECT_THAT(preferences->copyAllServices(), Optional(IsEmpty()));
}

TEST(MemorySystemConfiguration, ListsWholeKeysInTheOrderInWhichTheyCame) {
    MemorySystemConfiguration configuration;
    for (const NSString& key : {NSString("b"), NSString("ab"), NSString("a"), NSString("ba")}) {
        configuration.setStoreValue(key, Value(1));
    }
    const auto store = configuration.createDynamicStore(std::nullopt);
    EXPECT_THAT(store->copyKeyList("a?b"), Optional(elementsAreTexts("b", "ab")));
    EXPECT_THAT(store->copyKeyList("(a|b)+"), Optional(elementsAreTexts("b", "ab", "a", "ba")));
    configuration.setStoreValue("b", Value(2));
    EXPECT_THAT(store->copyKeyList(".*"), Optional(elementsAreTexts("b", "ab", "a", "ba")))
        << "a new value moves no key";
    EXPECT_EQ(store->copyValue("b"), Value(2));
    configuration.setStoreValue("b", std::nullopt);
    configuration.setStoreValue("b", Value(3));
    EXPECT_THAT(store->copyKeyList(".*"), Optional(elementsAreTexts("ab", "a", "ba", "b")));
}

TEST(MemorySystemConfiguration, APatternThatIsNoneGivesNoList) {
    MemorySystemConfiguration configuration;
    configuration.setStoreValue("a", Value(1));
    const auto store = configuration.createDynamicStore(std::nullopt);
    EXPECT_EQ(store->copyKeyList("("), std::nullopt);
    EXPECT_EQ(store->copyKeyList("[a"), std::nullopt);
}

TEST(MemorySystemConfiguration, AKeyOfAnyLengthIsSurvived) {
    MemorySystemConfiguration configuration;
    const NSString key(std::u16string(1'000'000, u'a'));
    configuration.setStoreValue(key, Value(1));
    const auto store = configuration.createDynamicStore(std::nullopt);
    EXPECT_EQ(store->copyValue(key), Value(1));
    EXPECT_THAT(store->copyKeyList(".*"), Optional(IsEmpty()));
}

TEST(MemorySystemConfiguration, RefusesWhatItIsToldTo) {
    MemorySystemConfiguration configuration;
    const auto store = configuration.createDynamicStore(std::nullopt);
    configuration.refuseConnections(true);
    configuration.refuseKeyLists(true);
    configuration.refusePreferences(true);
    EXPECT_EQ(configuration.createDynamicStore(std::nullopt), nullptr);
    EXPECT_EQ(store->copyKeyList(".*"), std::nullopt);
    EXPECT_EQ(configuration.createPreferences("test"), nullptr);
    configuration.refusePreferences(false);
    configuration.setServices(std::nullopt);
    EXPECT_EQ(configuration.createPreferences("test")->copyAllServices(), std::nullopt);
    configuration.addService(nullptr);
    EXPECT_THAT(configuration.createPreferences("test")->copyAllServices(), Optional(ElementsAre(nullptr)));
}

TEST(MemorySystemConfiguration, RemembersWhatItWasAsked) {
    MemorySystemConfiguration configuration;
    const auto store = configuration.createDynamicStore(NSString("a"));
    (void)configuration.createDynamicStore(std::nullopt);
    (void)store->copyValue("k2");
    (void)store->copyValue("k1");
    (void)store->copyKeyList("p");
    (void)configuration.createPreferences("n");
    EXPECT_THAT(configuration.connectionNames(), ElementsAre(NSString("a"), std::nullopt));
    EXPECT_THAT(configuration.keysRead(), elementsAreTexts("k2", "k1"));
    EXPECT_THAT(configuration.patterns(), elementsAreTexts("p"));
    EXPECT_THAT(configuration.preferencesNames(), elementsAreTexts("n"));
    configuration.forgetRequests();
    EXPECT_THAT(configuration.connectionNames(), IsEmpty());
    EXPECT_THAT(configuration.keysRead(), IsEmpty());
    EXPECT_THAT(configuration.patterns(), IsEmpty());
    EXPECT_THAT(configuration.preferencesNames(), IsEmpty());
}

TEST(MemorySystemConfiguration, AConnectionMayOutliveIt) {
    auto configuration = std::make_unique<MemorySystemConfiguration>();
    configuration->setStoreValue("k", Value(1));
    const auto store = configuration->createDynamicStore(std::nullopt);
    const auto reading = configuration->beginReading();
    configuration.reset();
    EXPECT_EQ(store->copyValue("k"), Value(1));
}

TEST(MemoryIORegistry, HandlesAreCountedUntilTheyComeBack) {
    MemoryIORegistry registry;
    EXPECT_FALSE(registry.hasEntry("eth0"));
    MemoryRegistryEntry entry;
    entry.properties = NSDictionary{{"BSD Name", "eth0"}};
    entry.parent = NSDictionary{{"IOLinkSpeed", 5}};
    registry.addEntry(entry);
    EXPECT_TRUE(registry.hasEntry("eth0"));
    std::unique_ptr<IOIterator> iterator;
    ASSERT_EQ(registry.getMatchingServices(registry.bsdNameMatching("eth0").value(), iterator), KERN_SUCCESS);
    const io_object_t found = iterator->next();
    EXPECT_EQ(iterator->next(), IO_OBJECT_NULL);
    io_object_t parent = IO_OBJECT_NULL;
    EXPECT_EQ(registry.entryParent(found, "IODeviceTree", parent), KERN_FAILURE) << "of another plane";
    ASSERT_EQ(registry.entryParent(found, kIOServicePlane, parent), KERN_SUCCESS);
    EXPECT_EQ(registry.openHandles(), 2U);
    EXPECT_EQ(registry.entryProperty(parent, "IOLinkSpeed"), Value(5));
    registry.objectRelease(parent);
    registry.objectRelease(IO_OBJECT_NULL);
    EXPECT_EQ(registry.entryProperty(parent, "IOLinkSpeed"), std::nullopt) << "was given back";
    EXPECT_EQ(registry.openHandles(), 1U);
    registry.objectRelease(found);
    EXPECT_EQ(registry.openHandles(), 0U);
}

TEST(MemoryNetwork, EachServiceGetsAnIdentifierOfItsOwnUnlessItHasOne) {
    Machine machine;
    EXPECT_EQ(machine.network.addService(), "00000000-0000-4000-8000-000000000001");
    EXPECT_EQ(machine.network.addService(), "00000000-0000-4000-8000-000000000002");
    EXPECT_EQ(machine.network.addService({.serviceID = NSString("own")}), "own");
    const auto services = machine.systemConfiguration.createPreferences("test")->copyAllServices();
    ASSERT_EQ(services->size(), 3U);
    EXPECT_EQ(services->at(2)->serviceID, "own");
}

TEST(MemoryNetwork, WhatIsLeftEmptyIsNotThere) {
    Machine machine;
    machine.network.addService(
        {.serviceID = NSString("S"), .ipv4Addresses = {}, .ipv6Addresses = {}, .nameServers = {}});
    const auto store = machine.systemConfiguration.createDynamicStore(std::nullopt);
    EXPECT_THAT(store->copyKeyList(".*"),
                Optional(elementsAreTexts("Setup:/Network/Service/S", "Setup:/Network/Service/S/Interface",
                                          "State:/Network/Interface/eth0/Link")));
}

} // namespace
} // namespace qk::platform::memory
