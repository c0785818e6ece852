// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkDevice.h"

#include "tests/platform/linux/DescribedLinks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kCard = "pci0000:00/0000:00:03.0";
constexpr std::string_view kController = "pci0000:00/0000:00:14.0";
constexpr std::string_view kAdapter = "pci0000:00/0000:00:14.0/usb2/2-1";

class NetworkDevice : public testing::Test {
protected:
    [[nodiscard]] const tests::DescribedLinks& files() const { return files_; }
    [[nodiscard]] NetworkLink card(std::string_view name = "eth0") const {
        files_.addDevice(kCard, "pci");
        return files_.addLink(name, kCard);
    }
    // An adapter on USB, as it is plugged in: controller, hub of the controller, device, its interface.
    [[nodiscard]] NetworkLink adapter(std::string_view mark) const {
        files_.addDevice(kController, "pci");
        files_.addDevice(std::string(kController) + "/usb2", "usb");
        files_.write(std::string(kController) + "/usb2", "removable", "unknown\n");
        files_.addDevice(kAdapter, "usb");
        files_.write(kAdapter, "idVendor", "0bda\n");
        files_.write(kAdapter, "idProduct", "8153\n");
        if (!mark.empty()) {
            files_.write(kAdapter, "removable", mark);
        }
        const std::string interface = std::string(kAdapter) + "/2-1:1.0";
        files_.addDevice(interface, "usb");
        return files_.addLink("eth1", interface);
    }
    [[nodiscard]] bool builtIn(const NetworkLink& link) const { return isBuiltIn(files_.root(), link); }
    [[nodiscard]] HardwareNames names(const NetworkLink& link) const { return readHardwareNames(files_.root(), link); }

private:
    tests::DescribedLinks files_;
};

TEST_F(NetworkDevice, AVirtualLinkHasNone) {
    const NetworkLink link = tests::virtualLink("veth0", 2);
    EXPECT_THAT(deviceFolders(files().root(), link), IsEmpty());
    EXPECT_FALSE(builtIn(link));
    EXPECT_EQ(names(link), HardwareNames());
}

TEST_F(NetworkDevice, ItsFoldersGoUpToTheFirstOfTheTree) {
    files().addDevice("pci0000:00/0000:00:03.0/virtio2", "virtio");
    const NetworkLink link = (static_cast<void>(card()), files().addLink("eth1", "pci0000:00/0000:00:03.0/virtio2"));
    const auto folders = deviceFolders(files().root(), link);
    std::vector<std::string> buses;
    for (const DeviceFolder& folder : folders) {
        buses.push_back(folder.subsystem);
    }
    EXPECT_THAT(buses, ElementsAre("virtio", "pci", ""));
    EXPECT_TRUE(folders.front().path.ends_with("/sys/devices/pci0000:00/0000:00:03.0/virtio2"));
}

TEST_F(NetworkDevice, FilesOfAnotherLinkWithThatNameAreNotLookedAt) {
    NetworkLink link = card();
    files().write(kCard, "removable", "removable\n");
    ASSERT_FALSE(builtIn(link));
    link.parentDevice = "0000:00:04.0";
    EXPECT_THAT(deviceFolders(files().root(), link), IsEmpty());
    EXPECT_TRUE(builtIn(link)); // as its bus says
}

TEST_F(NetworkDevice, WithoutFilesTheBusDecides) {
    NetworkLink link = tests::virtualLink("eth0", 2);
    link.parentDevice = "0000:00:03.0";
    EXPECT_FALSE(builtIn(link));
    link.parentBus = "pci";
    EXPECT_TRUE(builtIn(link));
    link.parentBus = "usb";
    EXPECT_FALSE(builtIn(link));
}

TEST_F(NetworkDevice, ACardOnABusInsideIsBuiltIn) {
    EXPECT_TRUE(builtIn(card()));
    for (const std::string_view bus : {"platform", "virtio", "vmbus", "xen", "sdio"}) {
        const std::string place = "inside/" + std::string(bus);
        files().addDevice(place, bus);
        EXPECT_TRUE(builtIn(files().addLink(std::string(bus) + "0", place))) << bus;
    }
}

TEST_F(NetworkDevice, ABusThatLeadsOutIsNot) {
    for (const std::string_view bus : {"thunderbolt", "firewire", "pcmcia", "bluetooth", "mac80211_hwsim"}) {
        const std::string place = "pci0000:00/0000:00:05.0/" + std::string(bus);
        files().addDevice(place, bus);
        EXPECT_FALSE(builtIn(files().addLink(std::string(bus) + "0", place))) << bus;
    }
}

TEST_F(NetworkDevice, WhatIsMarkedAsRemovableIsNotBuiltInAndNeitherIsWhatHangsOnIt) {
    const NetworkLink link = card();
    files().write(kCard, "removable", "fixed\n");
    EXPECT_TRUE(builtIn(link));
    files().write(kCard, "removable", "removable\n");
    EXPECT_FALSE(builtIn(link));
    const std::string behind = std::string(kCard) + "/0000:01:00.0";
    files().addDevice(behind, "pci");
    EXPECT_FALSE(builtIn(files().addLink("eth1", behind)));
}

TEST_F(NetworkDevice, TheFirmwaresMarkSaysBuiltIn) {
    const NetworkLink link = card();
    files().write(kCard, "removable", "removable\n");
    files().write(kCard, "label", "Onboard LAN 1\n");
    EXPECT_TRUE(builtIn(link));
    const std::string other = "pci0000:00/0000:00:04.0";
    files().addDevice(other, "pci");
    files().write(other, "removable", "removable\n");
    files().write(other, "acpi_index", "1\n");
    EXPECT_TRUE(builtIn(files().addLink("eno1", other)));
}

TEST_F(NetworkDevice, AnAdapterOnUSBIsBuiltInOnlyWhenItsPortIsMarkedAsFixed) {
    const NetworkLink link = adapter("");
    EXPECT_FALSE(builtIn(link));
    for (const std::string_view mark : {"unknown\n", "removable\n", ""}) {
        files().write(kAdapter, "removable", mark);
        EXPECT_FALSE(builtIn(link)) << mark;
    }
    files().write(kAdapter, "removable", "fixed\n");
    EXPECT_TRUE(builtIn(link));
    files().write(std::string(kController) + "/usb2", "removable", "removable\n");
    EXPECT_FALSE(builtIn(link)) << "a part of something that is plugged in";
}

TEST_F(NetworkDevice, AMarkOfTheControllerIsNotTheAdapters) {
    const NetworkLink link = adapter("removable\n");
    files().write(kController, "label", "Onboard USB\n");
    EXPECT_FALSE(builtIn(link));
}

TEST_F(NetworkDevice, WithoutAListItHasNoNames) {
    const NetworkLink link = card();
    EXPECT_EQ(names(link), HardwareNames());
    files().write(kCard, "vendor", "0x8086\n");
    files().write(kCard, "device", "0x15f3\n");
    EXPECT_EQ(names(link), HardwareNames());
}

TEST_F(NetworkDevice, UdevsRecordNamesIt) {
    files().writeFile("run/udev/data/n2",
                      "E:ID_VENDOR_FROM_DATABASE=Intel Corporation\nE:ID_MODEL_FROM_DATABASE=I225-V\n");
    EXPECT_EQ(names(card()), (HardwareNames{"Intel Corporation", "I225-V"}));
}

TEST_F(NetworkDevice, ARecordOfAnotherLinkOrOfAVirtualOneIsNotLookedAt) {
    files().writeFile("run/udev/data/n3", "E:ID_MODEL_FROM_DATABASE=I225-V\n");
    EXPECT_EQ(names(card()), HardwareNames());
    EXPECT_EQ(names(tests::virtualLink("veth0", 3)), HardwareNames());
}

TEST_F(NetworkDevice, TheListOfHardwareNamesWhatTheRecordDoesNot) {
    files().writeFile("usr/share/misc/pci.ids", "8086  Intel\n\t15f3  I225-V\n");
    files().writeFile("run/udev/data/n2", "E:ID_VENDOR_FROM_DATABASE=Intel Corporation\n");
    const NetworkLink link = card();
    files().write(kCard, "vendor", "0x8086\n");
    files().write(kCard, "device", "0x15f3\n");
    EXPECT_EQ(names(link), (HardwareNames{"Intel Corporation", "I225-V"}));
}

TEST_F(NetworkDevice, ACardOfAHypervisorGoesByTheNumbersOfItsSlot) {
    files().writeFile("usr/share/hwdata/pci.ids", "1af4  Red Hat, Inc.\n\t0001  Wrong\n\t1041  Virtio 1.0 network\n");
    static_cast<void>(card());
    files().write(kCard, "vendor", "0x1af4\n");
    files().write(kCard, "device", "0x1041\n");
    const std::string place = std::string(kCard) + "/virtio2";
    files().addDevice(place, "virtio");
    files().write(place, "vendor", "0x1af4\n");
    files().write(place, "device", "0x0001\n");
    EXPECT_EQ(names(files().addLink("eth1", place, 5)), (HardwareNames{"Red Hat, Inc.", "Virtio 1.0 network"}));
}

TEST_F(NetworkDevice, AnAdapterOnUSBSaysItselfWhatItIs) {
    const NetworkLink link = adapter("");
    files().writeFile("usr/share/misc/usb.ids", "0bda  Realtek Semiconductor\n\t8153  RTL8153\n");
    EXPECT_EQ(names(link), (HardwareNames{"Realtek Semiconductor", "RTL8153"}));
    files().write(kAdapter, "product", "USB 10/100/1000 LAN\n");
    EXPECT_EQ(names(link), (HardwareNames{"Realtek Semiconductor", "USB 10/100/1000 LAN"}));
    files().write(kAdapter, "manufacturer", "Realtek\n");
    EXPECT_EQ(names(link), (HardwareNames{"Realtek", "USB 10/100/1000 LAN"}));
}

TEST_F(NetworkDevice, NumbersThatAreNoneNameNobody) {
    files().writeFile("usr/share/misc/pci.ids", "8086  Intel\n\t15f3  I225-V\n");
    const NetworkLink link = card();
    files().write(kCard, "vendor", "0x8086\n");
    for (const std::string_view number : {"", "0x\n", "0x115f3\n", "fish\n"}) {
        files().write(kCard, "device", number);
        EXPECT_EQ(names(link), HardwareNames()) << number;
    }
}

} // namespace
} // namespace qk::platform
