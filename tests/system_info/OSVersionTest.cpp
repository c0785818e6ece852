// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/internal/OSVersion.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/system_info/NSProcessInfo+OSVersion.h"
#include "QKFoundation/system_info/OSXVersion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using namespace qk::NSProcessInfo_OSVersion;
using qk::platform::GestaltSelector;

namespace qk {
namespace {

class OSVersionTest : public testing::Test {
protected:
    void run(std::int64_t majorVersion, std::int64_t minorVersion, std::int64_t patchVersion = 0) {
        machine.processInfo.setOperatingSystemVersion(
            NSOperatingSystemVersion{majorVersion, minorVersion, patchVersion});
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(OSVersionTest, AMachineThatTellsNothingHasTheVersionZero) {
    EXPECT_EQ(OSVersionString(), "0.0");
    EXPECT_EQ(OSVersionLongString(), "0.0.0");
    EXPECT_TRUE(OSXVersionIs(0, 0));
}

TEST_F(OSVersionTest, TheObjectThatRespondsIsAskedAlone) {
    run(10, 12, 6);
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionMajor, 9);
    EXPECT_EQ(internal::OSXVersion(*machine.services()), (NSOperatingSystemVersion{10, 12, 6}));
}

TEST_F(OSVersionTest, TheOlderWayIsAskedNumberByNumber) {
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionMajor, 10);
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionMinor, 9);
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionBugFix, 5);
    EXPECT_EQ(internal::OSXVersion(*machine.services()), (NSOperatingSystemVersion{10, 9, 5}));
}

TEST_F(OSVersionTest, AnUnansweredSelectorIsZero) {
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionMajor, 10);
    EXPECT_EQ(internal::OSXVersion(*machine.services()), (NSOperatingSystemVersion{10, 0, 0}));
}

TEST_F(OSVersionTest, TheOlderWaysNumbersAreSigned) {
    machine.processInfo.setGestalt(GestaltSelector::gestaltSystemVersionMajor, -1);
    EXPECT_EQ(internal::OSXVersion(*machine.services()), (NSOperatingSystemVersion{-1, 0, 0}));
}

TEST_F(OSVersionTest, OfTenTwelveSix) {
    run(10, 12, 6);
    EXPECT_EQ(OSVersionString(), "10.12");
    EXPECT_EQ(OSVersionLongString(), "10.12.6");
    EXPECT_EQ(OSVersionCodeName(), "Sierra");
    EXPECT_TRUE(OSXVersionGreaterThan(10, 11));
    EXPECT_FALSE(OSXVersionGreaterThan(11, 0));
    EXPECT_TRUE(OSXVersionLessThan(11, 0));
}

TEST_F(OSVersionTest, ThePatchLevelNeverTakesPart) {
    run(10, 12, 6);
    EXPECT_TRUE(OSXVersionIs(10, 12));
    EXPECT_FALSE(OSXVersionGreaterThan(10, 12));
    EXPECT_FALSE(OSXVersionLessThan(10, 12));
}

TEST_F(OSVersionTest, CodeNamesGoByTheMinorNumberAlone) {
    const struct {
        std::int64_t majorVersion;
        std::int64_t minorVersion;
        std::optional<NSString> name;
    } rows[] = {
        {10, -1, std::nullopt},
        {10, std::numeric_limits<std::int64_t>::min(), std::nullopt},
        {10, 0, "Cheetah"},
        {10, 1, "Puma"},
        {10, 2, "Jaguar"},
        {10, 3, "Panther"},
        {10, 4, "Tiger"},
        {10, 5, "Leopard"},
        {10, 6, "Snow Leopard"},
        {10, 7, "Lion"},
        {10, 8, "Mountain Lion"},
        {10, 9, "Mavericks"},
        {10, 10, "Yosemite"},
        {10, 11, "El Capitan"},
        {10, 12, "Sierra"},
        {10, 13, std::nullopt},
        {10, std::numeric_limits<std::int64_t>::max(), std::nullopt},
        {11, 0, "Cheetah"},
        {14, 5, "Leopard"},
    };
    for (const auto& row : rows) {
        run(row.majorVersion, row.minorVersion);
        EXPECT_EQ(OSVersionCodeName(), row.name) << row.majorVersion << "." << row.minorVersion;
    }
}

TEST_F(OSVersionTest, ArgumentsAreSigned) {
    run(10, 0);
    EXPECT_TRUE(OSXVersionGreaterThan(10, -1));
    EXPECT_FALSE(OSXVersionLessThan(10, -1));
    EXPECT_TRUE(OSXVersionGreaterThan(-11, 5));
}

TEST_F(OSVersionTest, ComparesTheExtremesWithoutOverflow) {
    constexpr auto kMin = std::numeric_limits<std::int64_t>::min();
    constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
    run(kMin, kMax);
    EXPECT_TRUE(OSXVersionIs(kMin, kMax));
    EXPECT_TRUE(OSXVersionLessThan(kMax, kMin));
    EXPECT_FALSE(OSXVersionGreaterThan(kMax, kMin));
    EXPECT_TRUE(OSXVersionGreaterThan(kMin, kMin));
    EXPECT_EQ(OSVersionString(), "-9223372036854775808.9223372036854775807");
}

TEST_F(OSVersionTest, TheNumbersAreNotJoinedIntoOne) {
    run(10, 100'000);
    EXPECT_TRUE(OSXVersionLessThan(11, 0));
    EXPECT_TRUE(OSXVersionGreaterThan(10, 99'999));
}

TEST_F(OSVersionTest, TheCategoryComparesAsTheFunctionsDo) {
    run(10, 9);
    EXPECT_TRUE(OSVersionIsEqualTo(10, 9));
    EXPECT_FALSE(OSVersionIsEqualTo(10, 8));
    EXPECT_TRUE(OSVersionIsGreaterThan(9, 10));
    EXPECT_FALSE(OSVersionIsGreaterThan(10, 9));
    EXPECT_TRUE(OSVersionIsLessThan(10, 10));
    EXPECT_FALSE(OSVersionIsLessThan(10, 9));
}

TEST_F(OSVersionTest, TheCTextsAreTheStrings) {
    run(10, 12, 6);
    EXPECT_STREQ(OSVersion(), "10.12");
    EXPECT_STREQ(OSVersionLong(), "10.12.6");
}

TEST_F(OSVersionTest, NothingIsCached) {
    run(10, 12);
    EXPECT_EQ(OSVersionString(), "10.12");
    run(10, 13);
    EXPECT_EQ(OSVersionString(), "10.13");
    EXPECT_STREQ(OSVersion(), "10.13");
}

} // namespace
} // namespace qk
