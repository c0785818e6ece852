// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKOSActivityManager.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using qk::NSOperatingSystemVersion;
using qk::NSString;
using qk::QKOSActivityManager;
using qk::platform::memory::Machine;
using qk::platform::memory::ScopedMachine;

// By number, from 1: programs were compiled against them.
const std::vector<NSString> kTexts = {
    "Common: Exit Pelagor",
    "Common: Show main window",
    "Common: Show preferences",
    "Partnerlist: Action chat",
    "Partnerlist: Action file transfer",
    "Partnerlist: Action send file",
    "Partnerlist: Action wake on lan",
    "Partnerlist: Action remote control quick access",
    "Partnerlist: Action remote support",
    "Partnerlist: Action remote control",
    "Partnerlist: Action remote control windows authentication",
    "Partnerlist: Action presentation",
    "Partnerlist: Action video call",
    "Partnerlist: Action select machine",
    "Partnerlist: Action service case compose mail",
    "Partnerlist: Action service case close",
    "Partnerlist: Action service case invite",
    "Partnerlist: Action service case take over",
    "MRU: Connection string file transfer connection",
    "MRU: Connection string remote control connection",
    "Meeting: Abort join meeting",
    "Meeting: Join meeting",
    "Meeting: Show conference call controller",
    "Meeting: Start spontaneous meeting",
    "Partnerlist: Action audio call",
    "Meeting: Start video chat",
    "Meeting: Change organizer",
    "Meeting: Change presenter",
    "RC: Abort outgoing connection",
    "RC: Connect file transfer",
    "RC: Connect remote control",
    "Session: Request connection for partnerlist item",
    "Session: Session attended started",
    "Session: Session hosted started",
    "Session: Session incoming file transfer started",
    "Session: Session incoming remote control started",
    "Session: Session incoming started",
    "Session: Session outgoing file transfer started",
    "Session: Session outgoing remote control started",
    "Session: Session outgoing started",
    "Session: Session end",
    "Session: Conference mode none",
    "Session: Conference mode phone",
    "Session: Conference mode VoIP",
    "Desktop: Started from terminal server",
    "Toolbar: Request direction change",
};

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
    for (std::int64_t action = 1; action <= 46; ++action) {
        QKOSActivityManager::breadcrumbForAction(action);
    }
    EXPECT_EQ(QKOSActivityManager::breadcrumbs(), kTexts);
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
