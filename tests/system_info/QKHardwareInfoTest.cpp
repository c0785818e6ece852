// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareInfo.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace qk {
namespace {

using platform::kCtlKern;
using platform::kKernBootTime;
using platform::kKernVersion;

class QKHardwareInfoTest : public testing::Test {
protected:
    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(QKHardwareInfoTest, AMachineThatTellsNothingAnswersNothing) {
    EXPECT_EQ(QKHardwareInfo::model(), std::nullopt);
    EXPECT_EQ(QKHardwareInfo::osRevision(), std::nullopt);
    EXPECT_EQ(QKHardwareInfo::processorTypeName(), std::nullopt);
    EXPECT_EQ(QKHardwareInfo::kernelVersion(), std::nullopt);
    EXPECT_EQ(QKHardwareInfo::bootDate(), std::nullopt);
}

TEST_F(QKHardwareInfoTest, AModelOfNoBytesIsNothing) {
    machine.kernel.setSysctlBytes("hw.model", {});
    EXPECT_EQ(QKHardwareInfo::model(), std::nullopt);
}

TEST_F(QKHardwareInfoTest, AModelOfItsZeroByteAloneIsEmpty) {
    machine.kernel.setSysctl("hw.model", "");
    EXPECT_EQ(QKHardwareInfo::model(), "");
}

TEST_F(QKHardwareInfoTest, TextsAreDecodedFromUTF8) {
    machine.kernel.setSysctl("hw.model", "Mod\xC3\xA8le 7");
    machine.kernel.setSysctl("kern.osversion", "16G29");
    machine.kernel.setSysctl("machdep.cpu.brand_string", "Brand");
    EXPECT_EQ(QKHardwareInfo::model(), NSString(u"Mod\u00E8le 7"));
    EXPECT_EQ(QKHardwareInfo::osRevision(), "16G29");
    EXPECT_EQ(QKHardwareInfo::processorTypeName(), "Brand");
}

TEST_F(QKHardwareInfoTest, ATextThatIsNotUTF8IsNothing) {
    machine.kernel.setSysctl("hw.model", "Mod\xE8le");
    machine.kernel.setSysctl({kCtlKern, kKernVersion}, "\xFF");
    EXPECT_EQ(QKHardwareInfo::model(), std::nullopt);
    EXPECT_EQ(QKHardwareInfo::kernelVersion(), std::nullopt);
}

TEST_F(QKHardwareInfoTest, TheKernelVersionIsReadByNumber) {
    machine.kernel.setSysctl({1, 2}, "Darwin Kernel Version 16.7.0");
    EXPECT_EQ(QKHardwareInfo::kernelVersion(), "Darwin Kernel Version 16.7.0");
}

TEST_F(QKHardwareInfoTest, AKernelVersionThatCannotBeReadIsNothing) {
    machine.kernel.setSysctl({kCtlKern, kKernVersion}, "text");
    machine.kernel.failReads({kCtlKern, kKernVersion}, EIO);
    EXPECT_EQ(QKHardwareInfo::kernelVersion(), std::nullopt);
}

TEST_F(QKHardwareInfoTest, AKernelVersionOfNoBytesIsNothing) {
    machine.kernel.setSysctlBytes({kCtlKern, kKernVersion}, {});
    EXPECT_EQ(QKHardwareInfo::kernelVersion(), std::nullopt);
}

TEST_F(QKHardwareInfoTest, TheBootDateIsWholeSeconds) {
    machine.kernel.setBootTime(1'500'000'000, 999'999);
    EXPECT_EQ(QKHardwareInfo::bootDate(), NSDate::dateWithTimeIntervalSince1970(1'500'000'000));
}

TEST_F(QKHardwareInfoTest, TheBootDateMayLieBefore1970) {
    machine.kernel.setBootTime(-5, 500'000);
    EXPECT_EQ(QKHardwareInfo::bootDate(), NSDate::dateWithTimeIntervalSince1970(-5));
}

TEST_F(QKHardwareInfoTest, ABootDateThatCannotBeReadIsNothing) {
    machine.kernel.setBootTime(1);
    machine.kernel.failReads({kCtlKern, kKernBootTime}, EPERM);
    EXPECT_EQ(QKHardwareInfo::bootDate(), std::nullopt);
}

} // namespace
} // namespace qk
