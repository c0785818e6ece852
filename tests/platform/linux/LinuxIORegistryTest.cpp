// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxIORegistry.h"

#include "tests/platform/linux/DescribedLinks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <net/if.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kUp = IFF_UP;
constexpr std::uint32_t kCarrier = IFF_UP | IFF_RUNNING | 0x10000;

// A machine with a loopback, a card, a bridge and an adapter that is down.
class Registry : public testing::Test {
protected:
    Registry() {
        files_.addDevice("pci0000:00/0000:00:03.0", "pci");
        files_.addDevice("usb/2-1", "usb");
        NetworkLink card = files_.addLink("eth0", "pci0000:00/0000:00:03.0", 2);
        card.flags = kCarrier;
        NetworkLink adapter = files_.addLink("usb0", "usb/2-1", 9);
        adapter.flags = 0x10000;
        set({tests::virtualLink("lo", 1, kCarrier | IFF_LOOPBACK), std::move(card),
             tests::virtualLink("br0", 5, kCarrier), std::move(adapter)});
    }

    void set(std::vector<NetworkLink> links) {
        auto snapshot = std::make_shared<const NetworkSnapshot>(KernelNetwork{std::move(links), {}, {}}, files_.root());
        registry_ = std::make_unique<LinuxIORegistry>(std::make_shared<NetworkReader>(std::move(snapshot)));
    }
    void setFlags(std::uint32_t flags) {
        NetworkLink card = tests::virtualLink("eth0", 2, flags);
        card.parentDevice = "0000:00:03.0";
        set({std::move(card)});
    }

    [[nodiscard]] std::vector<io_object_t> matching(const std::optional<IOMatching>& what) const {
        std::unique_ptr<IOIterator> iterator;
        EXPECT_EQ(registry_->getMatchingServices(what.value(), iterator), KERN_SUCCESS);
        std::vector<io_object_t> entries;
        while (iterator != nullptr) {
            const io_object_t entry = iterator->next();
            if (entry == IO_OBJECT_NULL) {
                EXPECT_EQ(iterator->next(), IO_OBJECT_NULL);
                break;
            }
            entries.push_back(entry);
        }
        return entries;
    }
    [[nodiscard]] io_registry_entry_t entry(const NSString& name) const {
        const auto entries = matching(registry_->bsdNameMatching(name));
        return entries.size() == 1 ? entries.front() : IO_OBJECT_NULL;
    }
    [[nodiscard]] io_registry_entry_t controller(const NSString& name) const {
        io_registry_entry_t parent = IO_OBJECT_NULL;
        EXPECT_EQ(registry_->entryParent(entry(name), kIOServicePlane, parent), KERN_SUCCESS);
        return parent;
    }
    [[nodiscard]] std::optional<Value> property(io_registry_entry_t entry, const NSString& key) const {
        return registry_->entryProperty(entry, key);
    }

    [[nodiscard]] const tests::DescribedLinks& files() const { return files_; }
    [[nodiscard]] const LinuxIORegistry& registry() const { return *registry_; }

private:
    tests::DescribedLinks files_;
    std::unique_ptr<LinuxIORegistry> registry_;
};

TEST_F(Registry, ANameThatIsNotThereMatchesNothing) {
    EXPECT_THAT(matching(registry().bsdNameMatching("eth1")), IsEmpty());
    EXPECT_THAT(matching(registry().bsdNameMatching("")), IsEmpty());
    EXPECT_THAT(matching(registry().bsdNameMatching("sda")), IsEmpty()) << "disks are not registered";
    EXPECT_THAT(matching(registry().bsdNameMatching(NSString(u"\0eth0"))), IsEmpty());
    EXPECT_THAT(matching(registry().serviceMatching("IODisk")), IsEmpty());
}

TEST_F(Registry, AMachineWithoutLinksHasNoInterfaces) {
    set({});
    EXPECT_THAT(matching(registry().serviceMatching(kIONetworkInterfaceClass)), IsEmpty());
}

TEST_F(Registry, InterfacesAreAllLinksButTheLoopbackByIndex) {
    std::vector<Value> names;
    for (const io_object_t entry : matching(registry().serviceMatching(kIONetworkInterfaceClass))) {
        names.push_back(property(entry, "BSD Name").value());
    }
    EXPECT_THAT(names, ElementsAre(Value("eth0"), Value("br0"), Value("usb0")));
}

TEST_F(Registry, ANameFindsItsLink) {
    EXPECT_EQ(property(entry("br0"), "BSD Name"), Value("br0"));
    EXPECT_EQ(property(entry("eth0"), "BSD Name"), Value("eth0"));
}

TEST_F(Registry, ANameThatIsNoTextFindsItsLinkAsWell) {
    set({tests::virtualLink("net\xE9", 2)});
    const auto all = matching(registry().serviceMatching(kIONetworkInterfaceClass));
    ASSERT_EQ(all.size(), 1U);
    const Value name = property(all.front(), "BSD Name").value();
    EXPECT_EQ(entry(*name.as<NSString>()), all.front());
}

TEST_F(Registry, AHandleThatIsNoneHasNoProperties) {
    io_registry_entry_t parent = 77;
    for (const io_registry_entry_t none : {IO_OBJECT_NULL, 1U, 6U, 7U, 0xFFFFFFFFU}) {
        EXPECT_EQ(property(none, "BSD Name"), std::nullopt) << none;
        EXPECT_EQ(property(none, "IOLinkStatus"), std::nullopt) << none;
        EXPECT_NE(registry().entryParent(none, kIOServicePlane, parent), KERN_SUCCESS) << none;
    }
    EXPECT_EQ(parent, 77U);
    registry().objectRelease(IO_OBJECT_NULL);
}

TEST_F(Registry, ALinkThatIsGoneHasNoPropertiesAnyMore) {
    const io_registry_entry_t gone = entry("eth0");
    const io_registry_entry_t controllerOfIt = controller("eth0");
    set({});
    EXPECT_EQ(property(gone, "BSD Name"), std::nullopt);
    EXPECT_EQ(property(controllerOfIt, "IOLinkStatus"), std::nullopt);
}

TEST_F(Registry, OnlyALinkWithADeviceHasAControllerAndThatHasNone) {
    io_registry_entry_t parent = IO_OBJECT_NULL;
    EXPECT_NE(registry().entryParent(entry("br0"), kIOServicePlane, parent), KERN_SUCCESS);
    EXPECT_NE(registry().entryParent(entry("lo"), kIOServicePlane, parent), KERN_SUCCESS);
    EXPECT_NE(registry().entryParent(entry("eth0"), "IOUSB", parent), KERN_SUCCESS);
    EXPECT_EQ(parent, IO_OBJECT_NULL);
    const io_registry_entry_t above = controller("eth0");
    EXPECT_NE(above, IO_OBJECT_NULL);
    EXPECT_NE(registry().entryParent(above, kIOServicePlane, parent), KERN_SUCCESS);
    registry().objectRelease(above);
}

TEST_F(Registry, PropertiesAreWhereTheyBelong) {
    EXPECT_EQ(property(entry("eth0"), "IOLinkStatus"), std::nullopt);
    EXPECT_EQ(property(controller("eth0"), "BSD Name"), std::nullopt);
    EXPECT_EQ(property(controller("eth0"), "IOBuiltin"), std::nullopt);
    EXPECT_EQ(property(entry("eth0"), "IOMACAddress"), std::nullopt);
}

TEST_F(Registry, BuiltInIsABooleanOfEveryInterface) {
    const auto builtIn = [this](const NSString& name) { return property(entry(name), "IOBuiltin").value(); };
    EXPECT_TRUE(builtIn("eth0").as<NSNumber>()->isBoolean());
    EXPECT_TRUE(builtIn("eth0").as<NSNumber>()->boolValue());
    EXPECT_FALSE(builtIn("usb0").as<NSNumber>()->boolValue());
    EXPECT_FALSE(builtIn("br0").as<NSNumber>()->boolValue());
}

TEST_F(Registry, TheStatusTellsWhetherTheLinkIsUpAndHasACarrier) {
    const auto status = [this](std::uint32_t flags) {
        setFlags(flags);
        return property(controller("eth0"), "IOLinkStatus");
    };
    EXPECT_EQ(status(0), Value(0));
    EXPECT_EQ(status(0x10000), Value(0)) << "what a link that is down says of its carrier means nothing";
    EXPECT_EQ(status(kUp), Value(1));
    EXPECT_EQ(status(kCarrier), Value(3));
}

TEST_F(Registry, TheSpeedIsInBitsPerSecondAndNeverNegative) {
    const auto speed = [this](const char* megabits) {
        files().writeFile("sys/class/net/eth0/speed", megabits);
        return property(controller("eth0"), "IOLinkSpeed");
    };
    EXPECT_EQ(property(controller("eth0"), "IOLinkSpeed"), Value(0));
    EXPECT_EQ(speed("-1\n"), Value(0));
    EXPECT_EQ(speed("1000\n"), Value(1'000'000'000));
    EXPECT_EQ(speed("400000\n"), Value(std::int64_t{400'000'000'000}));
    setFlags(0);
    EXPECT_EQ(property(controller("eth0"), "IOLinkSpeed"), Value(0)) << "down";
}

TEST_F(Registry, AWirelessLinkWithoutAStationHasNoSpeed) {
    files().writeFile("sys/class/net/eth0/phy80211/name", "phy0\n");
    files().writeFile("sys/class/net/eth0/speed", "1000\n");
    EXPECT_EQ(property(controller("eth0"), "IOLinkSpeed"), Value(0));
}

TEST_F(Registry, VendorAndModelAreAbsentWithoutADatabase) {
    EXPECT_EQ(property(controller("eth0"), "IOVendor"), std::nullopt);
    EXPECT_EQ(property(controller("eth0"), "IOModel"), std::nullopt);
}

TEST_F(Registry, VendorAndModelKeepTheirBrackets) {
    files().writeFile("run/udev/data/n2", "E:ID_VENDOR_FROM_DATABASE=Intel Corp. (one)\n"
                                          "E:ID_MODEL_FROM_DATABASE=I225-V [Fox]\n");
    EXPECT_EQ(property(controller("eth0"), "IOVendor"), Value("Intel Corp. (one)"));
    EXPECT_EQ(property(controller("eth0"), "IOModel"), Value("I225-V [Fox]"));
}

} // namespace
} // namespace qk::platform
