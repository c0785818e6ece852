// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace qk::platform::memory {
namespace {

TEST(MemoryKernel, KnowsNothingUntilTold) {
    const Machine machine;
    std::size_t size = 5;
    EXPECT_EQ(machine.kernel.sysctlbyname("hw.model", nullptr, &size), ENOENT);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(machine.kernel.sysctl(std::array{1, 2}, nullptr, &size), ENOENT);
}

TEST(MemoryKernel, CountsTheRequests) {
    Machine machine;
    EXPECT_EQ(machine.kernel.requests("hw.model"), 0U);
    std::size_t size = 0;
    machine.kernel.sysctlbyname("hw.model", nullptr, &size);
    machine.kernel.setSysctl("hw.model", "X");
    machine.kernel.sysctlbyname("hw.model", nullptr, &size);
    EXPECT_EQ(machine.kernel.requests("hw.model"), 2U);
}

TEST(MemoryKernel, ForgetsWhatIsRemoved) {
    Machine machine;
    machine.kernel.setSysctl("hw.model", "X");
    machine.kernel.removeSysctl("hw.model");
    std::size_t size = 0;
    EXPECT_EQ(machine.kernel.sysctlbyname("hw.model", nullptr, &size), ENOENT);
}

TEST(MemoryKernel, CanTellASizeAndRefuseTheRead) {
    Machine machine;
    machine.kernel.setSysctl("hw.model", "abc");
    machine.kernel.failReads("hw.model", EIO);
    std::array<char, 8> buffer{};
    std::size_t size = buffer.size();
    EXPECT_EQ(machine.kernel.sysctlbyname("hw.model", nullptr, &size), 0);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(machine.kernel.sysctlbyname("hw.model", buffer.data(), &size), EIO);
    EXPECT_EQ(buffer[0], '\0');
}

TEST(MemoryTaskLauncher, RemembersEveryRequest) {
    Machine machine;
    machine.taskLauncher.addProgram("/bin/a", NSData("out"), 3);
    TaskRequest request;
    request.launchPath = "/bin/a";
    request.standardOutput = TaskStream::Collect;
    const auto outcome = machine.taskLauncher.run(request);
    ASSERT_TRUE(std::holds_alternative<TaskExit>(outcome));
    EXPECT_EQ(std::get<TaskExit>(outcome).terminationStatus, 3);
    EXPECT_EQ(std::get<TaskExit>(outcome).output, NSData("out"));
    request.launchPath = "/bin/b";
    EXPECT_EQ(std::get<TaskLaunchFailure>(machine.taskLauncher.run(request)).errorNumber, ENOENT);
    EXPECT_EQ(machine.taskLauncher.requests().size(), 2U);
}

TEST(MemoryTaskLauncher, KeepsNoOutputThatWasNotAskedFor) {
    Machine machine;
    machine.taskLauncher.addProgram("/bin/a", NSData("out"));
    TaskRequest request;
    request.launchPath = "/bin/a";
    EXPECT_TRUE(std::get<TaskExit>(machine.taskLauncher.run(request)).output.isEmpty());
}

TEST(MemoryTaskLauncher, AProgramMayRunAnother) {
    Machine machine;
    machine.taskLauncher.addProgram("/bin/inner", NSData("inner"));
    machine.taskLauncher.addProgram("/bin/outer", [&](const TaskRequest& request) {
        TaskRequest inner = request;
        inner.launchPath = "/bin/inner";
        return std::get<TaskExit>(machine.taskLauncher.run(inner));
    });
    TaskRequest request;
    request.launchPath = "/bin/outer";
    request.standardOutput = TaskStream::Collect;
    EXPECT_EQ(std::get<TaskExit>(machine.taskLauncher.run(request)).output, NSData("inner"));
}

TEST(MemoryFileManager, HoldsTheRootAlone) {
    const Machine machine;
    EXPECT_EQ(machine.fileManager.contentsOfDirectoryAtPath("/"), std::vector<NSString>());
    EXPECT_EQ(machine.fileManager.contentsOfDirectoryAtPath("/tmp"), std::nullopt);
}

TEST(Machine, WhatWaitsInItsQueuesGoesWithIt) {
    std::weak_ptr<const Services> services;
    {
        const Machine machine;
        services = machine.services();
        machine.dispatch.asyncOnMainQueue([held = machine.services()] { static_cast<void>(held); });
        machine.dispatch.asyncOnBackgroundQueue([held = machine.services()] { static_cast<void>(held); });
    }
    EXPECT_TRUE(services.expired());
}

TEST(MemoryFileManager, SlashesMakeNoDifference) {
    Machine machine;
    machine.fileManager.addFile("/a//b/c.txt");
    EXPECT_TRUE(machine.fileManager.isDirectory("/a/b/"));
    EXPECT_EQ(machine.fileManager.contentsOfDirectoryAtPath("//a/b//"), std::vector<NSString>{"c.txt"});
}

TEST(MemoryFileManager, ForgetsWhatIsRemovedWithAllBelow) {
    Machine machine;
    machine.fileManager.addFile("/a/b/c");
    machine.fileManager.addFile("/ab");
    machine.fileManager.remove("/a");
    EXPECT_FALSE(machine.fileManager.isDirectory("/a/b"));
    EXPECT_EQ(machine.fileManager.contentsOfDirectoryAtPath("/"), std::vector<NSString>{"ab"});
}

TEST(MemoryFileManager, DeniesWhatItWasToldToDeny) {
    Machine machine;
    machine.fileManager.addPropertyList("/etc/list.plist", {{"key", "value"}});
    EXPECT_EQ(machine.fileManager.dictionaryWithContentsOfFile("/etc/list.plist"), (NSDictionary{{"key", "value"}}));
    machine.fileManager.denyReading("/etc/list.plist");
    EXPECT_EQ(machine.fileManager.dictionaryWithContentsOfFile("/etc/list.plist"), std::nullopt);
    EXPECT_EQ(machine.fileManager.dictionaryWithContentsOfFile("/etc"), std::nullopt);
}

} // namespace
} // namespace qk::platform::memory
