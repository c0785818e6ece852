// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/values/NSNumber.h"
#include "QKFoundation/platform/values/NSURL.h"

#include "tests/tools/qkinfo/ManualClock.h"
#include "tools/qkinfo/Commands.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>

namespace qk::info {

namespace {

using nlohmann::json;
using platform::memory::Machine;
using platform::memory::makeProcess;
using platform::memory::ScopedMachine;
using testing::ElementsAre;
using testing::HasSubstr;

NSDictionary volume(const NSString& name, std::uint64_t total, std::uint64_t free) {
    return {{platform::NSURLVolumeNameKey, name},
            {platform::NSURLVolumeTotalCapacityKey, NSNumber(total)},
            {platform::NSURLVolumeAvailableCapacityKey, NSNumber(free)}};
}

class LoadCommands : public testing::Test {
protected:
    [[nodiscard]] Section section(std::string_view name) {
        const Command& command = *std::ranges::find(commands(), name, &Command::name);
        return sectionOf(command, Surroundings{"/", &clock});
    }
    [[nodiscard]] json jsonOf(std::string_view name) {
        return json::parse(renderJson(std::vector{section(name)}))[std::string(name)];
    }
    [[nodiscard]] std::string textOf(std::string_view name) { return renderText(std::vector{section(name)}, {}); }

    Machine machine;
    ManualClock clock;

private:
    ScopedMachine installed_{machine};
};

} // namespace

TEST_F(LoadCommands, WhatTheMachineRefusesIsNotReported) {
    for (const std::string name : {"cpu", "memory", "processes"}) {
        EXPECT_TRUE(jsonOf(name).is_null()) << name;
        EXPECT_THAT(textOf(name), testing::EndsWith("\n  not reported by this system\n"));
    }
    EXPECT_EQ(jsonOf("volumes"), json::array());
    EXPECT_EQ(textOf("volumes"), "Volumes\n  No fixed volumes.\n");
}

TEST_F(LoadCommands, TheLoadIsThatOfAQuarterOfASecond) {
    machine.hostStatistics.addProcessorTicks({{1000, 1000, 1000, 1000}, {0, 0, 0, 0}});
    machine.hostStatistics.addProcessorTicks({{1010, 1005, 1020, 1005}, {10, 5, 40, 5}});
    EXPECT_EQ(textOf("cpu"), "Processor load\n"
                             "  Measured over  250 ms\n"
                             "  In use         40.0%\n"
                             "  User           20.0%\n"
                             "  System         10.0%\n"
                             "  Idle           60.0%\n");
    EXPECT_THAT(clock.waits, ElementsAre(std::chrono::milliseconds(250)));
}

TEST_F(LoadCommands, TheLoadInJsonHasItsUnits) {
    machine.hostStatistics.addProcessorTicks({{0, 0, 0, 0}});
    machine.hostStatistics.addProcessorTicks({{1, 2, 5, 0}});
    EXPECT_EQ(jsonOf("cpu"), json::parse(R"({"interval_ms": 250, "total_percent": 37.5, "user_percent": 12.5,
                                             "system_percent": 25.0, "idle_percent": 62.5})"));
}

TEST_F(LoadCommands, ALoadWithoutATickIsNotReported) {
    machine.hostStatistics.addProcessorTicks({{1, 1, 1, 1}});
    EXPECT_EQ(jsonOf("cpu"), json::parse(R"({"interval_ms": 250, "total_percent": null, "user_percent": null,
                                             "system_percent": null, "idle_percent": null})"));
    EXPECT_THAT(textOf("cpu"), HasSubstr("In use         not reported by this system\n"));
}

TEST_F(LoadCommands, ALoadWithoutABeginningOrAnEndIsNotReported) {
    machine.hostStatistics.refuseProcessorTicks(EPERM);
    machine.hostStatistics.addProcessorTicks({{1, 1, 1, 1}});
    EXPECT_TRUE(jsonOf("cpu").is_null()) << "a sample that covers the time since the start is none of this interval";
    machine.hostStatistics.refuseProcessorTicks(EPERM);
    EXPECT_TRUE(jsonOf("cpu").is_null());
}

TEST_F(LoadCommands, MemoryIsShownAsTheKernelCountsIt) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{8} << 30);
    machine.kernel.setSysctl("hw.pagesize", std::uint64_t{4096});
    platform::VMStatistics64 statistics;
    statistics.internal_page_count = 1 << 18;
    statistics.wire_count = 1 << 17;
    statistics.compressor_page_count = 1;
    statistics.external_page_count = 1 << 16;
    statistics.free_count = 256;
    statistics.swapouts = 3;
    machine.hostStatistics.addMemoryStatistics(statistics);
    EXPECT_EQ(textOf("memory"), "Memory\n"
                                "  Installed           8.0 GiB (8589934592 bytes)\n"
                                "  Used                1.5 GiB (1610616832 bytes)\n"
                                "  Unused              6.5 GiB (6979317760 bytes)\n"
                                "  Applications        1.0 GiB (1073741824 bytes)\n"
                                "  Wired               512.0 MiB (536870912 bytes)\n"
                                "  Compressed          4.0 KiB (4096 bytes)\n"
                                "  Cached files        256.0 MiB (268435456 bytes)\n"
                                "  Free                1.0 MiB (1048576 bytes)\n"
                                "  Swapped out so far  12.0 KiB (12288 bytes)\n");
    EXPECT_EQ(jsonOf("memory")["swapped_out_bytes"], 12288);
}

TEST_F(LoadCommands, UnusedMemoryThatWrappedIsShownAsItIs) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{4096});
    machine.kernel.setSysctl("hw.pagesize", std::uint64_t{4096});
    platform::VMStatistics64 statistics;
    statistics.wire_count = 2;
    machine.hostStatistics.addMemoryStatistics(statistics);
    EXPECT_EQ(jsonOf("memory")["unused_bytes"], UINT64_MAX - 4095);
}

TEST_F(LoadCommands, VolumesAreATable) {
    machine.fileManager.addVolume("/", volume("System", std::uint64_t{64} << 30, std::uint64_t{48} << 30));
    machine.fileManager.addVolume("/data", volume("\x1b[31mdata", 2048, 1024));
    machine.fileManager.addVolume("/odd", volume("", 1024, 2048));
    EXPECT_EQ(textOf("volumes"), "Volumes\n"
                                 "  Name          Total     Free      Used\n"
                                 "  System        64.0 GiB  48.0 GiB  16.0 GiB\n"
                                 "  \\x1B[31mdata  2.0 KiB   1.0 KiB   1.0 KiB\n"
                                 "  not reported  1.0 KiB   2.0 KiB   not reported\n"
                                 "  3 volumes.\n");
    EXPECT_EQ(jsonOf("volumes").at(2),
              json::parse(R"({"name": null, "total_bytes": 1024, "free_bytes": 2048, "used_bytes": null})"));
}

TEST_F(LoadCommands, ProcessesAreCountedAndTheInactiveOnesNamed) {
    const std::array table{makeProcess(1, platform::SRUN, "init"), makeProcess(2, platform::SSTOP, "editor"),
                           makeProcess(3, platform::SZOMB, "job"), makeProcess(4, platform::SZOMB, "job"),
                           makeProcess(5, platform::SZOMB, " ")};
    machine.kernel.setProcesses(table);
    EXPECT_EQ(textOf("processes"), "Processes\n"
                                   "  Processes           5\n"
                                   "  Stopped or defunct  editor, job, job\n");
    EXPECT_EQ(jsonOf("processes"), json::parse(R"({"processes": 5, "inactive_processes": ["editor", "job", "job"]})"));
}

TEST_F(LoadCommands, WithoutInactiveProcessesThereAreNone) {
    machine.kernel.setProcesses(std::array{makeProcess(1, platform::SRUN, "init")});
    EXPECT_THAT(textOf("processes"), HasSubstr("Stopped or defunct  none\n"));
    EXPECT_EQ(jsonOf("processes")["inactive_processes"], json::array());
}

TEST_F(LoadCommands, TheReportShowsTheFirstTenOfAList) {
    for (int index = 0; index < 12; ++index) {
        const NSString path = NSString::fromUTF8Lossy("/v" + std::to_string(index));
        machine.fileManager.addVolume(path, volume("disk", 2048, 1024));
    }
    const Command& command = *std::ranges::find(commands(), "volumes", &Command::name);
    const std::vector sections{sectionForReport(command, Surroundings{"/", &clock})};
    const std::string text = renderText(sections, {});
    EXPECT_EQ(std::ranges::count(text, '\n'), 13);
    EXPECT_THAT(text, testing::EndsWith("\n  and 2 more: qkinfo volumes\n"));
    EXPECT_EQ(json::parse(renderJson(sections))["volumes"].size(), 12U);
    EXPECT_THAT(textOf("volumes"), testing::EndsWith("\n  12 volumes.\n"));
}

} // namespace qk::info
