// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCDynamicStore.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace qk {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

const NSString kID = "0123ABCD-4567-89AB-CDEF-0123456789AB";
const NSString kOtherID = "FEDCBA98-7654-3210-FEDC-BA9876543210";
const NSDictionary kFound{{"found", true}};

template <typename... Texts>
auto elementsAreTexts(const Texts&... texts) {
    return testing::ElementsAreArray(std::vector<NSString>{NSString(texts)...});
}

class QKSCDynamicStoreTest : public testing::Test {
protected:
    QKSCDynamicStoreTest() {
        machine.processInfo.setMainBundlePath("/opt/app");
        machine.fileManager.addPropertyList("/opt/app/Contents/Info.plist",
                                            NSDictionary{{"CFBundleIdentifier", "com.example.app"}});
    }

    void configure(const NSString& key, const Value& value = NSDictionary()) {
        machine.systemConfiguration.setStoreValue(key, value);
    }
    [[nodiscard]] std::shared_ptr<QKSCDynamicStore> store() const {
        return QKSCDynamicStore::init(*machine.services());
    }

    memory::Machine machine;
};

TEST_F(QKSCDynamicStoreTest, AnEmptyStoreHasNothing) {
    EXPECT_EQ(store()->dictionaryForKey("State:/Network/Global/IPv4"), std::nullopt);
    EXPECT_THAT(store()->configuredNetworkServiceKeys(), IsEmpty());
    EXPECT_THAT(store()->configuredNetworkServiceIds(), IsEmpty());
}

TEST_F(QKSCDynamicStoreTest, WithoutAConnectionThereIsNothing) {
    configure("Setup:/Network/Service/" + kID + "/Interface", kFound);
    machine.systemConfiguration.refuseConnections(true);
    EXPECT_EQ(store()->networkServiceInterfaceSetupForServiceId(kID), std::nullopt);
    EXPECT_THAT(store()->configuredNetworkServiceKeys(), IsEmpty());
    EXPECT_THAT(store()->configuredNetworkServiceIds(), IsEmpty());
    EXPECT_THAT(machine.systemConfiguration.keysRead(), IsEmpty());
    EXPECT_THAT(machine.systemConfiguration.patterns(), IsEmpty());
}

TEST_F(QKSCDynamicStoreTest, AListThatCannotBeHadIsEmpty) {
    configure("Setup:/Network/Service/" + kID + "/Interface");
    machine.systemConfiguration.refuseKeyLists(true);
    EXPECT_THAT(store()->configuredNetworkServiceKeys(), IsEmpty());
    EXPECT_THAT(store()->configuredNetworkServiceIds(), IsEmpty());
}

TEST_F(QKSCDynamicStoreTest, ADictionaryIsReadAndNothingElseIs) {
    configure("dictionary", kFound);
    configure("array", NSArray{"a"});
    configure("text", "a");
    configure("null", NSNull{});
    EXPECT_EQ(store()->dictionaryForKey("dictionary"), kFound);
    EXPECT_EQ(store()->dictionaryForKey("array"), std::nullopt);
    EXPECT_EQ(store()->dictionaryForKey("text"), std::nullopt);
    EXPECT_EQ(store()->dictionaryForKey("null"), std::nullopt);
}

TEST_F(QKSCDynamicStoreTest, EachReadOpensAConnectionUnderTheBundlesIdentifier) {
    const auto reader = store();
    (void)reader->networkGlobalIPv4State();
    (void)reader->networkGlobalIPv6State();
    (void)reader->configuredNetworkServiceIds();
    EXPECT_THAT(machine.systemConfiguration.connectionNames(),
                ElementsAre(NSString("com.example.app"), NSString("com.example.app"), NSString("com.example.app")));
}

TEST_F(QKSCDynamicStoreTest, AProgramWithoutABundleConnectsWithoutAName) {
    const memory::Machine bare;
    EXPECT_EQ(QKSCDynamicStore::init(*bare.services())->networkGlobalIPv4State(), std::nullopt);
    EXPECT_THAT(bare.systemConfiguration.connectionNames(), ElementsAre(std::nullopt));
}

TEST_F(QKSCDynamicStoreTest, AnIdentifierThatIsNoTextIsNone) {
    memory::Machine odd;
    odd.processInfo.setMainBundlePath("/opt/app");
    odd.fileManager.addPropertyList("/opt/app/Contents/Info.plist", NSDictionary{{"CFBundleIdentifier", 7}});
    EXPECT_EQ(QKSCDynamicStore::init(*odd.services())->networkGlobalIPv4State(), std::nullopt);
    EXPECT_THAT(odd.systemConfiguration.connectionNames(), ElementsAre(std::nullopt));
}

TEST_F(QKSCDynamicStoreTest, TheSlotForAConnectionIsNeverUsed) {
    const auto reader = store();
    EXPECT_EQ(reader->dynamicStoreRef(), nullptr);
    const auto connection = machine.systemConfiguration.createDynamicStore(std::nullopt);
    reader->setDynamicStoreRef(connection.get());
    machine.systemConfiguration.forgetRequests();
    (void)reader->networkGlobalIPv4State();
    EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 1U);
    EXPECT_EQ(reader->dynamicStoreRef(), connection.get());
}

// Every getter, and the one key that it reads.
struct Getter {
    const char* name;
    QKSCDynamicStore::Dictionary (*read)(const QKSCDynamicStore& store);
    NSString key;
};

std::vector<Getter> getters() {
    using S = const QKSCDynamicStore&;
    const NSString setup = "Setup:/Network/Service/" + kID;
    const NSString state = "State:/Network/Service/" + kID;
    const NSString interface = "State:/Network/Interface/eth0";
    return {
        {"Service", [](S s) { return s.networkServiceSetupForServiceId(kID); }, setup},
        {"Interface", [](S s) { return s.networkServiceInterfaceSetupForServiceId(kID); }, setup + "/Interface"},
        {"IPv4Setup", [](S s) { return s.networkServiceIPv4SetupForServiceId(kID); }, setup + "/IPv4"},
        {"IPv6Setup", [](S s) { return s.networkServiceIPv6SetupForServiceId(kID); }, setup + "/IPv6"},
        {"ProxiesSetup", [](S s) { return s.networkServiceProxiesSetupForServiceId(kID); }, setup + "/Proxies"},
        {"IPv4State", [](S s) { return s.networkServiceIPv4StateForServiceId(kID); }, state + "/IPv4"},
        {"IPv6State", [](S s) { return s.networkServiceIPv6StateForServiceId(kID); }, state + "/IPv6"},
        {"DHCPState", [](S s) { return s.networkServiceDHCPStateForServiceId(kID); }, state + "/DHCP"},
        {"DNSState", [](S s) { return s.networkServiceDNSStateForServiceId(kID); }, state + "/DNS"},
        {"InterfaceState", [](S s) { return s.networkInterfaceState(); }, "State::/Network/Interface"},
        {"InterfaceIPv4", [](S s) { return s.networkInterfaceIPv4StateForInterfaceName("eth0"); }, interface + "/IPv4"},
        {"InterfaceIPv6", [](S s) { return s.networkInterfaceIPv6StateForInterfaceName("eth0"); }, interface + "/IPv6"},
        {"InterfaceLink", [](S s) { return s.networkInterfaceLinkStateForInterfaceName("eth0"); }, interface + "/Link"},
        {"InterfaceAirPort", [](S s) { return s.networkInterfaceAirPortStateForInterfaceName("eth0"); },
         interface + "/AirPort"},
        {"InterfaceLinkQuality", [](S s) { return s.networkInterfaceLinkQualityStateForInterfaceName("eth0"); },
         interface + "/LinkQuality"},
        {"InterfaceCaptiveNetwork", [](S s) { return s.networkInterfaceCaptiveNetworkStateForInterfaceName("eth0"); },
         interface + "/CaptiveNetwork"},
        {"InterfaceSleepProxyServers",
         [](S s) { return s.networkInterfaceSleepProxyServersStateForInterfaceName("eth0"); },
         interface + "/SleepProxyServers"},
        {"GlobalIPv4Setup", [](S s) { return s.networkGlobalIPv4Setup(); }, "Setup:/Network/Global/IPv4"},
        {"GlobalIPv4State", [](S s) { return s.networkGlobalIPv4State(); }, "State:/Network/Global/IPv4"},
        {"GlobalIPv6State", [](S s) { return s.networkGlobalIPv6State(); }, "State:/Network/Global/IPv6"},
        {"GlobalDNSState", [](S s) { return s.networkGlobalDNSState(); }, "State:/Network/Global/DNS"},
        {"GlobalProxiesState", [](S s) { return s.networkGlobalProxiesState(); }, "State:/Network/Global/Proxies"}};
}

TEST_F(QKSCDynamicStoreTest, EachGetterReadsItsOneKeyOnce) {
    for (const Getter& getter : getters()) {
        SCOPED_TRACE(getter.name);
        machine.systemConfiguration.forgetRequests();
        EXPECT_EQ(getter.read(*store()), std::nullopt);
        EXPECT_THAT(machine.systemConfiguration.keysRead(), ElementsAre(getter.key));
        EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 1U);
        configure(getter.key, kFound);
        EXPECT_EQ(getter.read(*store()), kFound);
        configure(getter.key, NSArray{"a"});
        EXPECT_EQ(getter.read(*store()), std::nullopt);
    }
}

TEST_F(QKSCDynamicStoreTest, TheStateOfAllInterfacesIsNotFoundUnderTheOrdinaryKey) {
    configure("State:/Network/Interface", kFound);
    EXPECT_EQ(store()->networkInterfaceState(), std::nullopt);
}

TEST_F(QKSCDynamicStoreTest, KeyBuildersTakeAnyDomainAndEntity) {
    configure("Plugin:/Network/Service/s/E", NSDictionary{{"n", 1}});
    configure("Plugin:/Network/Service/s", NSDictionary{{"n", 2}});
    configure("Plugin:/Network/Interface/i/E", NSDictionary{{"n", 3}});
    configure("Plugin:/Network/Global/E", NSDictionary{{"n", 4}});
    configure("Plugin::/p", NSDictionary{{"n", 5}});
    const auto reader = store();
    EXPECT_EQ(reader->networkServiceDictionaryForDomain("Plugin:", "s", NSString("E")), (NSDictionary{{"n", 1}}));
    EXPECT_EQ(reader->networkServiceDictionaryForDomain("Plugin:", "s", std::nullopt), (NSDictionary{{"n", 2}}));
    EXPECT_EQ(reader->networkInterfaceDictionaryForDomain("Plugin:", "i", "E"), (NSDictionary{{"n", 3}}));
    EXPECT_EQ(reader->networkGlobalDictionaryForDomain("Plugin:", "E"), (NSDictionary{{"n", 4}}));
    EXPECT_EQ(reader->networkInterfaceDictionaryForDomain("Plugin:", "/p"), (NSDictionary{{"n", 5}}));
}

TEST_F(QKSCDynamicStoreTest, AnInterfaceWithoutANameIsAskedForAllTheSame) {
    (void)store()->networkInterfaceIPv4StateForInterfaceName("");
    EXPECT_THAT(machine.systemConfiguration.keysRead(), elementsAreTexts("State:/Network/Interface//IPv4"));
}

TEST_F(QKSCDynamicStoreTest, ListedAreTheWholeKeysOfServicesInterfacesInTheStoresOrder) {
    configure("Setup:/Network/Service/" + kOtherID + "/Interface", "any value");
    configure("Setup:/Network/Service/" + kID + "/Interface/x");
    configure("xSetup:/Network/Service/" + kID + "/Interface");
    configure("State:/Network/Service/" + kID + "/Interface");
    configure("Setup:/Network/Service/" + kID + "/IPv4");
    configure("Setup:/Network/Service/" + kID + "/x/Interface");
    configure("Setup:/Network/Service/" + kID + "/Interface");
    EXPECT_THAT(store()->configuredNetworkServiceKeys(),
                ElementsAre("Setup:/Network/Service/" + kOtherID + "/Interface",
                            "Setup:/Network/Service/" + kID + "/x/Interface",
                            "Setup:/Network/Service/" + kID + "/Interface"));
    EXPECT_THAT(machine.systemConfiguration.patterns(), elementsAreTexts("Setup:/Network/Service/.*/Interface"));
}

TEST_F(QKSCDynamicStoreTest, IdentifiersKeepTheStoresOrderAndRepeat) {
    configure("Setup:/Network/Service/" + kOtherID + "/Interface");
    configure("Setup:/Network/Service/" + kID + "/x/Interface");
    configure("Setup:/Network/Service/Default/Interface");
    configure("Setup:/Network/Service/" + kID + "/Interface");
    EXPECT_THAT(store()->configuredNetworkServiceIds(), ElementsAre(kOtherID, kID, kID));
}

TEST_F(QKSCDynamicStoreTest, AKeyWithoutAnIdentifierHasNone) {
    const auto reader = store();
    for (const NSString& key :
         {NSString(""), NSString("Setup:/Network/Service/Default/Interface"), NSString("0123ABCD"),
          NSString("Setup:/Network/Service/0123abcd-4567-89ab-cdef-0123456789ab/Interface"),
          NSString("0123ABCD-4567-89AB-CDEF-0123456789Ab"), NSString("0123ABCD-4567-89AB-CDEF-0123456789A"),
          NSString("0123ABCD-4567-89AB-CDEF_0123456789AB"), NSString("0123ABCD-4567-89AG-CDEF-0123456789AB"),
          NSString("０123ABCD-4567-89AB-CDEF-0123456789AB").substringToIndex(36)}) {
        EXPECT_EQ(reader->serviceUUIDFromServiceKey(key), std::nullopt) << key.utf8Lossy();
    }
}

TEST_F(QKSCDynamicStoreTest, TheFirstIdentifierInAKeyIsFoundWithoutRegardToWhatStandsAroundIt) {
    const auto reader = store();
    EXPECT_EQ(reader->serviceUUIDFromServiceKey(kID), kID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey("Setup:/Network/Service/" + kID + "/Interface"), kID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey(kID + "/" + kOtherID), kID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey("F" + kID), kID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey(kID + "0"), kID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey("0123abcd-4567-89ab-cdef-0123456789ab/" + kOtherID), kOtherID);
    EXPECT_EQ(reader->serviceUUIDFromServiceKey("0123ABCD-4567-89AB-CDEF-" + kOtherID), kOtherID);
}

TEST_F(QKSCDynamicStoreTest, OperationsCanBePerformedByName) {
    configure("key", kFound);
    const auto reader = store();
    EXPECT_EQ(reader->performSelector("dictionaryForKey:", std::vector<std::optional<Value>>{Value("key")}),
              std::optional<Value>(kFound));
}

} // namespace
} // namespace qk
