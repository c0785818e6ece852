// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareFunctions.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/system_info/internal/HardwareFacts.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace qk {
namespace {

class HardwareFunctionsTest : public testing::Test {
protected:
    // The text of an allocated C string, which is released; "(null)" for null.
    static std::string taken(char* text) {
        const internal::CText owner(text);
        return text != nullptr ? text : "(null)";
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(HardwareFunctionsTest, AMachineThatTellsNothingAnswersNullZeroAndFalse) {
    EXPECT_EQ(getHardwareModel(), nullptr);
    EXPECT_EQ(getProcessorTypeName(), nullptr);
    EXPECT_EQ(internal::getOSRevision(*machine.services()), nullptr);
    EXPECT_EQ(getNumberOfPhysicalProcessors(), 0U);
    EXPECT_EQ(getNumberOfLogicalProcessors(), 0U);
    EXPECT_EQ(getMaximumFrequencyOfProcessors(), 0U);
    EXPECT_EQ(getPhysicalMemorySize(), 0U);
    EXPECT_EQ(getPhysicalMemoryPageSize(), 0U);
    EXPECT_FALSE(isProcessor64bit());
}

TEST_F(HardwareFunctionsTest, ANullNameGivesNullAndZero) {
    EXPECT_EQ(internal::getHardwareInfoStringWithName(*machine.services(), nullptr), nullptr);
    EXPECT_EQ(internal::getHardwareInfoInteger32WithName(*machine.services(), nullptr), 0U);
    EXPECT_EQ(internal::getHardwareInfoInteger64WithName(*machine.services(), nullptr), 0U);
}

TEST_F(HardwareFunctionsTest, TextsAreReadUnderTheirNames) {
    machine.kernel.setSysctl("hw.model", "MacBookPro11,3");
    machine.kernel.setSysctl("machdep.cpu.brand_string", "Some Processor @ 2.30GHz");
    machine.kernel.setSysctl("kern.osversion", "16G29");
    EXPECT_EQ(taken(getHardwareModel()), "MacBookPro11,3");
    EXPECT_EQ(taken(getProcessorTypeName()), "Some Processor @ 2.30GHz");
    EXPECT_STREQ(internal::getOSRevision(*machine.services()).get(), "16G29");
}

TEST_F(HardwareFunctionsTest, ATextThatTakesNoBytesIsNull) {
    machine.kernel.setSysctlBytes("hw.model", {});
    EXPECT_EQ(getHardwareModel(), nullptr);
}

TEST_F(HardwareFunctionsTest, ATextOfItsZeroByteAloneIsEmpty) {
    machine.kernel.setSysctl("hw.model", "");
    EXPECT_EQ(taken(getHardwareModel()), "");
}

TEST_F(HardwareFunctionsTest, ATextWithoutItsZeroByteStillEnds) {
    machine.kernel.setSysctlBytes("hw.model", std::as_bytes(std::span("abc", 3)));
    EXPECT_EQ(taken(getHardwareModel()), "abc");
}

TEST_F(HardwareFunctionsTest, ATextThatCannotBeReadAfterItsSizeIsEmpty) {
    machine.kernel.setSysctl("hw.model", "X");
    machine.kernel.failReads("hw.model", EIO);
    EXPECT_EQ(taken(getHardwareModel()), "");
}

TEST_F(HardwareFunctionsTest, NumbersAreReadUnderTheirNames) {
    machine.kernel.setSysctl("hw.physicalcpu", std::uint32_t{4});
    machine.kernel.setSysctl("hw.logicalcpu", std::uint32_t{8});
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{17'179'869'184});
    machine.kernel.setSysctl("hw.pagesize", std::uint64_t{4096});
    EXPECT_EQ(getNumberOfPhysicalProcessors(), 4U);
    EXPECT_EQ(getNumberOfLogicalProcessors(), 8U);
    EXPECT_EQ(getPhysicalMemorySize(), 17'179'869'184U);
    EXPECT_EQ(getPhysicalMemoryPageSize(), 4096U);
}

TEST_F(HardwareFunctionsTest, TheFrequencyIsInMegahertzRoundedDown) {
    machine.kernel.setSysctl("hw.cpufrequency_max", std::uint64_t{2'599'999'999});
    EXPECT_EQ(getMaximumFrequencyOfProcessors(), 2599U);
}

TEST_F(HardwareFunctionsTest, TheFrequencyIsCutTo32BitsAfterTheDivision) {
    machine.kernel.setSysctl("hw.cpufrequency_max", ((std::uint64_t{1} << 32U) + 7) * 1'000'000);
    EXPECT_EQ(getMaximumFrequencyOfProcessors(), 7U);
}

TEST_F(HardwareFunctionsTest, ANumberOnceReadNeverChanges) {
    machine.kernel.setSysctl("hw.logicalcpu", std::uint32_t{8});
    EXPECT_EQ(getNumberOfLogicalProcessors(), 8U);
    machine.kernel.setSysctl("hw.logicalcpu", std::uint32_t{16});
    EXPECT_EQ(getNumberOfLogicalProcessors(), 8U);
    EXPECT_EQ(machine.kernel.requests("hw.logicalcpu"), 1U);
}

TEST_F(HardwareFunctionsTest, AZeroIsReadAgainByEveryCall) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{0});
    EXPECT_EQ(getPhysicalMemorySize(), 0U);
    EXPECT_EQ(getPhysicalMemorySize(), 0U);
    EXPECT_EQ(machine.kernel.requests("hw.memsize"), 2U);
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{42});
    EXPECT_EQ(getPhysicalMemorySize(), 42U);
}

TEST_F(HardwareFunctionsTest, AFrequencyBelowOneMegahertzIsReadAgainByEveryCall) {
    machine.kernel.setSysctl("hw.cpufrequency_max", std::uint64_t{999'999});
    EXPECT_EQ(getMaximumFrequencyOfProcessors(), 0U);
    EXPECT_EQ(getMaximumFrequencyOfProcessors(), 0U);
    EXPECT_EQ(machine.kernel.requests("hw.cpufrequency_max"), 2U);
}

TEST_F(HardwareFunctionsTest, AnotherMachineStartsWithoutCachedNumbers) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{1});
    EXPECT_EQ(getPhysicalMemorySize(), 1U);
    platform::memory::Machine other;
    other.kernel.setSysctl("hw.memsize", std::uint64_t{2});
    {
        const platform::memory::ScopedMachine inner(other);
        EXPECT_EQ(getPhysicalMemorySize(), 2U);
    }
    EXPECT_EQ(getPhysicalMemorySize(), 1U);
}

TEST_F(HardwareFunctionsTest, ANumberWiderThanItsBufferIsZero) {
    machine.kernel.setSysctl("hw.physicalcpu", std::uint64_t{4});
    EXPECT_EQ(getNumberOfPhysicalProcessors(), 0U);
}

TEST_F(HardwareFunctionsTest, ANumberNarrowerThanItsBufferIsZeroExtended) {
    machine.kernel.setSysctl("hw.pagesize", std::uint32_t{0x80001000});
    EXPECT_EQ(getPhysicalMemoryPageSize(), 0x80001000U);
}

TEST_F(HardwareFunctionsTest, AFailedReadIsZero) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{7});
    machine.kernel.failReads("hw.memsize", EPERM);
    EXPECT_EQ(getPhysicalMemorySize(), 0U);
}

TEST_F(HardwareFunctionsTest, TheFirstReadableNameDecidesAbout64Bits) {
    const struct {
        std::optional<std::uint32_t> capable;
        std::optional<std::uint32_t> x86;
        std::optional<std::uint32_t> ops;
        bool answer;
    } rows[] = {
        {std::nullopt, std::nullopt, std::nullopt, false},
        {1, std::nullopt, std::nullopt, true},
        {0, 1, 1, false}, // a later name is not consulted
        {2, 1, 1, false}, // exactly 1
        {std::nullopt, 1, 0, true},
        {std::nullopt, 0, 1, false},
        {std::nullopt, std::nullopt, 1, true},
        {std::nullopt, std::nullopt, 0, false},
    };
    for (const auto& row : rows) {
        const auto set = [&](const char* name, std::optional<std::uint32_t> value) {
            machine.kernel.removeSysctl(name);
            if (value.has_value()) {
                machine.kernel.setSysctl(name, *value);
            }
        };
        set("hw.cpu64bit_capable", row.capable);
        set("hw.optional.x86_64", row.x86);
        set("hw.optional.64bitops", row.ops);
        EXPECT_EQ(isProcessor64bit(), row.answer);
    }
}

TEST_F(HardwareFunctionsTest, A64BitAnswerThatIsTooWideIsNoAnswer) {
    machine.kernel.setSysctl("hw.cpu64bit_capable", std::uint64_t{0});
    machine.kernel.setSysctl("hw.optional.x86_64", std::uint32_t{1});
    EXPECT_TRUE(isProcessor64bit());
}

} // namespace
} // namespace qk
