// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareProcessUsage.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

namespace qk {
namespace {

using namespace platform;
using memory::makeProcess;
using Usage = QKHardwareProcessUsage;

class QKHardwareProcessUsageTest : public testing::Test {
protected:
    const std::vector<int> table{kCtlKern, kKernProc, kKernProcAll};

    void setProcesses(const std::vector<kinfo_proc>& processes) { machine.kernel.setProcesses(processes); }

    static std::vector<std::byte> bytesOf(const std::vector<kinfo_proc>& processes) {
        const auto bytes = std::as_bytes(std::span(processes));
        return {bytes.begin(), bytes.end()};
    }

    memory::Machine machine;
    memory::ScopedMachine installed{machine};
};

TEST_F(QKHardwareProcessUsageTest, AKernelThatRefusesGivesNothing) {
    EXPECT_FALSE(Usage::collectProcessesUsageData().has_value());
    setProcesses({makeProcess(1, SRUN, "init")});
    machine.kernel.failReads(table, EPERM);
    EXPECT_FALSE(Usage::collectProcessesUsageData().has_value());
}

TEST_F(QKHardwareProcessUsageTest, ATableSmallerThanOneRecordIsEmpty) {
    machine.kernel.setSysctlBytes(table, {});
    EXPECT_EQ(Usage::collectProcessesUsageData()->numberOfProcesses, 0U);
    machine.kernel.setSysctlBytes(table, std::vector<std::byte>(647, std::byte{4}));
    const auto data = Usage::collectProcessesUsageData();
    EXPECT_EQ(data->numberOfProcesses, 0U);
    EXPECT_TRUE(data->inactiveProcesses.empty());
}

TEST_F(QKHardwareProcessUsageTest, CountsEveryProcessAndNamesTheInactiveOnes) {
    setProcesses({makeProcess(1, SRUN, "init"), makeProcess(2, SSTOP, "vi"), makeProcess(3, SZOMB, "gone"),
                  makeProcess(4, SSLEEP, "sleep"), makeProcess(5, SIDL, "new"), makeProcess(6, SSTOP, "vi")});
    const auto data = Usage::collectProcessesUsageData();
    EXPECT_EQ(data->numberOfProcesses, 6U);
    EXPECT_EQ(data->inactiveProcesses, (std::vector<NSString>{"vi", "gone", "vi"}));
}

TEST_F(QKHardwareProcessUsageTest, APartOfARecordAtTheEndDoesNotCount) {
    auto bytes = bytesOf({makeProcess(1, SSTOP, "a"), makeProcess(2, SSTOP, "b")});
    bytes.pop_back();
    machine.kernel.setSysctlBytes(table, bytes);
    const auto data = Usage::collectProcessesUsageData();
    EXPECT_EQ(data->numberOfProcesses, 1U);
    EXPECT_EQ(data->inactiveProcesses, std::vector<NSString>{"a"});
}

TEST_F(QKHardwareProcessUsageTest, ATableThatGrowsIsAskedForAgain) {
    const auto one = bytesOf({makeProcess(1, SRUN, "a")});
    const auto two = bytesOf({makeProcess(1, SRUN, "a"), makeProcess(2, SSTOP, "b")});
    // Each round asks for the size and then for the table, which does not fit any more twice.
    machine.kernel.playSysctl(table, {{0, one}, {0, two}, {0, one}, {ENOMEM, {}}, {0, two}, {0, two}});
    const auto data = Usage::collectProcessesUsageData();
    EXPECT_EQ(data->numberOfProcesses, 2U);
    EXPECT_EQ(data->inactiveProcesses, std::vector<NSString>{"b"});
}

TEST_F(QKHardwareProcessUsageTest, ATableThatShrinksIsCountedAsItWasRead) {
    const auto one = bytesOf({makeProcess(1, SRUN, "a")});
    const auto two = bytesOf({makeProcess(1, SRUN, "a"), makeProcess(2, SSTOP, "b")});
    machine.kernel.playSysctl(table, {{0, two}, {0, one}});
    EXPECT_EQ(Usage::collectProcessesUsageData()->numberOfProcesses, 1U);
}

TEST_F(QKHardwareProcessUsageTest, ARefusalAfterGrowthGivesNothing) {
    const auto one = bytesOf({makeProcess(1, SRUN, "a")});
    machine.kernel.playSysctl(table, {{0, one}, {ENOMEM, {}}, {EPERM, {}}});
    EXPECT_FALSE(Usage::collectProcessesUsageData().has_value());
}

TEST_F(QKHardwareProcessUsageTest, OnlyStoppedAndDefunctAreInactive) {
    for (int state = -128; state < 128; ++state) {
        EXPECT_EQ(Usage::isInactiveProcessForProcessState(static_cast<char>(state)), state == 4 || state == 5) << state;
    }
}

TEST_F(QKHardwareProcessUsageTest, ALongExecutablesNameReplacesTheOneThatWasCut) {
    machine.processTable.setPath(7, "/opt/tools/an-executable-of-23-chr");
    setProcesses({makeProcess(7, SSTOP, "an-executable-of-23-chr")});
    EXPECT_EQ(Usage::collectProcessesUsageData()->inactiveProcesses, std::vector<NSString>{"an-executable-of-23-chr"});
}

TEST_F(QKHardwareProcessUsageTest, AnyLongerExecutablesNameReplacesTheShortOne) {
    machine.processTable.setPath(7, "/x/wxyz");
    EXPECT_EQ(Usage::processNameForProc(makeProcess(7, SSTOP, "abc").kp_proc), "wxyz");
}

TEST_F(QKHardwareProcessUsageTest, AShorterOrEqualExecutablesNameDoesNot) {
    machine.processTable.setPath(7, "/x/abc");
    EXPECT_EQ(Usage::processNameForProc(makeProcess(7, SSTOP, "name").kp_proc), "name");
    EXPECT_EQ(Usage::processNameForProc(makeProcess(7, SSTOP, "xyz").kp_proc), "xyz");
}

TEST_F(QKHardwareProcessUsageTest, NamesAreMeasuredInUnitsOfUTF16) {
    machine.processTable.setPath(7, "/x/\xF0\x9F\x98\x80\xF0\x9F\x98\x80"); // two characters, four units, eight bytes
    EXPECT_EQ(Usage::processNameForProc(makeProcess(7, SSTOP, "abcde").kp_proc), "abcde");
    EXPECT_EQ(Usage::processNameForProc(makeProcess(7, SSTOP, "abc").kp_proc), NSString(u"\U0001F600\U0001F600"));
}

TEST_F(QKHardwareProcessUsageTest, AProcessWithoutAPathKeepsItsShortName) {
    EXPECT_EQ(Usage::pathForPID(3), std::nullopt);
    EXPECT_EQ(Usage::processNameForProc(makeProcess(3, SZOMB, "defunct").kp_proc), "defunct");
}

TEST_F(QKHardwareProcessUsageTest, AShortNameThatFillsItsPlaceIsReadWhole) {
    EXPECT_EQ(Usage::processNameForProc(makeProcess(3, SZOMB, "sixteen-letters!").kp_proc), "sixteen-letters!");
}

TEST_F(QKHardwareProcessUsageTest, AShortNameWithoutItsZeroByteEndsWithItsPlace) {
    extern_proc process = makeProcess(3, SZOMB, "x").kp_proc;
    std::ranges::fill(process.p_comm, 'y');
    EXPECT_EQ(Usage::processNameForProc(process), "yyyyyyyyyyyyyyyyy");
}

TEST_F(QKHardwareProcessUsageTest, AShortNameCutInsideACharacterIsNone) {
    const kinfo_proc cut = makeProcess(7, SSTOP, "abc\xE2\x82");
    EXPECT_EQ(Usage::processNameForProc(cut.kp_proc), std::nullopt);
    machine.processTable.setPath(7, "/x/y");
    EXPECT_EQ(Usage::processNameForProc(cut.kp_proc), "y");
}

TEST_F(QKHardwareProcessUsageTest, AProcessWithoutANameIsCountedButNotNamed) {
    setProcesses({makeProcess(7, SSTOP, "\xFF"), makeProcess(8, SSTOP, "b")});
    const auto data = Usage::collectProcessesUsageData();
    EXPECT_EQ(data->numberOfProcesses, 2U);
    EXPECT_EQ(data->inactiveProcesses, std::vector<NSString>{"b"});
}

TEST_F(QKHardwareProcessUsageTest, PathsAreDecodedFromUTF8) {
    machine.processTable.setPath(7, "/x/caf\xC3\xA9");
    machine.processTable.setPath(8, "/x/\xFF");
    EXPECT_EQ(Usage::pathForPID(7), NSString(u"/x/caf\u00E9"));
    EXPECT_EQ(Usage::pathForPID(8), std::nullopt);
}

} // namespace
} // namespace qk
