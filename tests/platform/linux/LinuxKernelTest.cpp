// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxKernel.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;

LinuxRoot fixture(const std::string& name) {
    return LinuxRoot(std::string(QK_FIXTURES_DIR "/linux/") + name);
}

// The whole answer as bytes; nothing for ENOENT.
std::optional<std::string> bytesOf(const Kernel& kernel, const char* name) {
    std::size_t size = 0;
    const int error = kernel.sysctlbyname(name, nullptr, &size);
    if (error != 0) {
        EXPECT_EQ(error, ENOENT) << name;
        return std::nullopt;
    }
    std::string bytes(size, '?');
    EXPECT_EQ(kernel.sysctlbyname(name, bytes.data(), &size), 0) << name;
    EXPECT_EQ(size, bytes.size()) << name;
    return bytes;
}

std::optional<std::string> textOf(const Kernel& kernel, const char* name) {
    std::optional<std::string> bytes = bytesOf(kernel, name);
    if (bytes.has_value()) {
        EXPECT_TRUE(bytes->ends_with('\0')) << name;
        bytes->pop_back();
    }
    return bytes;
}

template <typename T>
std::optional<T> numberOf(const Kernel& kernel, const char* name) {
    const std::optional<std::string> bytes = bytesOf(kernel, name);
    if (!bytes.has_value() || bytes->size() != sizeof(T)) {
        EXPECT_FALSE(bytes.has_value()) << name << " has " << bytes->size() << " bytes";
        return std::nullopt;
    }
    T value{};
    std::memcpy(&value, bytes->data(), sizeof(T));
    return value;
}

std::optional<std::int64_t> bootSeconds(const Kernel& kernel) {
    TimeValue time{-1, -1, -1};
    std::size_t size = sizeof(time);
    const std::array path = {kCtlKern, kKernBootTime};
    if (kernel.sysctl(path, &time, &size) != 0) {
        return std::nullopt;
    }
    EXPECT_EQ(size, sizeof(time));
    EXPECT_EQ(time.microseconds, 0);
    return time.seconds;
}

std::string kernelVersion(const Kernel& kernel) {
    std::array<char, 4096> text{};
    std::size_t size = text.size();
    const std::array path = {kCtlKern, kKernVersion};
    EXPECT_EQ(kernel.sysctl(path, text.data(), &size), 0);
    EXPECT_EQ(std::strlen(text.data()) + 1, size);
    return text.data();
}

TEST(LinuxKernel, MachineThatTellsNothingHasOnlyWhatThisProgramKnows) {
    const LinuxKernel kernel(fixture("no-such-machine"));
    for (const char* name :
         {"hw.model", "kern.osversion", "machdep.cpu.brand_string", "hw.physicalcpu", "hw.logicalcpu",
          "hw.cpufrequency_max", "hw.memsize", "hw.optional.x86_64", "hw.optional.64bitops", "", "hw"}) {
        EXPECT_EQ(bytesOf(kernel, name), std::nullopt) << name;
    }
    EXPECT_EQ(numberOf<std::uint64_t>(kernel, "hw.pagesize"), static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)));
    EXPECT_EQ(bootSeconds(kernel), std::nullopt);
}

TEST(LinuxKernel, UnknownNumberPathsAreAbsent) {
    const LinuxKernel kernel(fixture("virtual-machine"));
    std::size_t size = 8;
    EXPECT_EQ(kernel.sysctl(std::array<int, 0>{}, nullptr, &size), ENOENT);
    EXPECT_EQ(kernel.sysctl(std::array{1}, nullptr, &size), ENOENT);
    EXPECT_EQ(kernel.sysctl(std::array{1, 3}, nullptr, &size), ENOENT);
    EXPECT_EQ(kernel.sysctl(std::array{1, 2, 0}, nullptr, &size), ENOENT);
    EXPECT_EQ(size, 8U);
}

TEST(LinuxKernel, ReadsAVirtualMachine) {
    const LinuxKernel kernel(fixture("virtual-machine"));
    EXPECT_EQ(textOf(kernel, "hw.model"), std::nullopt);
    EXPECT_EQ(textOf(kernel, "machdep.cpu.brand_string"), "Intel(R) Xeon(R) Processor");
    EXPECT_EQ(textOf(kernel, "kern.osversion"), "6.1.0-30-amd64");
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.physicalcpu"), 2U);
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.logicalcpu"), 2U);
    EXPECT_EQ(numberOf<std::uint64_t>(kernel, "hw.cpufrequency_max"), std::nullopt);
    EXPECT_EQ(numberOf<std::uint64_t>(kernel, "hw.memsize"), 5 * std::uint64_t{0x8000000});
    EXPECT_EQ(numberOf<std::int32_t>(kernel, "hw.cpu64bit_capable"), 1);
    EXPECT_EQ(bootSeconds(kernel), 1795220992);
    EXPECT_THAT(kernelVersion(kernel),
                testing::AllOf(testing::StartsWith("Linux version 6.1.0-30-amd64"), testing::EndsWith("(2025-01-12)")));
}

TEST(LinuxKernel, ReadsALaptop) {
    const LinuxKernel kernel(fixture("laptop"));
    EXPECT_EQ(textOf(kernel, "hw.model"), "Example Book 14 Gen 3");
    EXPECT_EQ(textOf(kernel, "kern.osversion"), "20240131.2");
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.logicalcpu"), 5U);
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.physicalcpu"), 3U)
        << "(0,0), (0,4) and (1,0); processor 4 is offline";
    EXPECT_EQ(numberOf<std::uint64_t>(kernel, "hw.cpufrequency_max"), 5'200'000'000U);
    EXPECT_EQ(numberOf<std::uint64_t>(kernel, "hw.memsize"), std::uint64_t{16252928} * 1024);
    EXPECT_EQ(numberOf<std::int32_t>(kernel, "hw.cpu64bit_capable"), 0);
}

TEST(LinuxKernel, ReadsABoard) {
    const LinuxKernel kernel(fixture("arm-board"));
    EXPECT_EQ(textOf(kernel, "hw.model"), "Example Board Model B Rev 1.2");
    EXPECT_EQ(textOf(kernel, "machdep.cpu.brand_string"), std::nullopt);
    EXPECT_EQ(textOf(kernel, "kern.osversion"), std::nullopt);
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.logicalcpu"), 3U);
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.physicalcpu"), 3U);
    EXPECT_EQ(bootSeconds(kernel), -5);
}

TEST(LinuxKernel, EmptyModelIsAbsent) {
    const TemporaryFolder folder;
    folder.write("sys/class/dmi/id/product_name", "\n");
    EXPECT_EQ(textOf(LinuxKernel(LinuxRoot(folder.path())), "hw.model"), std::nullopt);
}

TEST(LinuxKernel, TextsAreUTF8WhateverTheFirmwareSays) {
    const TemporaryFolder folder;
    folder.write("sys/class/dmi/id/product_name", "Example\xAE Book\n");
    EXPECT_EQ(textOf(LinuxKernel(LinuxRoot(folder.path())), "hw.model"), "Example\xEF\xBF\xBD Book");
}

TEST(LinuxKernel, ProcessorWithoutTopologyCountsAsACore) {
    const TemporaryFolder folder;
    folder.write("sys/devices/system/cpu/online", "0-3\n");
    folder.write("sys/devices/system/cpu/cpu0/topology/physical_package_id", "0\n");
    folder.write("sys/devices/system/cpu/cpu0/topology/core_id", "0\n");
    const LinuxKernel kernel{LinuxRoot(folder.path())};
    EXPECT_EQ(numberOf<std::uint32_t>(kernel, "hw.physicalcpu"), 4U);
}

TEST(LinuxKernel, BlockSizeThatCannotBeMultipliedFallsBackToMemTotal) {
    const TemporaryFolder folder;
    folder.write("sys/devices/system/memory/block_size_bytes", "ffffffffffffffff\n");
    folder.write("sys/devices/system/memory/memory0/state", "online\n");
    folder.write("sys/devices/system/memory/memory1/state", "online\n");
    folder.write("proc/meminfo", "MemTotal: 4 kB\n");
    EXPECT_EQ(numberOf<std::uint64_t>(LinuxKernel(LinuxRoot(folder.path())), "hw.memsize"), 4096U);
}

TEST(LinuxKernel, ThisHostTellsWhatEveryLinuxTells) {
    const LinuxKernel kernel;
    EXPECT_GE(numberOf<std::uint32_t>(kernel, "hw.logicalcpu").value_or(0), 1U);
    EXPECT_GE(numberOf<std::uint32_t>(kernel, "hw.physicalcpu").value_or(0), 1U);
    EXPECT_LE(numberOf<std::uint32_t>(kernel, "hw.physicalcpu"), numberOf<std::uint32_t>(kernel, "hw.logicalcpu"));
    EXPECT_GT(numberOf<std::uint64_t>(kernel, "hw.memsize").value_or(0), std::uint64_t{16} << 20U);
    EXPECT_GT(bootSeconds(kernel).value_or(0), 0);
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    EXPECT_THAT(kernelVersion(kernel), testing::HasSubstr(names.release));
}

} // namespace
} // namespace qk::platform
