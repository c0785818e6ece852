// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKOSActivityManager.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

using qk::NSOperatingSystemVersion;
using qk::NSString;
using qk::QKOSActivityManager;
using qk::platform::memory::Machine;
using qk::platform::memory::ScopedMachine;

class ActivityManager : public testing::Test {
protected:
    void setVersion(std::int64_t major, std::int64_t minor) {
        machine.processInfo.setOperatingSystemVersion(NSOperatingSystemVersion{major, minor, 0});
    }

    std::vector<NSString> marksAfter(std::int64_t action) {
        QKOSActivityManager::breadcrumbForAction(action);
        return QKOSActivityManager::breadcrumbs();
    }

    Machine machine;
    ScopedMachine installed{machine};
};

TEST_F(ActivityManager, SystemWithoutVersionHasNoTracing) {
    EXPECT_FALSE(QKOSActivityManager::hasActivityTracing());
    EXPECT_TRUE(marksAfter(1).empty());
}

TEST_F(ActivityManager, OldSystemSetsNoBreadcrumb) {
    setVersion(10, 9);
    EXPECT_FALSE(QKOSActivityManager::hasActivityTracing());
    for (std::int64_t action = 0; action <= 47; ++action) {
        EXPECT_TRUE(marksAfter(action).empty());
    }
}

TEST_F(ActivityManager, TracingBeginsBehindTenNine) {
    setVersion(9, 99);
    EXPECT_FALSE(QKOSActivityManager::hasActivityTracing());
    setVersion(10, 10);
    EXPECT_TRUE(QKOSActivityManager::hasActivityTracing());
    setVersion(11, 0);
    EXPECT_TRUE(QKOSActivityManager::hasActivityTracing());
}

TEST_F(ActivityManager, UnknownActionSetsNoBreadcrumb) {
    setVersion(12, 0);
    EXPECT_TRUE(marksAfter(0).empty());
    EXPECT_TRUE(marksAfter(-1).empty());
    EXPECT_TRUE(marksAfter(47).empty());
    EXPECT_TRUE(marksAfter((std::int64_t{1} << 32) + 1).empty());
    EXPECT_TRUE(marksAfter(std::numeric_limits<std::int64_t>::min()).empty());
    EXPECT_TRUE(marksAfter(std::numeric_limits<std::int64_t>::max()).empty());
}

TEST_F(ActivityManager, ActionsHaveTheirTexts) {
    setVersion(12, 0);
    EXPECT_EQ(marksAfter(1).back(), "Common: Exit Pelagor");
    EXPECT_EQ(marksAfter(25).back(), "Partnerlist: Action audio call");
    EXPECT_EQ(marksAfter(44).back(), "Session: Conference mode VoIP");
    EXPECT_EQ(marksAfter(46).back(), "Toolbar: Request direction change");
    EXPECT_EQ(QKOSActivityManager::breadcrumbs().size(), 4U);
}

TEST_F(ActivityManager, EveryActionHasATextOfItsOwn) {
    setVersion(12, 0);
    for (std::int64_t action = 1; action <= 46; ++action) {
        QKOSActivityManager::breadcrumbForAction(action);
    }
    std::vector<NSString> marks = QKOSActivityManager::breadcrumbs();
    std::sort(marks.begin(), marks.end());
    EXPECT_EQ(std::unique(marks.begin(), marks.end()) - marks.begin(), 46);
}

TEST_F(ActivityManager, LastMarksAreKept) {
    setVersion(12, 0);
    QKOSActivityManager::breadcrumbForAction(1);
    for (int repetition = 0; repetition < 127; ++repetition) {
        QKOSActivityManager::breadcrumbForAction(2);
    }
    EXPECT_EQ(QKOSActivityManager::breadcrumbs().front(), "Common: Exit Pelagor");
    const std::vector<NSString> marks = marksAfter(3);
    EXPECT_EQ(marks.size(), 128U);
    EXPECT_EQ(marks.front(), "Common: Show main window");
    EXPECT_EQ(marks.back(), "Common: Show preferences");
}

} // namespace
