// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/NSFileManager.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

class BundleInfo : public testing::Test {
protected:
    void list(const NSString& path, const NSDictionary& entries) { machine.fileManager.addPropertyList(path, entries); }
    std::shared_ptr<NSBundle> bundle() {
        machine.fileManager.addDirectory("/a");
        return NSBundle::bundleWithPath("/a");
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(BundleInfo, BundleWithoutAListHasAnEmptyOne) {
    EXPECT_EQ(bundle()->infoDictionary(), NSDictionary());
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("CFBundleName"), std::nullopt);
}

TEST_F(BundleInfo, ListLiesInContentsOrResourcesOrTheFolder) {
    list("/a/Info.plist", {{"place", "folder"}});
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("place"), Value("folder"));
    list("/a/Resources/Info.plist", {{"place", "resources"}});
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("place"), Value("resources"));
    list("/a/Contents/Info.plist", {{"place", "contents"}});
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("place"), Value("contents"));
}

TEST_F(BundleInfo, FileThatIsNoListIsPassedOver) {
    machine.fileManager.addFile("/a/Contents/Info.plist", NSData("\x01"));
    list("/a/Info.plist", {{"place", "folder"}});
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("place"), Value("folder"));
}

TEST_F(BundleInfo, ListIsReadOnce) {
    list("/a/Info.plist", {{"k", "before"}});
    const auto one = bundle();
    EXPECT_EQ(one->objectForInfoDictionaryKey("k"), Value("before"));
    list("/a/Info.plist", {{"k", "after"}});
    EXPECT_EQ(one->objectForInfoDictionaryKey("k"), Value("before"));
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("k"), Value("after"));
}

TEST_F(BundleInfo, PreferredLanguageThatHasAFolderDecides) {
    list("/a/Info.plist", {{"k", "plain"}, {"n", 7}});
    list("/a/de.lproj/InfoPlist.strings", {{"k", "deutsch"}});
    list("/a/fr.lproj/InfoPlist.strings", {{"k", "fran\u00e7ais"}, {"only", "fr"}});
    const struct {
        std::vector<NSString> languages;
        NSString text;
    } rows[] = {
        {{}, "plain"},
        {{"nl"}, "plain"},
        {{"fr"}, "fran\u00e7ais"},
        {{"nl-NL", "de-AT", "fr"}, "deutsch"},
        {{"../fr", "-", ""}, "plain"},
    };
    for (const auto& row : rows) {
        machine.locale.setPreferredLanguages(row.languages);
        EXPECT_EQ(bundle()->objectForInfoDictionaryKey("k"), Value(row.text));
        EXPECT_EQ(bundle()->objectForInfoDictionaryKey("n"), Value(7));
    }
    machine.locale.setPreferredLanguages({"de", "fr"});
    EXPECT_EQ(bundle()->objectForInfoDictionaryKey("only"), std::nullopt) << "one language alone is asked";
}

TEST_F(BundleInfo, InformationListItselfIsNotTranslated) {
    list("/a/Info.plist", {{"k", "plain"}});
    list("/a/de.lproj/InfoPlist.strings", {{"k", "deutsch"}});
    machine.locale.setPreferredLanguages({"de"});
    EXPECT_EQ(bundle()->infoDictionary(), (NSDictionary{{"k", "plain"}}));
}

TEST_F(BundleInfo, ThereIsNoMainBundleWhereItsFolderIsNotKnown) {
    EXPECT_EQ(NSBundle::mainBundle(), nullptr);
}

TEST_F(BundleInfo, ThereIsNoMainBundleWhoseFolderIsGone) {
    machine.processInfo.setMainBundlePath("/a");
    EXPECT_EQ(NSBundle::mainBundle(), nullptr);
}

TEST_F(BundleInfo, MainBundleIsOneObject) {
    machine.fileManager.addDirectory("/a");
    machine.processInfo.setMainBundlePath("/a");
    const auto main = NSBundle::mainBundle();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->bundlePath(), "/a");
    EXPECT_EQ(NSBundle::mainBundle(), main);
    machine.processInfo.setMainBundlePath("/b");
    EXPECT_EQ(NSBundle::mainBundle(), main);
}

TEST(NSFileManager, DefaultManagerIsOneObjectAndOthersAreNot) {
    EXPECT_EQ(NSFileManager::defaultManager(), NSFileManager::defaultManager());
    EXPECT_NE(NSFileManager::init(), NSFileManager::defaultManager());
    EXPECT_EQ(NSFileManager::init()->classDescription().name(), "NSFileManager");
}

TEST(NSFileManager, AsksTheMachineThatIsInstalled) {
    platform::memory::Machine machine;
    machine.fileManager.addFile("/somewhere/file");
    const platform::memory::ScopedMachine installed(machine);
    EXPECT_TRUE(NSFileManager::defaultManager()->fileExistsAtPath("/somewhere/file"));
    EXPECT_FALSE(NSFileManager::defaultManager()->fileExistsAtPath("/somewhere/else"));
}

} // namespace
} // namespace qk
