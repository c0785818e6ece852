// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qk::tests {
namespace {

using namespace platform;
using testing::IsEmpty;
using testing::Optional;

const NSString kInterfaces = "Setup:/Network/Service/.*/Interface";

bool isServiceInterface(const NSString& key) {
    return key.hasPrefix("Setup:/Network/Service/") && key.hasSuffix("/Interface");
}

bool isUUIDInCapitals(const NSString& text) {
    const std::u16string_view form = u"00000000-0000-0000-0000-000000000000";
    return std::equal(
        text.units().begin(), text.units().end(), form.begin(), form.end(), [](char16_t unit, char16_t f) {
            return f == u'-' ? unit == u'-' : (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F');
        });
}

// What the network looks like may change while it is looked at, so all is asked within one reading.
class NetworkContract : public Contract {
protected:
    [[nodiscard]] std::shared_ptr<const DynamicStore> store() const {
        return machine_.systemConfiguration->createDynamicStore(NSString("contract"));
    }
    [[nodiscard]] std::vector<NSString> keys(const NSString& pattern) const {
        return store()->copyKeyList(pattern).value_or(std::vector<NSString>());
    }
    [[nodiscard]] std::optional<NSDictionary> dictionary(const NSString& key) const {
        const auto value = store()->copyValue(key);
        const auto* found = value.has_value() ? value->as<NSDictionary>() : nullptr;
        return found != nullptr ? std::optional(*found) : std::nullopt;
    }
    [[nodiscard]] std::vector<SCNetworkServiceRef> services() const {
        const auto preferences = machine_.systemConfiguration->createPreferences("contract");
        const auto all = preferences != nullptr ? preferences->copyAllServices() : std::nullopt;
        return all.value_or(std::vector<SCNetworkServiceRef>());
    }
    [[nodiscard]] IORegistry& registry() const { return *machine_.ioRegistry; }

    // The entries that match, which the caller releases.
    [[nodiscard]] std::vector<io_object_t> entries(const std::optional<IOMatching>& matching) const {
        std::vector<io_object_t> found;
        std::unique_ptr<IOIterator> iterator;
        if (matching.has_value() && registry().getMatchingServices(*matching, iterator) == KERN_SUCCESS && iterator) {
            for (io_object_t entry = iterator->next(); entry != IO_OBJECT_NULL; entry = iterator->next()) {
                found.push_back(entry);
            }
            EXPECT_EQ(iterator->next(), IO_OBJECT_NULL) << "the end stays the end";
        }
        return found;
    }
    void release(const std::vector<io_object_t>& objects) const {
        for (const io_object_t object : objects) {
            registry().objectRelease(object);
        }
    }

private:
    Services machine_ = subject().networked();
    std::unique_ptr<ConfigurationReading> reading_ = machine_.systemConfiguration->beginReading();
};
INSTANTIATE_TEST_SUITE_P(Of, NetworkContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(NetworkContract, AMachineMayHaveNoNetworkAtAll) {
    const Services machine = subject().silent();
    const auto silentStore = machine.systemConfiguration->createDynamicStore(std::nullopt);
    if (silentStore != nullptr) {
        EXPECT_THAT(silentStore->copyKeyList(kInterfaces).value_or(std::vector<NSString>()), IsEmpty());
    }
    const auto preferences = machine.systemConfiguration->createPreferences("contract");
    if (preferences != nullptr) {
        EXPECT_THAT(preferences->copyAllServices().value_or(std::vector<SCNetworkServiceRef>()), IsEmpty());
    }
    std::unique_ptr<IOIterator> iterator;
    const auto matching = machine.ioRegistry->serviceMatching(kIONetworkInterfaceClass);
    ASSERT_TRUE(matching.has_value());
    (void)machine.ioRegistry->getMatchingServices(*matching, iterator);
    EXPECT_TRUE(iterator == nullptr || iterator->next() == IO_OBJECT_NULL);
}

TEST_P(NetworkContract, AKeyThatNobodyKnowsHasNoValue) {
    ASSERT_NE(store(), nullptr);
    for (const NSString& key :
         {NSString(""), NSString("x"), NSString("State:"), NSString("State:/Network/Interface/no such link/IPv4"),
          NSString("State:/Network/Interface//IPv4"), NSString("State::/Network/Interface"),
          NSString("Setup:/Network/Service/00000000-0000-0000-0000-000000000000/Interface"),
          NSString("state:/network/global/ipv4"), NSString("State:/Network/Interface/eth0\0/IPv4")}) {
        EXPECT_EQ(store()->copyValue(key), std::nullopt) << key.utf8Lossy();
    }
}

TEST_P(NetworkContract, AKeyIsFoundWholeAlone) {
    for (const NSString& key : keys(".*")) {
        EXPECT_NE(store()->copyValue(key), std::nullopt) << key.utf8Lossy();
        EXPECT_EQ(store()->copyValue(key + "x"), std::nullopt) << key.utf8Lossy();
        EXPECT_EQ(store()->copyValue("x" + key), std::nullopt) << key.utf8Lossy();
    }
}

TEST_P(NetworkContract, KeysAreListedOnceWhenTheyMatchAsAWhole) {
    std::vector<NSString> expected = keys(".*");
    EXPECT_EQ(std::set<NSString>(expected.begin(), expected.end()).size(), expected.size());
    std::erase_if(expected, [](const NSString& key) { return !isServiceInterface(key); });
    EXPECT_EQ(keys(kInterfaces), expected) << "in the same order";
    EXPECT_THAT(keys("no such key"), IsEmpty());
    EXPECT_THAT(keys("/Network"), IsEmpty()) << "no key is that";
    EXPECT_THAT(keys(""), IsEmpty());
    for (const NSString& key : expected) {
        EXPECT_THAT(store()->copyKeyList(key), Optional(testing::ElementsAre(key)));
        EXPECT_THAT(keys(key.substringFromIndex(1)), IsEmpty());
    }
}

TEST_P(NetworkContract, APatternThatIsNoneListsNothing) {
    for (const NSString& pattern : {NSString("("), NSString("["), NSString("a\\")}) {
        EXPECT_THAT(keys(pattern), IsEmpty()) << pattern.utf8Lossy();
    }
}

TEST_P(NetworkContract, EachServicesInterfaceIsADictionary) {
    for (const NSString& key : keys(kInterfaces)) {
        const auto interface = dictionary(key);
        ASSERT_TRUE(interface.has_value()) << key.utf8Lossy();
        const Value* name = interface->objectForKey(kSCPropNetInterfaceDeviceName);
        EXPECT_TRUE(name == nullptr || name->as<NSString>() != nullptr) << key.utf8Lossy();
    }
}

TEST_P(NetworkContract, EachIPv4AddressHasItsMask) {
    for (const NSString& key : keys("State:/Network/(Interface|Service)/.*/IPv4")) {
        const auto state = dictionary(key);
        ASSERT_TRUE(state.has_value()) << key.utf8Lossy();
        const auto* addresses = state->get<NSArray>(kSCPropNetIPv4Addresses);
        const auto* masks = state->get<NSArray>(kSCPropNetIPv4SubnetMasks);
        ASSERT_TRUE(addresses != nullptr && masks != nullptr) << key.utf8Lossy();
        EXPECT_EQ(addresses->count(), masks->count()) << key.utf8Lossy();
        for (const NSArray* list : {addresses, masks}) {
            for (const Value& text : *list) {
                ASSERT_NE(text.as<NSString>(), nullptr) << key.utf8Lossy();
                EXPECT_EQ(text.as<NSString>()->componentsSeparatedByString(".").size(), 4U) << key.utf8Lossy();
            }
        }
    }
}

TEST_P(NetworkContract, EachIPv6AddressHasItsPrefixLength) {
    for (const NSString& key : keys("State:/Network/(Interface|Service)/.*/IPv6")) {
        const auto state = dictionary(key);
        ASSERT_TRUE(state.has_value()) << key.utf8Lossy();
        const auto* addresses = state->get<NSArray>(kSCPropNetIPv6Addresses);
        const auto* lengths = state->get<NSArray>(kSCPropNetIPv6PrefixLength);
        ASSERT_TRUE(addresses != nullptr && lengths != nullptr) << key.utf8Lossy();
        EXPECT_EQ(addresses->count(), lengths->count()) << key.utf8Lossy();
        for (const Value& address : *addresses) {
            ASSERT_NE(address.as<NSString>(), nullptr) << key.utf8Lossy();
            EXPECT_TRUE(address.as<NSString>()->contains(u":")) << key.utf8Lossy();
            EXPECT_FALSE(address.as<NSString>()->contains(u"%")) << "no scope";
        }
        for (const Value& length : *lengths) {
            ASSERT_NE(length.as<NSNumber>(), nullptr) << key.utf8Lossy();
            EXPECT_LE(length.as<NSNumber>()->unsignedIntegerValue(), 128U) << key.utf8Lossy();
        }
    }
}

TEST_P(NetworkContract, EachServiceIsInTheStoreUnderItsIdentifierInCapitals) {
    const std::vector<NSString> listed = keys(kInterfaces);
    for (const SCNetworkServiceRef& service : services()) {
        if (service == nullptr) {
            continue;
        }
        ASSERT_TRUE(service->serviceID.has_value());
        EXPECT_TRUE(isUUIDInCapitals(*service->serviceID)) << service->serviceID->utf8Lossy();
        const NSString key = "Setup:/Network/Service/" + *service->serviceID + "/Interface";
        EXPECT_NE(std::find(listed.begin(), listed.end(), key), listed.end()) << key.utf8Lossy();
        EXPECT_TRUE(service->name.has_value());
        EXPECT_LE(service->enabled, 1);
    }
}

TEST_P(NetworkContract, LoopbackIsNoService) {
    for (const SCNetworkServiceRef& service : services()) {
        if (service != nullptr && service->interface != nullptr) {
            EXPECT_NE(service->interface->bsdName, NSString("lo"));
            const auto& limits = service->interface->transferUnits;
            EXPECT_TRUE(!limits.has_value() || limits->maximum == -1 || limits->minimum <= limits->maximum);
        }
    }
}

TEST_P(NetworkContract, ServicesKeepTheirIdentifiersAndOrder) {
    const auto identifiers = [this] {
        std::vector<std::optional<NSString>> result;
        for (const SCNetworkServiceRef& service : services()) {
            result.push_back(service != nullptr ? service->serviceID : std::nullopt);
        }
        return result;
    };
    EXPECT_EQ(identifiers(), identifiers());
}

TEST_P(NetworkContract, ANameThatNobodyBearsMatchesNoEntry) {
    for (const NSString& name : {NSString(""), NSString("no such link"), NSString("../lo"), NSString("/"),
                                 NSString("a name that is too long for a link")}) {
        EXPECT_THAT(entries(registry().bsdNameMatching(name)), IsEmpty()) << name.utf8Lossy();
    }
    EXPECT_THAT(entries(registry().serviceMatching("NoSuchClass")), IsEmpty());
}

TEST_P(NetworkContract, EachInterfaceIsFoundByItsName) {
    const auto all = entries(registry().serviceMatching(kIONetworkInterfaceClass));
    for (const io_object_t entry : all) {
        const auto name = registry().entryProperty(entry, "BSD Name");
        ASSERT_TRUE(name.has_value() && name->as<NSString>() != nullptr);
        const auto found = entries(registry().bsdNameMatching(*name->as<NSString>()));
        ASSERT_FALSE(found.empty()) << name->description().utf8Lossy();
        EXPECT_EQ(registry().entryProperty(found[0], "BSD Name"), name);
        release(found);
    }
    release(all);
}

TEST_P(NetworkContract, FactsOfAnInterfaceAndItsControllerHaveTheirTypes) {
    const auto all = entries(registry().serviceMatching(kIONetworkInterfaceClass));
    for (const io_object_t entry : all) {
        EXPECT_EQ(registry().entryProperty(entry, "no such property"), std::nullopt);
        const auto builtin = registry().entryProperty(entry, "IOBuiltin");
        if (builtin.has_value()) {
            ASSERT_NE(builtin->as<NSNumber>(), nullptr);
            EXPECT_TRUE(builtin->as<NSNumber>()->isBoolean());
        }
        io_registry_entry_t parent = IO_OBJECT_NULL;
        if (registry().entryParent(entry, kIOServicePlane, parent) != KERN_SUCCESS || parent == IO_OBJECT_NULL) {
            continue;
        }
        for (const NSString& key : {NSString("IOLinkSpeed"), NSString("IOLinkStatus")}) {
            const auto number = registry().entryProperty(parent, key);
            EXPECT_TRUE(!number.has_value() ||
                        (number->as<NSNumber>() != nullptr && !number->as<NSNumber>()->isBoolean()))
                << key.utf8Lossy();
            EXPECT_TRUE(!number.has_value() || number->as<NSNumber>()->integerValue() >= 0) << key.utf8Lossy();
        }
        for (const NSString& key : {NSString("IOVendor"), NSString("IOModel")}) {
            const auto text = registry().entryProperty(parent, key);
            EXPECT_TRUE(!text.has_value() || text->as<NSString>() != nullptr) << key.utf8Lossy();
        }
        registry().objectRelease(parent);
    }
    release(all);
}

TEST_P(NetworkContract, NoEntryHasNothing) {
    EXPECT_EQ(registry().entryProperty(IO_OBJECT_NULL, "BSD Name"), std::nullopt);
    io_registry_entry_t parent = IO_OBJECT_NULL;
    EXPECT_NE(registry().entryParent(IO_OBJECT_NULL, kIOServicePlane, parent), KERN_SUCCESS);
    EXPECT_EQ(parent, IO_OBJECT_NULL);
    registry().objectRelease(IO_OBJECT_NULL);
}

} // namespace
} // namespace qk::tests
