// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKSystemInfo.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

class QKSystemInfoTest : public testing::Test {
protected:
    static constexpr const char kTool[] = "/usr/sbin/softwareupdate";

    void setProductName(const Value& name) {
        machine.fileManager.addPropertyList("/System/Library/CoreServices/SystemVersion.plist",
                                            {{"ProductName", name}});
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(QKSystemInfoTest, AMachineThatTellsNothingAnswersNothing) {
    EXPECT_EQ(QKSystemInfo::username(), std::nullopt);
    EXPECT_EQ(QKSystemInfo::computerName(), std::nullopt);
    EXPECT_EQ(QKSystemInfo::osProductName(), std::nullopt);
}

TEST_F(QKSystemInfoTest, TheUserNameIsTheHosts) {
    machine.host.setUserName("ada");
    EXPECT_EQ(QKSystemInfo::username(), "ada");
}

TEST_F(QKSystemInfoTest, TheComputerNameIsTheOnePeopleGave) {
    machine.host.setLocalizedName(NSString(u"Ada\u2019s computer"));
    machine.systemConfiguration.setComputerName("store");
    EXPECT_EQ(QKSystemInfo::computerName(), NSString(u"Ada\u2019s computer"));
}

TEST_F(QKSystemInfoTest, WithoutOneTheStoresNameIsTheComputers) {
    machine.systemConfiguration.setComputerName("store");
    EXPECT_EQ(QKSystemInfo::computerName(), "store");
}

TEST_F(QKSystemInfoTest, AnEmptyComputerNameIsAName) {
    machine.host.setLocalizedName("");
    machine.systemConfiguration.setComputerName("store");
    EXPECT_EQ(QKSystemInfo::computerName(), "");
}

TEST_F(QKSystemInfoTest, TheManufacturerIsAlwaysTheSame) {
    EXPECT_EQ(QKSystemInfo::osManufacturer(), "Apple");
}

TEST_F(QKSystemInfoTest, TheProductNameIsTheFilesEntry) {
    setProductName("Mac OS X");
    EXPECT_EQ(QKSystemInfo::osProductName(), "Mac OS X");
}

TEST_F(QKSystemInfoTest, AFileWithoutThatEntryGivesNothing) {
    machine.fileManager.addPropertyList("/System/Library/CoreServices/SystemVersion.plist",
                                        {{"ProductVersion", "10.12"}});
    EXPECT_EQ(QKSystemInfo::osProductName(), std::nullopt);
}

TEST_F(QKSystemInfoTest, AProductNameThatIsNoTextIsShownByItsDescription) {
    setProductName(7);
    EXPECT_EQ(QKSystemInfo::osProductName(), "7");
}

TEST_F(QKSystemInfoTest, TheDescriptionJoinsNameCodeNameVersionAndBuild) {
    setProductName("Mac OS X");
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{10, 12, 6});
    machine.kernel.setSysctl("kern.osversion", "16G29");
    EXPECT_EQ(QKSystemInfo::osVersionDescription(), "Mac OS X Sierra 10.12.6 (16G29)");
}

TEST_F(QKSystemInfoTest, TheDescriptionLeavesOutACodeNameThatTheTableLacks) {
    setProductName("Mac OS X");
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{10, 13, 1});
    machine.kernel.setSysctl("kern.osversion", "17B48");
    EXPECT_EQ(QKSystemInfo::osVersionDescription(), "Mac OS X 10.13.1 (17B48)");
}

TEST_F(QKSystemInfoTest, TheDescriptionOfAMachineThatTellsNothing) {
    EXPECT_EQ(QKSystemInfo::osVersionDescription(), "Cheetah 0.0.0 ((null))");
}

TEST_F(QKSystemInfoTest, AnEmptyProductNameIsANameInTheDescription) {
    setProductName("");
    machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{11, 0, 0});
    machine.kernel.setSysctl("kern.osversion", "");
    EXPECT_EQ(QKSystemInfo::osVersionDescription(), " Cheetah 11.0.0 ()");
}

TEST_F(QKSystemInfoTest, UpdatesWithoutAToolRaise) {
    EXPECT_THROW((void)QKSystemInfo::osUpdates(), NSInvalidArgumentException);
}

TEST_F(QKSystemInfoTest, UpdatesAskTheToolForItsListing) {
    machine.taskLauncher.addProgram(kTool, NSData("Software Update Tool\n"
                                                  "   * ExampleTool-2.1\n"
                                                  "\tExample Tool (2.1), 20480K [recommended] [restart]\n"));
    const auto updates = QKSystemInfo::osUpdates();
    ASSERT_TRUE(updates.has_value());
    EXPECT_EQ(*updates, (NSArray{NSDictionary{{"name", "ExampleTool"},
                                              {"version", "2.1"},
                                              {"description", "Example Tool"},
                                              {"size", "20480K"},
                                              {"restart", true},
                                              {"recommended", true}}}));
    const auto requests = machine.taskLauncher.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].launchPath, NSString(kTool));
    EXPECT_EQ(requests[0].arguments, std::vector<NSString>{"-l"});
}

TEST_F(QKSystemInfoTest, NoUpdatesAreAnEmptyArray) {
    machine.taskLauncher.addProgram(kTool, NSData("No new software available.\n"));
    EXPECT_EQ(QKSystemInfo::osUpdates(), NSArray());
}

TEST_F(QKSystemInfoTest, AListingThatCannotBeReadIsNothing) {
    machine.taskLauncher.addProgram(kTool, NSData("something else"));
    EXPECT_EQ(QKSystemInfo::osUpdates(), std::nullopt);
    machine.taskLauncher.addProgram(kTool, NSData());
    EXPECT_EQ(QKSystemInfo::osUpdates(), std::nullopt);
}

TEST_F(QKSystemInfoTest, AListingThatIsNotUTF8IsNothing) {
    machine.taskLauncher.addProgram(kTool, NSData("No new software available. \xFF"));
    EXPECT_EQ(QKSystemInfo::osUpdates(), std::nullopt);
}

TEST_F(QKSystemInfoTest, TheToolsExitStatusIsNotExamined) {
    machine.taskLauncher.addProgram(kTool, NSData("No new software available.\n"), 1);
    EXPECT_EQ(QKSystemInfo::osUpdates(), NSArray());
}

} // namespace
} // namespace qk
