// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ServiceNames.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform {
namespace {

TEST(MachineIdentifier, AnotherContentIsZero) {
    const std::string zero(16, '\0');
    for (const std::string_view content :
         {"", "\n", "uninitialized\n", "00112233445566778899aabbccddee", "00112233445566778899aabbccddeeffff\n",
          "00112233445566778899aabbccddeefg\n", "-0112233445566778899aabbccddeeff\n"}) {
        EXPECT_EQ(machineIdentifier(content), zero) << content;
    }
}

TEST(MachineIdentifier, IsSixteenBytes) {
    EXPECT_EQ(machineIdentifier("41424344454647484950515253545556\n"), "ABCDEFGHIPQRSTUV");
    EXPECT_EQ(machineIdentifier("41424344454647484950515253545556"), "ABCDEFGHIPQRSTUV");
}

TEST(NameBasedUUID, IsThatOfTheStandard) {
    // The name space of domain names, and what every other implementation makes of this name in it.
    const std::string space("\x6b\xa7\xb8\x10\x9d\xad\x11\xd1\x80\xb4\x00\xc0\x4f\xd4\x30\xc8", 16);
    EXPECT_EQ(nameBasedUUID(space, "www.example.com"), "2ED6657D-E927-568B-95E1-2665A8AEA6A2");
}

TEST(ServiceNamer, NamesHangOnTheMachineAndTheInterface) {
    const tests::TemporaryFolder one;
    one.write("etc/machine-id", "00112233445566778899aabbccddeeff\n");
    const tests::TemporaryFolder other;
    other.write("etc/machine-id", "ffeeddccbbaa99887766554433221100\n");
    const LinuxRoot oneRoot(one.path());
    const LinuxRoot otherRoot(other.path());
    ServiceNamer namer(oneRoot);
    const ServiceNames names = namer.names("eth0");
    EXPECT_EQ(names.interfaceName, "eth0");
    EXPECT_EQ(names.id.length(), 36U);
    EXPECT_EQ(ServiceNamer(oneRoot).names("eth0").id, names.id);
    EXPECT_NE(namer.names("eth1").id, names.id);
    EXPECT_NE(ServiceNamer(otherRoot).names("eth0").id, names.id);
}

TEST(ServiceNamer, HostIsRememberedAsItIsRead) {
    const LinuxRoot host;
    ServiceNamer namer(host);
    const ServiceNames names = namer.names("eth0");
    EXPECT_EQ(ServiceNamer(host).names("eth0").id, names.id);
    EXPECT_EQ(names.interfaceName, "eth0");
}

TEST(ServiceNamer, NameThatIsNoTextStaysToldApart) {
    const LinuxRoot none("/nonexistent");
    ServiceNamer namer(none);
    EXPECT_NE(namer.names("a\xFF").interfaceName, namer.names("a\xFE").interfaceName);
}

} // namespace
} // namespace qk::platform
