// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxKernel.h"
#include "QKFoundation/platform/linux/LinuxProcessTable.h"
#include "QKFoundation/system_info/QKHardwareProcessUsage.h"

#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/prctl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// The process table of the machine that the tests run on, with children in every state.
namespace qk::platform {
namespace {

using testing::Contains;
using tests::Child;

constexpr std::array kTable{kCtlKern, kKernProc, kKernProcAll};
constexpr const char* kShell = "/bin/sh";

std::vector<kinfo_proc> table() {
    const LinuxKernel kernel;
    for (;;) {
        std::size_t size = 0;
        EXPECT_EQ(kernel.sysctl(kTable, nullptr, &size), 0);
        std::vector<kinfo_proc> records(size / sizeof(kinfo_proc));
        const int error = kernel.sysctl(kTable, records.data(), &size);
        if (error != ENOMEM) {
            EXPECT_EQ(error, 0);
            records.resize(size / sizeof(kinfo_proc));
            return records;
        }
    }
}

std::optional<extern_proc> recordOf(pid_t pid) {
    const auto records = table();
    const auto found = std::ranges::find_if(records, [pid](const kinfo_proc& r) { return r.kp_proc.p_pid == pid; });
    return found != records.end() ? std::optional(found->kp_proc) : std::nullopt;
}

void stopWithName(const char* name) {
    ::prctl(PR_SET_NAME, name);
    ::raise(SIGSTOP);
}

// Stops itself while it runs from that file.
void stopIn(const std::string& executable) {
    ::execl(executable.c_str(), "sh", "-c", "kill -STOP $$", nullptr);
}

TEST(RealProcesses, ThisOneRunsAndIsNotInactive) {
    const auto record = recordOf(::getpid());
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->p_stat, SRUN);
    EXPECT_EQ(LinuxProcessTable().pidPath(::getpid()), std::filesystem::read_symlink("/proc/self/exe").string());
}

TEST(RealProcesses, ThreadsOfTheKernelAreLeftOut) {
    for (const kinfo_proc& record : table()) {
        EXPECT_STRNE(record.kp_proc.p_comm, "kthreadd");
    }
}

TEST(RealProcesses, AStoppedChildIsStopped) {
    const Child child([] { stopWithName("stopped"); });
    ASSERT_TRUE(child.waitUntilStopped());
    const auto record = recordOf(child.pid());
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->p_stat, SSTOP);
    EXPECT_STREQ(record->p_comm, "stopped");
}

TEST(RealProcesses, AZombieHasNoPathAndItsShortName) {
    const Child child([] { ::prctl(PR_SET_NAME, "qk-is-a-zombie"); });
    ASSERT_TRUE(child.waitUntilEnded());
    const auto record = recordOf(child.pid());
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->p_stat, SZOMB);
    EXPECT_EQ(LinuxProcessTable().pidPath(child.pid()), std::nullopt);
    EXPECT_THAT(QKHardwareProcessUsage::collectProcessesUsageData()->inactiveProcesses,
                Contains(NSString("qk-is-a-zombie")));
}

TEST(RealProcesses, NamesThatLookLikeStatesDoNotChangeThem) {
    for (const char* name : {") R (", ") R 1 2\n", "a) R (b\nc) S", " ", ")", "((("}) {
        const Child child([name] { stopWithName(name); });
        ASSERT_TRUE(child.waitUntilStopped());
        const auto record = recordOf(child.pid());
        ASSERT_TRUE(record.has_value()) << name;
        EXPECT_EQ(record->p_stat, SSTOP) << name;
        EXPECT_STREQ(record->p_comm, name);
    }
}

TEST(RealProcesses, ANameThatIsCutInsideACharacterGivesWayToTheExecutables) {
    const Child child([] { stopWithName("ääääääää"); }); // 16 bytes, of which the kernel keeps 15
    ASSERT_TRUE(child.waitUntilStopped());
    const auto record = recordOf(child.pid());
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(std::string(record->p_comm), std::string("ääääääää").substr(0, 15));
    const auto executable = std::filesystem::read_symlink("/proc/self/exe").filename().string();
    EXPECT_EQ(QKHardwareProcessUsage::processNameForProc(*record), NSString::fromUTF8Lossy(executable));
}

TEST(RealProcesses, AnExecutablesNameOf23CharactersIsShownWhole) {
    const tests::TemporaryFolder folder;
    const std::string executable = folder.path("an-executable-of-23-chr");
    std::filesystem::copy_file(kShell, executable);
    const Child first([&] { stopIn(executable); });
    const Child second([&] { stopIn(executable); });
    ASSERT_TRUE(first.waitUntilStopped() && second.waitUntilStopped());
    EXPECT_STREQ(recordOf(first.pid()).value().p_comm, "an-executable-o");
    EXPECT_EQ(QKHardwareProcessUsage::pathForPID(first.pid()), NSString::fromUTF8Lossy(executable));
    const auto names = QKHardwareProcessUsage::collectProcessesUsageData()->inactiveProcesses;
    EXPECT_EQ(std::ranges::count(names, NSString("an-executable-of-23-chr")), 2) << "both are listed";
}

TEST(RealProcesses, ADeletedExecutableKeepsItsName) {
    const tests::TemporaryFolder folder;
    const std::string executable = folder.path("deleted");
    std::filesystem::copy_file(kShell, executable);
    const Child child([&] { stopIn(executable); });
    ASSERT_TRUE(child.waitUntilStopped());
    std::filesystem::remove(executable);
    EXPECT_EQ(LinuxProcessTable().pidPath(child.pid()), executable);
    EXPECT_EQ(QKHardwareProcessUsage::processNameForProc(recordOf(child.pid()).value()), "deleted");
}

TEST(RealProcesses, AFileWhoseNameEndsLikeTheMarkKeepsIt) {
    const tests::TemporaryFolder folder;
    const std::string executable = folder.path("tool (deleted)");
    std::filesystem::copy_file(kShell, executable);
    const Child child([&] { stopIn(executable); });
    ASSERT_TRUE(child.waitUntilStopped());
    EXPECT_EQ(LinuxProcessTable().pidPath(child.pid()), executable);
}

TEST(RealProcesses, OnesThatVanishWhileTheTableIsReadDoNoHarm) {
    const Child breeder([] {
        for (;;) {
            std::array<pid_t, 8> children{};
            for (pid_t& child : children) {
                child = ::fork();
                if (child == 0) {
                    ::_exit(0);
                }
            }
            for (const pid_t child : children) {
                ::waitpid(child, nullptr, 0);
            }
        }
    });
    for (int round = 0; round < 100; ++round) {
        bool hasMe = false;
        for (const kinfo_proc& record : table()) {
            EXPECT_GT(record.kp_proc.p_pid, 0);
            EXPECT_TRUE(record.kp_proc.p_stat >= SRUN && record.kp_proc.p_stat <= SZOMB);
            hasMe |= record.kp_proc.p_pid == ::getpid();
        }
        EXPECT_TRUE(hasMe);
        const auto data = QKHardwareProcessUsage::collectProcessesUsageData();
        ASSERT_TRUE(data.has_value());
        EXPECT_LE(data->inactiveProcesses.size(), data->numberOfProcesses);
    }
}

} // namespace
} // namespace qk::platform
