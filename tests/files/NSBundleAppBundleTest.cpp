// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSBundle+AppBundle.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

/// The path of the application's bundle for a program whose main bundle lies there; "(none)" for none.
NSString appBundlePathOf(const NSString& mainBundle) {
    platform::memory::Machine machine;
    if (mainBundle.isAbsolutePath()) {
        machine.fileManager.addDirectory(mainBundle);
    }
    machine.processInfo.setMainBundlePath(mainBundle);
    const platform::memory::ScopedMachine installed(machine);
    const auto bundle = NSBundle_AppBundle::appBundle();
    return bundle != nullptr ? bundle->bundlePath() : "(none)";
}

TEST(NSBundleAppBundle, IsNoneForAMainBundleThatIsNotKnown) {
    EXPECT_EQ(appBundlePathOf(""), "(none)");
}

TEST(NSBundleAppBundle, IsNoneForARelativePath) {
    EXPECT_EQ(appBundlePathOf("build/bin"), "(none)");
}

TEST(NSBundleAppBundle, IsNoneWhenTheFolderIsGone) {
    platform::memory::Machine machine;
    machine.processInfo.setMainBundlePath("/Applications/Helper.app/Contents/MacOS");
    const platform::memory::ScopedMachine installed(machine);
    EXPECT_EQ(NSBundle_AppBundle::appBundle(), nullptr);
}

TEST(NSBundleAppBundle, ClimbsToTheNearestApplication) {
    const struct {
        NSString mainBundle;
        NSString appBundle;
    } rows[] = {
        {"/Applications/Helper.app", "/Applications/Helper.app"},
        {"/Applications/Helper.app/", "/Applications/Helper.app"},
        {"/Applications/Helper.app/Contents/MacOS", "/Applications/Helper.app"},
        {"/A.app/Contents/B.app/Contents/MacOS", "/A.app/Contents/B.app"},
        {"/A.app/Contents/.app/x", "/A.app"},
        {"/A.app/Contents/B.App/x", "/A.app"},
        {"/A.app/Contents/app/x", "/A.app"},
        {"/usr/bin", "/"},
        {"/", "/"},
        {"/.app", "/"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(appBundlePathOf(row.mainBundle), row.appBundle) << row.mainBundle.utf8Lossy();
    }
}

} // namespace
} // namespace qk
