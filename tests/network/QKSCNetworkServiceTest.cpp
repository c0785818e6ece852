// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCNetworkServiceFactory.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace qk {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

const NSString kFirst = "11111111-0000-4000-8000-000000000001";
const NSString kSecond = "22222222-0000-4000-8000-000000000002";

std::shared_ptr<QKSCNetworkInterface> interfaceOf(const SCNetworkInterface& interface) {
    return QKSCNetworkInterface::initWithSCNetworkInterface(std::make_shared<SCNetworkInterface>(interface));
}

std::shared_ptr<QKSCNetworkService> serviceOf(const SCNetworkService& service) {
    return QKSCNetworkService::initWithSCNetworkService(std::make_shared<SCNetworkService>(service));
}

// What follows the root class's description.
NSString textBehindAddress(const NSObject& object) {
    const NSString root = object.NSObject::description();
    const NSString text = object.description();
    EXPECT_TRUE(text.hasPrefix(root)) << text.utf8Lossy();
    return text.substringFromIndex(root.length());
}

TEST(QKSCNetworkInterface, OfNullThereIsNone) {
    EXPECT_EQ(QKSCNetworkInterface::initWithSCNetworkInterface(nullptr), nullptr);
}

TEST(QKSCNetworkInterface, MissingTextsAreEmptyAndTheRestIsNothing) {
    const auto interface = interfaceOf({});
    EXPECT_EQ(interface->name(), "");
    EXPECT_EQ(interface->displayName(), "");
    EXPECT_EQ(interface->type(), "");
    EXPECT_EQ(interface->hardwareAddress(), "");
    EXPECT_EQ(interface->supportedInterfaceTypes(), std::nullopt);
    EXPECT_EQ(interface->supportedProtocolTypes(), std::nullopt);
    EXPECT_EQ(interface->minimalTransferUnit(), 0);
    EXPECT_EQ(interface->maximalTransferUnit(), 0);
    EXPECT_EQ(interface->activeMediumType(), std::nullopt);
    EXPECT_EQ(interface->activeMediumOptions(), std::nullopt);
}

TEST(QKSCNetworkInterface, KeepsWhatThePreferencesTell) {
    SCNetworkInterface source;
    source.bsdName = "eth0";
    source.localizedDisplayName = "Ethernet";
    source.interfaceType = kSCNetworkInterfaceTypeEthernet;
    source.hardwareAddressString = "52:54:00:12:34:56";
    source.supportedInterfaceTypes = NSArray{"PPPoE"};
    source.supportedProtocolTypes = NSArray{"DNS", "IPv4"};
    source.transferUnits = TransferUnits{1500, 68, 9000};
    source.activeMedia = NSDictionary{{"MediaSubType", "1000baseT"}, {"MediaOptions", NSArray{"full-duplex"}}};
    const auto interface = interfaceOf(source);
    EXPECT_EQ(interface->name(), "eth0");
    EXPECT_EQ(interface->displayName(), "Ethernet");
    EXPECT_EQ(interface->type(), "Ethernet");
    EXPECT_EQ(interface->hardwareAddress(), "52:54:00:12:34:56");
    EXPECT_EQ(interface->supportedInterfaceTypes(), NSArray{"PPPoE"});
    EXPECT_EQ(interface->supportedProtocolTypes(), (NSArray{"DNS", "IPv4"}));
    EXPECT_EQ(interface->minimalTransferUnit(), 68);
    EXPECT_EQ(interface->maximalTransferUnit(), 9000);
    EXPECT_EQ(interface->activeMediumType(), "1000baseT");
    EXPECT_EQ(interface->activeMediumOptions(), NSArray{"full-duplex"});
}

TEST(QKSCNetworkInterface, ALimitThatCannotBeToldStaysMinusOne) {
    SCNetworkInterface source;
    source.transferUnits = TransferUnits{1500, -1, -1};
    EXPECT_EQ(interfaceOf(source)->minimalTransferUnit(), -1);
    EXPECT_EQ(interfaceOf(source)->maximalTransferUnit(), -1);
}

TEST(QKSCNetworkInterface, EachMemberOfTheMediumMayBeMissing) {
    SCNetworkInterface source;
    source.activeMedia = NSDictionary{{"MediaSubType", "autoselect"}};
    EXPECT_EQ(interfaceOf(source)->activeMediumType(), "autoselect");
    EXPECT_EQ(interfaceOf(source)->activeMediumOptions(), std::nullopt);
    source.activeMedia = NSDictionary{{"MediaOptions", NSArray()}};
    EXPECT_EQ(interfaceOf(source)->activeMediumType(), std::nullopt);
    EXPECT_EQ(interfaceOf(source)->activeMediumOptions(), NSArray());
}

TEST(QKSCNetworkInterface, EveryFieldCanBeLookedUpAndSetByName) {
    const auto interface = interfaceOf({});
    for (const NSString& key : {NSString("name"), NSString("displayName"), NSString("type"),
                                NSString("hardwareAddress"), NSString("activeMediumType")}) {
        interface->setValueForKey(Value("x"), key);
        EXPECT_EQ(interface->valueForKey(key), Value("x"));
    }
    for (const NSString& key : {NSString("minimalTransferUnit"), NSString("maximalTransferUnit")}) {
        interface->setValueForKey(Value(7), key);
        EXPECT_EQ(interface->valueForKey(key), Value(7));
    }
    for (const NSString& key :
         {NSString("supportedInterfaceTypes"), NSString("supportedProtocolTypes"), NSString("activeMediumOptions")}) {
        interface->setValueForKey(Value(NSArray{"x"}), key);
        EXPECT_EQ(interface->valueForKey(key), Value(NSArray{"x"}));
    }
    EXPECT_THROW((void)interface->valueForKey("currentTransferUnit"), NSUndefinedKeyException);
}

TEST(QKSCNetworkInterface, DescriptionShowsTheNullMarkerForAMediumThatIsNotThere) {
    SCNetworkInterface source;
    source.bsdName = "eth0";
    source.supportedProtocolTypes = NSArray{"DNS"};
    EXPECT_EQ(textBehindAddress(*interfaceOf(source)), "{\n"
                                                       "    activeMediumOptions = \"<null>\";\n"
                                                       "    activeMediumType = \"<null>\";\n"
                                                       "    displayName = \"\";\n"
                                                       "    hardwareAddress = \"\";\n"
                                                       "    maximalTransferUnit = 0;\n"
                                                       "    minimalTransferUnit = 0;\n"
                                                       "    name = eth0;\n"
                                                       "    supportedInterfaceTypes = \"<null>\";\n"
                                                       "    supportedProtocolTypes =     (\n"
                                                       "        DNS\n"
                                                       "    );\n"
                                                       "    type = \"\";\n"
                                                       "}");
}

TEST(QKSCNetworkService, OfNullThereIsNone) {
    EXPECT_EQ(QKSCNetworkService::initWithSCNetworkService(nullptr), nullptr);
}

TEST(QKSCNetworkService, MissingTextsAreEmptyAndAMissingInterfaceIsNull) {
    const auto service = serviceOf({});
    EXPECT_FALSE(service->enabled());
    EXPECT_EQ(service->name(), "");
    EXPECT_EQ(service->serviceId(), "");
    EXPECT_EQ(service->interface(), nullptr);
}

TEST(QKSCNetworkService, KeepsWhatThePreferencesTell) {
    auto interface = std::make_shared<SCNetworkInterface>();
    interface->bsdName = "eth0";
    const auto service = serviceOf({1, NSString("Office"), kFirst, interface});
    EXPECT_TRUE(service->enabled());
    EXPECT_EQ(service->name(), "Office");
    EXPECT_EQ(service->serviceId(), kFirst);
    ASSERT_NE(service->interface(), nullptr);
    EXPECT_EQ(service->interface()->name(), "eth0");
}

TEST(QKSCNetworkService, OnlyExactlyOneIsEnabled) {
    EXPECT_TRUE(serviceOf({1, {}, {}, nullptr})->enabled());
    for (const std::uint8_t flag : std::vector<std::uint8_t>{0, 2, 3, 255}) {
        EXPECT_FALSE(serviceOf({flag, {}, {}, nullptr})->enabled()) << unsigned{flag};
    }
}

TEST(QKSCNetworkService, EveryFieldCanBeLookedUpAndSetByName) {
    const auto service = serviceOf({});
    service->setValueForKey(Value(true), "enabled");
    service->setValueForKey(Value("n"), "name");
    service->setValueForKey(Value("s"), "serviceId");
    service->setValueForKey(Value(interfaceOf({})), "interface");
    EXPECT_EQ(service->valueForKey("enabled"), Value(true));
    EXPECT_EQ(service->valueForKey("name"), Value("n"));
    EXPECT_EQ(service->valueForKey("serviceId"), Value("s"));
    EXPECT_EQ(service->valueForKey("interface"), Value(service->interface()));
}

TEST(QKSCNetworkService, DescriptionFailsOnAKeyThatTheServiceDoesNotHave) {
    try {
        (void)serviceOf({1, NSString("Office"), kFirst, nullptr})->description();
        FAIL() << "nothing was raised";
    } catch (const NSUndefinedKeyException& exception) {
        EXPECT_EQ(exception.key(), "stateConfigurations");
    }
}

template <typename... Texts>
auto elementsAreTexts(const Texts&... texts) {
    return testing::ElementsAreArray(std::vector<NSString>{NSString(texts)...});
}

class QKSCNetworkServiceFactoryTest : public testing::Test {
protected:
    void configure(const NSString& serviceID) {
        machine.systemConfiguration.setStoreValue("Setup:/Network/Service/" + serviceID + "/Interface", NSDictionary());
    }
    void prefer(const NSString& serviceID, const NSString& name, std::uint8_t enabled = 1) {
        machine.systemConfiguration.addService(
            std::make_shared<SCNetworkService>(SCNetworkService{enabled, name, serviceID, nullptr}));
    }
    static std::vector<std::string> names(const QKSCNetworkServiceFactory::NetworkServices& services) {
        std::vector<std::string> result;
        for (const auto& service : services) {
            result.push_back(service->name().utf8Lossy());
        }
        return result;
    }
    [[nodiscard]] std::vector<std::string> all() const {
        return names(QKSCNetworkServiceFactory::networkServices(*machine.services()));
    }
    [[nodiscard]] std::vector<std::string> enabled() const {
        return names(QKSCNetworkServiceFactory::enabledNetworkServices(*machine.services()));
    }

    memory::Machine machine;
};

TEST_F(QKSCNetworkServiceFactoryTest, AMachineWithoutServicesGivesEmptyLists) {
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_THAT(enabled(), IsEmpty());
    EXPECT_THAT(QKSCNetworkServiceFactory::configuredNetworkServiceIds(*machine.services()), IsEmpty());
}

TEST_F(QKSCNetworkServiceFactoryTest, WithoutPreferencesOrTheirListThereIsNoService) {
    configure(kFirst);
    prefer(kFirst, "first");
    machine.systemConfiguration.refusePreferences(true);
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_EQ(machine.systemConfiguration.patterns().size(), 1U) << "the store is asked first";
    machine.systemConfiguration.refusePreferences(false);
    EXPECT_THAT(all(), ElementsAre("first"));
    machine.systemConfiguration.setServices(std::nullopt);
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(QKSCNetworkServiceFactoryTest, WithoutTheStoreThereIsNoService) {
    configure(kFirst);
    prefer(kFirst, "first");
    machine.systemConfiguration.refuseConnections(true);
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(QKSCNetworkServiceFactoryTest, BothSourcesHaveToKnowAService) {
    configure(kFirst);
    prefer(kSecond, "of the preferences alone");
    EXPECT_THAT(all(), IsEmpty());
    prefer(kFirst, "of both");
    EXPECT_THAT(all(), ElementsAre("of both"));
}

TEST_F(QKSCNetworkServiceFactoryTest, ListsInThePreferencesOrderWithRepetitionsAndWithoutNullEntries) {
    configure(kFirst);
    configure(kSecond);
    prefer(kSecond, "b");
    machine.systemConfiguration.addService(nullptr);
    prefer(kFirst, "a");
    prefer(kSecond, "b again");
    EXPECT_THAT(all(), ElementsAre("b", "a", "b again"));
}

TEST_F(QKSCNetworkServiceFactoryTest, OnlyIdentifiersInCapitalsAreFound) {
    const NSString small = "abcdef01-0000-4000-8000-000000000001";
    for (const NSString& serviceID : {small, NSString("Default"), kFirst + "x", NSString("")}) {
        configure(serviceID);
        prefer(serviceID, serviceID);
    }
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(QKSCNetworkServiceFactoryTest, AnIdentifierInsideALongerOneJoinsAnotherService) {
    configure(kFirst + "7");
    prefer(kFirst, "joined");
    EXPECT_THAT(all(), ElementsAre("joined"));
}

TEST_F(QKSCNetworkServiceFactoryTest, EnabledOnesAreThoseWithExactlyThatFlag) {
    configure(kFirst);
    configure(kSecond);
    prefer(kFirst, "off", 0);
    prefer(kSecond, "on", 1);
    prefer(kFirst, "two", 2);
    prefer(kFirst, "on as well", 1);
    EXPECT_THAT(all(), ElementsAre("off", "on", "two", "on as well"));
    EXPECT_THAT(enabled(), ElementsAre("on", "on as well"));
}

TEST_F(QKSCNetworkServiceFactoryTest, AsksUnderItsOwnNameAndEachTimeAnew) {
    configure(kFirst);
    EXPECT_THAT(all(), IsEmpty());
    prefer(kFirst, "new");
    EXPECT_THAT(all(), ElementsAre("new"));
    EXPECT_THAT(machine.systemConfiguration.preferencesNames(),
                elementsAreTexts("SCNetworkServiceFactory", "SCNetworkServiceFactory"));
}

} // namespace
} // namespace qk
