// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Processes.h"

#include "QKFoundation/platform/linux/LinuxProcessTable.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace qk::platform {
namespace {

using namespace std::string_literals;

class ProcessesTest : public testing::Test {
protected:
    void addProcess(int pid, const std::string& command, char state, unsigned flags = 0x400100) {
        root.write("proc/" + std::to_string(pid) + "/stat", std::to_string(pid) + " (" + command + ") " + state +
                                                                " 1 2 3 0 -1 " + std::to_string(flags) +
                                                                " 100 0 0 0 5 6 0 0 20 0 1 0 100 4096 10\n");
    }
    void link(int pid, const std::string& target) {
        std::filesystem::create_directories(root.path("proc/" + std::to_string(pid)));
        std::filesystem::create_symlink(target, root.path("proc/" + std::to_string(pid) + "/exe"));
    }
    std::vector<kinfo_proc> table() {
        std::vector<kinfo_proc> records(1000);
        std::size_t size = records.size() * sizeof(kinfo_proc);
        EXPECT_EQ(processes::readTable(linuxRoot(), records.data(), &size), 0);
        EXPECT_EQ(size % sizeof(kinfo_proc), 0U);
        records.resize(size / sizeof(kinfo_proc));
        return records;
    }
    std::optional<std::string> pathOf(int pid) { return LinuxProcessTable(linuxRoot()).pidPath(pid); }
    LinuxRoot linuxRoot() { return LinuxRoot(root.path()); }

    tests::TemporaryFolder root;
};

TEST_F(ProcessesTest, WithoutProcThereIsNoTable) {
    EXPECT_EQ(processes::tableSize(linuxRoot()), std::nullopt);
    std::size_t size = 0;
    EXPECT_EQ(processes::readTable(linuxRoot(), nullptr, &size), ENOENT);
    EXPECT_EQ(pathOf(1), std::nullopt);
}

TEST_F(ProcessesTest, TheSizeComesFromTheNumberOfTasks) {
    root.write("proc/loadavg", "0.20 0.18 0.12 1/80 11206\n");
    EXPECT_GE(processes::tableSize(linuxRoot()), 80 * sizeof(kinfo_proc));
    root.write("proc/loadavg", "0.20 0.18\n");
    EXPECT_EQ(processes::tableSize(linuxRoot()), std::nullopt);
}

TEST_F(ProcessesTest, OddNamesDoNotChangeTheState) {
    addProcess(7, ") R (", 'T');
    addProcess(8, "a) R (b\nc) S", 'Z');
    addProcess(9, "", 'S');
    addProcess(10, "a name of 15 by", 'D');
    addProcess(11, "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3", 't');
    std::map<int, std::pair<char, std::string>> found;
    for (const kinfo_proc& record : table()) {
        found[record.kp_proc.p_pid] = {record.kp_proc.p_stat, record.kp_proc.p_comm};
    }
    EXPECT_EQ(found, (std::map<int, std::pair<char, std::string>>{
                         {7, {SSTOP, ") R ("}},
                         {8, {SZOMB, "a) R (b\nc) S"}},
                         {9, {SSLEEP, ""}},
                         {10, {SSLEEP, "a name of 15 by"}},
                         {11, {SSTOP, "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3"}},
                     }));
}

TEST_F(ProcessesTest, KernelThreadsAndWhatIsNoProcessAreLeftOut) {
    addProcess(1, "init", 'S');
    addProcess(2, "kthreadd", 'S', 0x208040);
    addProcess(3, "rcu_gp", 'I', 0x4208060);
    addProcess(4, "just gone", 'X');
    root.write("proc/5/stat", "");            // ended between two readings
    root.write("proc/6/status", "Name: x\n"); // its file is gone already
    root.write("proc/7/stat", "damaged");
    root.write("proc/12x/stat", "12 (x) S 1 2 3 0 -1 0 1\n");
    root.write("proc/loadavg", "");
    root.write("proc/99999999999999999999/stat", "12 (x) S 1 2 3 0 -1 0 1\n");
    ASSERT_EQ(table().size(), 1U);
    EXPECT_EQ(table()[0].kp_proc.p_pid, 1);
}

TEST_F(ProcessesTest, NamesThatAreTooLongAreCutTo16) {
    addProcess(1, "a-name-that-no-kernel-would-print", 'S');
    EXPECT_STREQ(table().at(0).kp_proc.p_comm, "a-name-that-no-k");
}

TEST_F(ProcessesTest, ATableThatDoesNotFitIsENOMEM) {
    for (int pid = 1; pid <= 3; ++pid) {
        addProcess(pid, "x", 'S');
    }
    std::vector<kinfo_proc> records(3);
    std::size_t size = 3 * sizeof(kinfo_proc) - 1;
    EXPECT_EQ(processes::readTable(linuxRoot(), records.data(), &size), ENOMEM);
    size = 3 * sizeof(kinfo_proc);
    EXPECT_EQ(processes::readTable(linuxRoot(), records.data(), &size), 0);
    EXPECT_EQ(size, 3 * sizeof(kinfo_proc));
}

TEST_F(ProcessesTest, TheBufferNeedNotBeAligned) {
    addProcess(77, "x", 'Z');
    std::vector<char> bytes(sizeof(kinfo_proc) + 1);
    std::size_t size = sizeof(kinfo_proc);
    ASSERT_EQ(processes::readTable(linuxRoot(), bytes.data() + 1, &size), 0);
    kinfo_proc record;
    std::memcpy(&record, bytes.data() + 1, sizeof record);
    EXPECT_EQ(record.kp_proc.p_pid, 77);
    EXPECT_EQ(record.kp_proc.p_stat, SZOMB);
}

TEST_F(ProcessesTest, TheMarkOfADeletedExecutableIsLeftOut) {
    link(1, "/usr/bin/tool");
    link(2, "/usr/bin/tool (deleted)");
    link(3, "/usr/bin/really (deleted)");
    root.write("usr/bin/really (deleted)", "");
    EXPECT_EQ(pathOf(1), "/usr/bin/tool");
    EXPECT_EQ(pathOf(2), "/usr/bin/tool");
    EXPECT_EQ(pathOf(3), "/usr/bin/really (deleted)");
    EXPECT_EQ(pathOf(4), std::nullopt);
    EXPECT_EQ(pathOf(-1), std::nullopt);
}

} // namespace
} // namespace qk::platform
