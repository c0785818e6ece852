// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKWebKitUtils.h"

#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

class WebKitUtils : public testing::Test {
protected:
    std::shared_ptr<NSBundle> bundle(const NSString& path, const NSDictionary& list) {
        machine.fileManager.addPropertyList(path + "/Contents/Info.plist", list);
        return NSBundle::bundleWithPath(path);
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(WebKitUtils, WithoutAnEngineTheVersionsAreEmpty) {
    EXPECT_EQ(QKWebKitUtils::embeddedWebKitVersion(), "");
    EXPECT_EQ(QKWebKitUtils::safariWebKitVersion(), "");
}

TEST_F(WebKitUtils, WithoutABundleTheVersionIsEmpty) {
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(nullptr), "");
}

TEST_F(WebKitUtils, BundleWithoutTheKeyOrTheListHasTheEmptyVersion) {
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(bundle("/a", {{"CFBundleName", "a"}})), "");
    machine.fileManager.addDirectory("/b");
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(NSBundle::bundleWithPath("/b")), "");
}

TEST_F(WebKitUtils, VersionIsThatOfTheInformationList) {
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(bundle("/a", {{"CFBundleVersion", "12603.2.4"}})), "12603.2.4");
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(bundle("/b", {{"CFBundleVersion", 7}})), "7");
}

TEST_F(WebKitUtils, VersionIsNotLookedUpInTheUsersLanguage) {
    machine.locale.setPreferredLanguages({"de"});
    machine.fileManager.addPropertyList("/a/Contents/Resources/de.lproj/InfoPlist.strings",
                                        NSDictionary{{"CFBundleVersion", "eins"}});
    EXPECT_EQ(QKWebKitUtils::bundleVersionFromBundle(bundle("/a", {{"CFBundleVersion", "1"}})), "1");
}

TEST_F(WebKitUtils, EnginesAreThatOfTheClassAndThatOfTheApplication) {
    static_cast<void>(bundle("/System/WebKit.framework", {{"CFBundleVersion", "603"}}));
    static_cast<void>(bundle("/Applications/Safari.app", {{"CFBundleVersion", "12603"}}));
    machine.processInfo.addClass("WebView", "/System/WebKit.framework");
    EXPECT_EQ(QKWebKitUtils::embeddedWebKitVersion(), "603");
    EXPECT_EQ(QKWebKitUtils::safariWebKitVersion(), "12603");
}

TEST_F(WebKitUtils, ClassWhoseBundleIsGoneHasTheEmptyVersion) {
    machine.processInfo.addClass("WebView", "/System/WebKit.framework");
    EXPECT_EQ(QKWebKitUtils::embeddedWebKitVersion(), "");
}

} // namespace
} // namespace qk
