// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/HardwareDatabase.h"

#include "QKFoundation/platform/linux/parse/HardwareDatabase.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

constexpr std::string_view kList = "# A list of hardware\n"
                                   "\n"
                                   "1af4  Red Hat, Inc.\n"
                                   "\t1000  Virtio network device\n"
                                   "\t\t01de fffb  Propolis Virtio network device\n"
                                   "\t1041  Virtio 1.0 network device\n"
                                   "8086  Intel Corporation\n"
                                   "\t15F3  Ethernet Controller I225-V [Foxville]\n"
                                   "\t1041  Another one\n"
                                   "C 02  Network controller\n"
                                   "\t00  Ethernet controller\n";

HardwareNames search(std::string_view list, std::uint16_t vendor, std::uint16_t device) {
    parse::HardwareSearch search(vendor, device);
    search.feed(list);
    return search.finish();
}

TEST(HardwareSearch, AnEmptyListKnowsNobody) {
    EXPECT_EQ(search("", 0x8086, 0x15F3), HardwareNames());
    EXPECT_EQ(search("\n\n# 8086  Intel\n", 0x8086, 0x15F3), HardwareNames());
}

TEST(HardwareSearch, FindsVendorAndModel) {
    EXPECT_EQ(search(kList, 0x8086, 0x15F3),
              (HardwareNames{"Intel Corporation", "Ethernet Controller I225-V [Foxville]"}));
    EXPECT_EQ(search(kList, 0x1AF4, 0x1041), (HardwareNames{"Red Hat, Inc.", "Virtio 1.0 network device"}));
}

TEST(HardwareSearch, AModelThatIsNotListedIsNothing) {
    EXPECT_EQ(search(kList, 0x1AF4, 0x15F3), (HardwareNames{"Red Hat, Inc.", std::nullopt}));
    EXPECT_EQ(search(kList, 0x1AF4, 0x01DE), (HardwareNames{"Red Hat, Inc.", std::nullopt})) << "a subsystem";
    EXPECT_EQ(search(kList, 0x8086, 0x0000), (HardwareNames{"Intel Corporation", std::nullopt})) << "a class";
    EXPECT_EQ(search(kList, 0x1234, 0x1041), HardwareNames());
}

TEST(HardwareSearch, DamagedLinesArePassedOver) {
    EXPECT_EQ(search("8086\n8086Intel\n80860  X\n808  Y\n8086   \n8086\tIntel\n\t15f\n\t15f3\n\t15f3 \n\t15f3 I225\n",
                     0x8086, 0x15F3),
              (HardwareNames{"Intel", "I225"}));
}

TEST(HardwareSearch, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(search("8086  Intel\n\t15f3  I225\r", 0x8086, 0x15F3), (HardwareNames{"Intel", "I225"}));
}

TEST(HardwareSearch, SaysWhenItHasSeenEnough) {
    parse::HardwareSearch search(0x1AF4, 0x1041);
    EXPECT_TRUE(search.feed("1af4  Red Hat\n\t1041  Vir"));
    EXPECT_TRUE(search.feed("tio"));
    EXPECT_FALSE(search.feed("\n"));
    EXPECT_FALSE(search.feed("1af4  Somebody else\n"));
    EXPECT_EQ(search.finish(), (HardwareNames{"Red Hat", "Virtio"}));
    parse::HardwareSearch over(0x1AF4, 0x9999);
    EXPECT_FALSE(over.feed(kList));
}

TEST(HardwareSearch, PartsOfAnySizeGiveTheSame) {
    for (std::size_t size = 1; size < kList.size(); ++size) {
        parse::HardwareSearch search(0x8086, 0x15F3);
        for (std::size_t begin = 0; begin < kList.size(); begin += size) {
            search.feed(kList.substr(begin, size));
        }
        EXPECT_EQ(search.finish().model, "Ethernet Controller I225-V [Foxville]") << size;
    }
}

TEST(HardwareSearch, AnEndlessLineIsPassedOver) {
    const std::string longest = "8086  " + std::string(4096 - 6, 'x');
    EXPECT_EQ(search(longest + "\n", 0x8086, 1).vendor, std::string(4096 - 6, 'x'));
    parse::HardwareSearch search(0x8086, 1);
    search.feed(longest);
    for (int round = 0; round < 100; ++round) {
        search.feed(longest);
    }
    search.feed("\n8086  Intel\n");
    EXPECT_EQ(search.finish().vendor, "Intel");
}

TEST(DatabaseNames, ARecordWithoutThemHasNone) {
    EXPECT_EQ(parse::databaseNames(""), HardwareNames());
    EXPECT_EQ(parse::databaseNames("I:123\nE:ID_VENDOR=0x8086\nE:ID_VENDOR_FROM_DATABASE=\n"), HardwareNames());
}

TEST(DatabaseNames, AreTakenAsTheyStand) {
    EXPECT_EQ(parse::databaseNames("E:ID_MODEL_FROM_DATABASE=Wi-Fi 6 AX200\n"
                                   "E:ID_VENDOR_FROM_DATABASE=Intel Corporation (Lekkerland)\n"),
              (HardwareNames{"Intel Corporation (Lekkerland)", "Wi-Fi 6 AX200"}));
}

TEST(HardwareLists, ASystemWithoutListsKnowsNobody) {
    const tests::TemporaryFolder root;
    EXPECT_EQ(findInHardwareLists(LinuxRoot(root.path()), {true, 0x8086, 0x15F3}), HardwareNames());
}

TEST(HardwareLists, AreTwoInOneOfTwoFolders) {
    const tests::TemporaryFolder root;
    root.write("usr/share/misc/pci.ids", kList);
    root.write("usr/share/misc/usb.ids", "8086  Old\n");
    root.write("usr/share/hwdata/usb.ids", "0bda  Realtek\n\t8153  RTL8153\n");
    const LinuxRoot described(root.path());
    EXPECT_EQ(findInHardwareLists(described, {true, 0x1AF4, 0x1041}).model, "Virtio 1.0 network device");
    EXPECT_EQ(findInHardwareLists(described, {false, 0x0BDA, 0x8153}), (HardwareNames{"Realtek", "RTL8153"}));
    EXPECT_EQ(findInHardwareLists(described, {false, 0x8086, 1}), HardwareNames());
}

TEST(HardwareLists, AreReadBeyondTheFirstPart) {
    const tests::TemporaryFolder root;
    std::string list;
    for (int vendor = 0; vendor < 20'000; ++vendor) {
        list += "# a line that fills the list\n";
    }
    root.write("usr/share/misc/pci.ids", list + std::string(kList));
    EXPECT_EQ(findInHardwareLists(LinuxRoot(root.path()), {true, 0x8086, 0x15F3}).vendor, "Intel Corporation");
}

TEST(HardwareIndex, DoesNotKnowWhatDoesNotExist) {
    EXPECT_EQ(findInHardwareIndex({true, 0xFFFF, 0xFFFF}).model, std::nullopt);
    EXPECT_EQ(findInHardwareIndex({false, 0, 0}).model, std::nullopt);
}

} // namespace
} // namespace qk::platform
