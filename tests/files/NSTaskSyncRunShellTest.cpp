// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSTask+SyncRunShell.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

using qk::NSTask_SyncRunShell::runCommandAtPath;
using qk::platform::TaskStream;

namespace qk {
namespace {

class NSTaskSyncRunShellTest : public testing::Test {
protected:
    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(NSTaskSyncRunShellTest, AProgramThatPrintsNothingGivesEmptyData) {
    machine.taskLauncher.addProgram("/bin/true", NSData());
    EXPECT_TRUE(runCommandAtPath("/bin/true", {}).isEmpty());
}

TEST_F(NSTaskSyncRunShellTest, GivesAllThatTheProgramPrinted) {
    machine.taskLauncher.addProgram("/bin/tool", NSData("line\n\xFF\n"));
    EXPECT_EQ(runCommandAtPath("/bin/tool", {}), NSData("line\n\xFF\n"));
}

TEST_F(NSTaskSyncRunShellTest, TheExitStatusIsNotExamined) {
    machine.taskLauncher.addProgram("/bin/tool", NSData("output"), 3);
    EXPECT_EQ(runCommandAtPath("/bin/tool", {}), NSData("output"));
}

TEST_F(NSTaskSyncRunShellTest, ArgumentsReachTheProgramAsTheyAre) {
    machine.taskLauncher.addProgram("/bin/tool", NSData());
    (void)runCommandAtPath("/bin/tool", {"-l", "a b", "$HOME; *", ""});
    const auto requests = machine.taskLauncher.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests[0].launchPath, "/bin/tool");
    EXPECT_EQ(requests[0].arguments, (std::vector<NSString>{"-l", "a b", "$HOME; *", ""}));
    EXPECT_EQ(requests[0].currentDirectoryPath, std::nullopt);
}

TEST_F(NSTaskSyncRunShellTest, StandardOutputIsCollectedAndStandardErrorDiscarded) {
    machine.taskLauncher.addProgram("/bin/tool", NSData());
    (void)runCommandAtPath("/bin/tool", {});
    EXPECT_EQ(machine.taskLauncher.requests().at(0).standardOutput, TaskStream::Collect);
    EXPECT_EQ(machine.taskLauncher.requests().at(0).standardError, TaskStream::Discard);
}

TEST_F(NSTaskSyncRunShellTest, AProgramThatCannotBeLaunchedRaisesAndSaysWhy) {
    machine.taskLauncher.failLaunches("/bin/locked", EACCES);
    try {
        (void)runCommandAtPath("/bin/locked", {});
        FAIL() << "nothing was raised";
    } catch (const NSInvalidArgumentException& exception) {
        const std::string what = exception.what();
        EXPECT_NE(what.find("/bin/locked"), std::string::npos) << what;
        EXPECT_NE(what.find("Permission denied"), std::string::npos) << what;
    }
    EXPECT_THROW((void)runCommandAtPath("/bin/missing", {}), NSInvalidArgumentException);
}

} // namespace
} // namespace qk
