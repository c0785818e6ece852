// SPDX-License-Identifier: Apache-2.0
// A program that offers the slot for the crash reporter, as a host does: the test program itself.
#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/runtime/NSProcessInfo+CrashReporterInformation.h"

#include <gtest/gtest.h>

#include <string>

extern "C" {
QK_EXPORT const char* __crashreporter_info__ = nullptr; // NOLINT(bugprone-reserved-identifier): the reporter's name
}

namespace qk {
namespace {

using NSProcessInfo_CrashReporterInformation::setCrashReporterInfoString;

TEST(CrashText, ThePublicFunctionFillsTheProgramsSlot) {
    setCrashReporterInfoString(std::nullopt);
    setCrashReporterInfoString("");
    EXPECT_EQ(__crashreporter_info__, nullptr);
    setCrashReporterInfoString("session 1 — Größe");
    EXPECT_STREQ(__crashreporter_info__, "session 1 — Größe");
    setCrashReporterInfoString("session 2");
    EXPECT_STREQ(__crashreporter_info__, "session 2");
    setCrashReporterInfoString("");
    EXPECT_STREQ(__crashreporter_info__, "session 2");
}

TEST(CrashText, TheSlotIsTheProgramsVariable) {
    EXPECT_EQ(platform::services()->crashReporter->informationSlot(), &__crashreporter_info__);
}

} // namespace
} // namespace qk
