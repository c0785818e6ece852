// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

namespace qk::tests {
namespace {

using platform::GestaltSelector;
using qk::NSOperatingSystemVersion;

class ProcessInfoContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, ProcessInfoContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(ProcessInfoContract, SilentMachineHasNoVersion) {
    const auto machine = subject().silent();
    EXPECT_EQ(machine.processInfo->operatingSystemVersion(), std::nullopt);
    EXPECT_EQ(machine.processInfo->gestalt(GestaltSelector::gestaltSystemVersionMajor), std::nullopt);
}

TEST_P(ProcessInfoContract, BothWaysTellTheVersion) {
    const auto machine = subject().described();
    EXPECT_EQ(machine.processInfo->operatingSystemVersion(), (NSOperatingSystemVersion{22, 4, 0}));
    EXPECT_EQ(machine.processInfo->gestalt(GestaltSelector::gestaltSystemVersionMajor), 22);
    EXPECT_EQ(machine.processInfo->gestalt(GestaltSelector::gestaltSystemVersionMinor), 4);
    EXPECT_EQ(machine.processInfo->gestalt(GestaltSelector::gestaltSystemVersionBugFix), 0);
}

class HostContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, HostContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(HostContract, SilentMachineWasNotNamed) {
    EXPECT_EQ(subject().silent().host->localizedName(), std::nullopt);
}

TEST_P(HostContract, NamesAreTold) {
    const auto machine = subject().described();
    EXPECT_EQ(machine.host->localizedName(), "Anna’s laptop");
    EXPECT_NE(machine.host->userName(), NSString()) << "nothing or a name, never an empty one";
}

class SystemConfigurationContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, SystemConfigurationContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(SystemConfigurationContract, SilentMachineHasNoName) {
    EXPECT_EQ(subject().silent().systemConfiguration->copyComputerName(), std::nullopt);
}

TEST_P(SystemConfigurationContract, ComputerNameIsThatOfTheStore) {
    EXPECT_EQ(subject().described().systemConfiguration->copyComputerName(), "laptop");
}

} // namespace
} // namespace qk::tests
