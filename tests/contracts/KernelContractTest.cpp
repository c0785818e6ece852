// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace qk::tests {
namespace {

using platform::Kernel;
using platform::TimeValue;

class KernelContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, KernelContract, testing::ValuesIn(adapters()), adapterName);

constexpr std::array kVersion = {platform::kCtlKern, platform::kKernVersion};
constexpr std::array kBootTime = {platform::kCtlKern, platform::kKernBootTime};
constexpr char kUntouched = '\x5A';

template <typename T>
T number(const Kernel& kernel, const char* name) {
    T value{};
    std::size_t size = sizeof(value);
    EXPECT_EQ(kernel.sysctlbyname(name, &value, &size), 0) << name;
    EXPECT_EQ(size, sizeof(value)) << name;
    return value;
}

TEST_P(KernelContract, AbsentFactIsENOENTAndTouchesNothing) {
    const auto machine = subject().silent();
    for (const char* name : {"hw.model", "hw.memsize", "hw.optional.x86_64", "no.such.fact", ""}) {
        std::array<char, 8> buffer{};
        buffer.fill(kUntouched);
        std::size_t size = buffer.size();
        EXPECT_EQ(machine.kernel->sysctlbyname(name, nullptr, &size), ENOENT) << name;
        EXPECT_EQ(size, buffer.size()) << name;
        EXPECT_EQ(machine.kernel->sysctlbyname(name, buffer.data(), &size), ENOENT) << name;
        EXPECT_EQ(size, buffer.size()) << name;
        EXPECT_EQ(buffer[0], kUntouched) << name;
    }
    std::size_t size = 7;
    EXPECT_EQ(machine.kernel->sysctl(kBootTime, nullptr, &size), ENOENT);
    EXPECT_EQ(machine.kernel->sysctl(kVersion, nullptr, &size), ENOENT);
    EXPECT_EQ(machine.kernel->sysctl(std::array<int, 0>{}, nullptr, &size), ENOENT);
    EXPECT_EQ(size, 7U);
}

TEST_P(KernelContract, SizeOfATextCountsItsZeroByte) {
    const auto machine = subject().described();
    constexpr std::string_view kModel("Example Book 14 Gen 3\0", 22);
    std::size_t size = 0;
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.model", nullptr, &size), 0);
    ASSERT_EQ(size, kModel.size());
    std::string bytes(size, kUntouched);
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.model", bytes.data(), &size), 0);
    EXPECT_EQ(bytes, kModel);
}

TEST_P(KernelContract, SmallBufferIsENOMEMAndStaysAsItIs) {
    const auto machine = subject().described();
    std::array<char, 21> buffer{};
    buffer.fill(kUntouched);
    std::size_t size = buffer.size();
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.model", buffer.data(), &size), ENOMEM);
    EXPECT_EQ(buffer.front(), kUntouched);
    EXPECT_EQ(buffer.back(), kUntouched);
    std::uint32_t half = 0x5A5A5A5A;
    size = sizeof(half);
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.memsize", &half, &size), ENOMEM);
    EXPECT_EQ(half, 0x5A5A5A5AU);
    TimeValue time{1, 2, 3};
    size = sizeof(time) - 1;
    EXPECT_EQ(machine.kernel->sysctl(kBootTime, &time, &size), ENOMEM);
    EXPECT_EQ(time.seconds, 1);
}

TEST_P(KernelContract, LargeBufferKeepsItsRest) {
    const auto machine = subject().described();
    std::array<char, 16> buffer{};
    buffer.fill(kUntouched);
    std::size_t size = buffer.size();
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.logicalcpu", buffer.data(), &size), 0);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(buffer[4], kUntouched);
    std::uint32_t count = 0;
    std::memcpy(&count, buffer.data(), sizeof(count));
    EXPECT_EQ(count, 5U);
}

TEST_P(KernelContract, NumbersHaveTheirWidths) {
    const auto machine = subject().described();
    EXPECT_EQ(number<std::uint32_t>(*machine.kernel, "hw.physicalcpu"), 3U);
    EXPECT_EQ(number<std::uint32_t>(*machine.kernel, "hw.logicalcpu"), 5U);
    EXPECT_EQ(number<std::int32_t>(*machine.kernel, "hw.cpu64bit_capable"), 0);
    EXPECT_EQ(number<std::uint64_t>(*machine.kernel, "hw.cpufrequency_max"), 5'200'000'000U);
    EXPECT_EQ(number<std::uint64_t>(*machine.kernel, "hw.memsize"), std::uint64_t{16252928} * 1024);
}

TEST_P(KernelContract, NumberPathsAnswerLikeNames) {
    const auto machine = subject().described();
    std::size_t size = 0;
    EXPECT_EQ(machine.kernel->sysctl(kVersion, nullptr, &size), 0);
    std::string version(size, kUntouched);
    EXPECT_EQ(machine.kernel->sysctl(kVersion, version.data(), &size), 0);
    EXPECT_EQ(version, std::string("Example version 6.5") + '\0');
    TimeValue time{};
    size = sizeof(time);
    EXPECT_EQ(machine.kernel->sysctl(kBootTime, &time, &size), 0);
    EXPECT_EQ(size, sizeof(time));
    EXPECT_EQ(time.seconds, 1795220992);
    EXPECT_EQ(time.microseconds, 0);
}

} // namespace
} // namespace qk::tests
