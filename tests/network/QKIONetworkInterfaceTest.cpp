// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKIOKitUtilities.h"
#include "QKFoundation/network/internal/QKIONetworkInterfaceFactory.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace qk {
namespace {

using namespace platform;
using memory::MemoryRegistryEntry;
using testing::ElementsAre;
using testing::IsEmpty;

class QKIONetworkInterfaceTest : public testing::Test {
protected:
    ~QKIONetworkInterfaceTest() override { EXPECT_EQ(registry.openHandles(), 0U); }

    void add(const NSDictionary& properties, const std::optional<NSDictionary>& parent = NSDictionary()) {
        MemoryRegistryEntry entry;
        entry.properties = properties;
        entry.parent = parent;
        registry.addEntry(entry);
    }
    void addLink(const NSString& name, std::int64_t status) {
        add({{"BSD Name", name}}, NSDictionary{{"IOLinkStatus", status}});
    }
    [[nodiscard]] std::shared_ptr<QKIONetworkInterface> find(const NSString& name) const {
        return QKIONetworkInterfaceFactory::hardwareInterfaceForBSDName(name, *machine.services());
    }
    static std::vector<std::string> names(const QKIONetworkInterfaceFactory::Interfaces& interfaces) {
        std::vector<std::string> result;
        for (const auto& interface : interfaces) {
            result.push_back(interface->name().utf8Lossy());
        }
        return result;
    }
    [[nodiscard]] std::vector<std::string> all() const {
        return names(QKIONetworkInterfaceFactory::hardwareInterfaces(*machine.services()));
    }
    [[nodiscard]] std::vector<std::string> active() const {
        return names(QKIONetworkInterfaceFactory::activeHardwareInterfaces(*machine.services()));
    }

    memory::Machine machine;
    memory::MemoryIORegistry& registry = machine.ioRegistry;
};

TEST_F(QKIONetworkInterfaceTest, ANameThatMatchesNothingGivesNothing) {
    EXPECT_EQ(find("eth0"), nullptr);
    add({{"BSD Name", "eth0"}});
    EXPECT_EQ(find("eth1"), nullptr);
    EXPECT_EQ(find("eth"), nullptr);
    EXPECT_EQ(find("ETH0"), nullptr);
    EXPECT_EQ(find(""), nullptr);
}

TEST_F(QKIONetworkInterfaceTest, AnEmptyRegistryGivesEmptyLists) {
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_THAT(active(), IsEmpty());
}

TEST_F(QKIONetworkInterfaceTest, ReadsTheInterfaceAndItsController) {
    add({{"BSD Name", "eth0"}, {"IOBuiltin", true}}, NSDictionary{{"IOLinkSpeed", std::int64_t{10'000'000'000}},
                                                                  {"IOLinkStatus", 3},
                                                                  {"IOVendor", "Example"},
                                                                  {"IOModel", "Gigabit"}});
    const auto interface = find("eth0");
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->name(), "eth0");
    EXPECT_TRUE(interface->builtin());
    EXPECT_TRUE(interface->linkActive());
    EXPECT_EQ(interface->linkSpeed(), 10'000'000'000);
    EXPECT_EQ(interface->hardwareModel(), "Example Gigabit");
}

TEST_F(QKIONetworkInterfaceTest, WithoutAParentItHasItsNameAndWhetherItIsBuiltIn) {
    add({{"BSD Name", "eth0"}, {"IOBuiltin", true}, {"IOLinkStatus", 3}, {"IOLinkSpeed", 5}}, std::nullopt);
    const auto interface = find("eth0");
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->name(), "eth0");
    EXPECT_TRUE(interface->builtin());
    EXPECT_FALSE(interface->linkActive());
    EXPECT_EQ(interface->linkSpeed(), 0);
    EXPECT_EQ(interface->hardwareModel(), std::nullopt);
}

TEST_F(QKIONetworkInterfaceTest, ACallForTheParentThatFailsOrGivesNoneIsNoParent) {
    add({{"BSD Name", "eth0"}}, NSDictionary{{"IOLinkSpeed", 5}});
    registry.setParentResult(KERN_FAILURE, false);
    EXPECT_EQ(find("eth0")->hardwareModel(), std::nullopt);
    registry.setParentResult(KERN_SUCCESS, false);
    EXPECT_EQ(find("eth0")->hardwareModel(), std::nullopt);
    registry.setParentResult(KERN_SUCCESS, true);
    EXPECT_EQ(find("eth0")->linkSpeed(), 5);
}

TEST_F(QKIONetworkInterfaceTest, TheLinkIsActiveByTheSecondBitOf32Alone) {
    const std::vector<std::pair<std::int64_t, bool>> table{{0, false},
                                                           {1, false},
                                                           {2, true},
                                                           {3, true},
                                                           {4, false},
                                                           {6, true},
                                                           {-1, true},
                                                           {-2, true},
                                                           {-3, false},
                                                           {std::int64_t{1} << 33U, false},
                                                           {(std::int64_t{1} << 33U) + 2, true},
                                                           {std::numeric_limits<std::int64_t>::min(), false}};
    for (const auto& [status, isActive] : table) {
        const NSString name = NSString("eth") + NSString::fromInteger(status);
        addLink(name, status);
        EXPECT_EQ(find(name)->linkActive(), isActive) << status;
    }
}

TEST_F(QKIONetworkInterfaceTest, AStatusThatIsNoNumberIsInactive) {
    add({{"BSD Name", "eth0"}}, NSDictionary{{"IOLinkStatus", "3"}});
    add({{"BSD Name", "eth1"}}, NSDictionary());
    EXPECT_FALSE(find("eth0")->linkActive());
    EXPECT_FALSE(find("eth1")->linkActive());
}

TEST_F(QKIONetworkInterfaceTest, OnlyTheBooleanTrueIsBuiltIn) {
    int number = 0;
    for (const Value& value : {Value(false), Value(1), Value("1"), Value("YES"), Value(1.0), Value(NSNull{})}) {
        const NSString name = NSString("eth") + NSString::fromInteger(number++);
        add({{"BSD Name", name}, {"IOBuiltin", value}});
        EXPECT_FALSE(find(name)->builtin()) << value.description().utf8Lossy();
    }
    add({{"BSD Name", "true"}, {"IOBuiltin", true}});
    add({{"BSD Name", "missing"}});
    add({{"BSD Name", "of the parent"}}, NSDictionary{{"IOBuiltin", true}});
    EXPECT_TRUE(find("true")->builtin());
    EXPECT_FALSE(find("missing")->builtin());
    EXPECT_FALSE(find("of the parent")->builtin());
}

TEST_F(QKIONetworkInterfaceTest, TheModelKeepsItsBlanks) {
    add({{"BSD Name", "both"}}, NSDictionary{{"IOVendor", "V"}, {"IOModel", "M"}});
    add({{"BSD Name", "model"}}, NSDictionary{{"IOModel", "M"}});
    add({{"BSD Name", "vendor"}}, NSDictionary{{"IOVendor", "V"}});
    add({{"BSD Name", "neither"}}, NSDictionary());
    add({{"BSD Name", "data"}}, NSDictionary{{"IOVendor", NSData("V")}, {"IOModel", NSData("M")}});
    EXPECT_EQ(find("both")->hardwareModel(), "V M");
    EXPECT_EQ(find("model")->hardwareModel(), " M");
    EXPECT_EQ(find("vendor")->hardwareModel(), "V ");
    EXPECT_EQ(find("neither")->hardwareModel(), " ");
    EXPECT_EQ(find("data")->hardwareModel(), " ");
}

TEST_F(QKIONetworkInterfaceTest, OnlyTheGeneralFailureEndsASearch) {
    add({{"BSD Name", "eth0"}});
    registry.setMatchingResult(KERN_FAILURE, true);
    EXPECT_EQ(find("eth0"), nullptr);
    EXPECT_THAT(all(), IsEmpty());
    registry.setMatchingResult(KERN_FAILURE, false);
    EXPECT_EQ(find("eth0"), nullptr);
    registry.setMatchingResult(4, true);
    EXPECT_NE(find("eth0"), nullptr);
    EXPECT_THAT(all(), ElementsAre("eth0"));
    registry.setMatchingResult(4, false);
    EXPECT_EQ(find("eth0"), nullptr);
    EXPECT_THAT(all(), IsEmpty());
    registry.setMatchingResult(KERN_SUCCESS, false);
    EXPECT_EQ(find("eth0"), nullptr);
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(QKIONetworkInterfaceTest, WithoutAMatchingDictionaryThereIsNothing) {
    add({{"BSD Name", "eth0"}});
    registry.refuseMatching(true);
    EXPECT_EQ(find("eth0"), nullptr);
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(QKIONetworkInterfaceTest, OnlyTheFirstMatchCounts) {
    addLink("eth0", 0);
    addLink("eth0", 3);
    EXPECT_FALSE(find("eth0")->linkActive());
    EXPECT_THAT(all(), ElementsAre("eth0", "eth0"));
}

TEST_F(QKIONetworkInterfaceTest, ANameMayBeThatOfAnotherDeviceWhileTheListHasInterfacesOnly) {
    MemoryRegistryEntry disk;
    disk.classes = {"IOMedia"};
    disk.properties = NSDictionary{{"BSD Name", "disk0"}};
    registry.addEntry(disk);
    addLink("eth0", 3);
    ASSERT_NE(find("disk0"), nullptr);
    EXPECT_EQ(find("disk0")->name(), "disk0");
    EXPECT_THAT(all(), ElementsAre("eth0"));
}

TEST_F(QKIONetworkInterfaceTest, ListsClassesThatInheritInTheRegistrysOrder) {
    addLink("eth1", 1);
    MemoryRegistryEntry ethernet;
    ethernet.classes = {"IOEthernetInterface", "IONetworkInterface"};
    ethernet.properties = NSDictionary{{"BSD Name", "eth0"}};
    ethernet.parent = NSDictionary{{"IOLinkStatus", 2}};
    registry.addEntry(ethernet);
    add({});
    addLink("wlan0", 3);
    EXPECT_THAT(all(), ElementsAre("eth1", "eth0", "", "wlan0"));
    EXPECT_THAT(active(), ElementsAre("eth0", "wlan0"));
}

TEST_F(QKIONetworkInterfaceTest, EachOperationIsOneReading) {
    addLink("eth0", 3);
    (void)find("eth0");
    (void)all();
    EXPECT_EQ(machine.systemConfiguration.readingsBegun(), 2U);
    EXPECT_EQ(machine.systemConfiguration.openReadings(), 0U);
}

TEST_F(QKIONetworkInterfaceTest, EveryFieldCanBeLookedUpAndSetByName) {
    add({{"BSD Name", "eth0"}});
    const auto interface = find("eth0");
    EXPECT_TRUE(interface->conformsToProtocol("QKIONetworkInterface"));
    EXPECT_EQ(interface->valueForKey("hardwareModel"), Value(" "));
    interface->setValueForKey(Value("x"), "name");
    interface->setValueForKey(Value(true), "builtin");
    interface->setValueForKey(Value(true), "linkActive");
    interface->setValueForKey(Value(7), "linkSpeed");
    interface->setValueForKey(std::nullopt, "hardwareModel");
    EXPECT_EQ(interface->valueForKey("name"), Value("x"));
    EXPECT_EQ(interface->valueForKey("builtin"), Value(true));
    EXPECT_EQ(interface->valueForKey("linkActive"), Value(true));
    EXPECT_EQ(interface->valueForKey("linkSpeed"), Value(7));
    EXPECT_EQ(interface->valueForKey("hardwareModel"), std::nullopt);
}

TEST_F(QKIONetworkInterfaceTest, DescriptionLeavesOutWhetherItIsBuiltIn) {
    add({{"BSD Name", "eth0"}, {"IOBuiltin", true}}, std::nullopt);
    const auto interface = find("eth0");
    EXPECT_EQ(interface->description(),
              interface->NSObject::description() +
                  "{\n    hardwareModel = \"<null>\";\n    linkActive = 0;\n    linkSpeed = 0;\n    name = eth0;\n}");
}

// Getters of one entry's properties.
class QKIOKitUtilitiesTest : public QKIONetworkInterfaceTest {
protected:
    QKIOKitUtilitiesTest() {
        add({{"text", "t"},
             {"number", 4294967297},
             {"true", true},
             {"false", false},
             {"real", 2.9},
             {"data", NSData("x")}});
        const auto matching = registry.serviceMatching(kIONetworkInterfaceClass);
        std::unique_ptr<IOIterator> iterator;
        EXPECT_EQ(registry.getMatchingServices(matching.value(), iterator), KERN_SUCCESS);
        entry = iterator->next();
    }
    ~QKIOKitUtilitiesTest() override { registry.objectRelease(entry); }

    io_registry_entry_t entry = IO_OBJECT_NULL;
};

TEST_F(QKIOKitUtilitiesTest, WhatIsMissingOrOfAnotherTypeHasAFixedAnswer) {
    for (const NSString& key : {NSString("missing"), NSString("data"), NSString("true")}) {
        EXPECT_EQ(QKIOKitUtilities::stringPropertyForIOService(registry, entry, key), "");
        EXPECT_EQ(QKIOKitUtilities::numberPropertyForIOService(registry, entry, key), NSNumber(0));
        EXPECT_EQ(QKIOKitUtilities::intPropertyForIOService(registry, entry, key), 0);
        EXPECT_EQ(QKIOKitUtilities::integerPropertyForIOService(registry, entry, key), 0);
    }
    for (const NSString& key : {NSString("missing"), NSString("text"), NSString("number"), NSString("false")}) {
        EXPECT_FALSE(QKIOKitUtilities::boolPropertyForIOService(registry, entry, key));
    }
    EXPECT_EQ(QKIOKitUtilities::stringPropertyForIOService(registry, entry, "number"), "");
    EXPECT_EQ(QKIOKitUtilities::stringPropertyForIOService(registry, IO_OBJECT_NULL, "text"), "");
}

TEST_F(QKIOKitUtilitiesTest, ValuesOfTheirTypeAreRead) {
    EXPECT_EQ(QKIOKitUtilities::stringPropertyForIOService(registry, entry, "text"), "t");
    EXPECT_EQ(QKIOKitUtilities::numberPropertyForIOService(registry, entry, "real"), NSNumber(2.9));
    EXPECT_TRUE(QKIOKitUtilities::boolPropertyForIOService(registry, entry, "true"));
    EXPECT_EQ(QKIOKitUtilities::intPropertyForIOService(registry, entry, "number"), 1);
    EXPECT_EQ(QKIOKitUtilities::integerPropertyForIOService(registry, entry, "number"), 4294967297);
    EXPECT_EQ(QKIOKitUtilities::integerPropertyForIOService(registry, entry, "real"), 2);
}

} // namespace
} // namespace qk
