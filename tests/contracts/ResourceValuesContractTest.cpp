// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/contracts/Contract.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace qk::tests {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr NSDirectoryEnumerationOptions kOneLevel = NSDirectoryEnumerationSkipsSubdirectoryDescendants;

/// What is told of single files, and the enumeration of folders.
class ResourceValuesContract : public Contract {
protected:
    NSString below(const NSString& name) { return folder_ + "/" + name; }
    NSURL url(const NSString& name) { return NSURL::fileURLWithPath(name.isEmpty() ? folder_ : below(name)).value(); }
    FileManager& files() { return *machine_.fileManager; }

    std::optional<NSDictionary> values(const NSString& name, const std::vector<NSString>& keys) {
        return files().resourceValuesForKeys(url(name), keys);
    }
    /// The one value, which there is.
    bool is(const NSString& key, const NSString& name) {
        const auto found = values(name, {key});
        const auto* number = found.has_value() ? found->get<NSNumber>(key) : nullptr;
        EXPECT_NE(number, nullptr) << key.utf8Lossy() << " of " << name.utf8Lossy();
        return number != nullptr && number->boolValue();
    }
    /// Names below the folder, in the order of the enumeration.
    std::vector<NSString> enumerated(NSDirectoryEnumerationOptions options) {
        std::vector<NSString> names;
        for (const EnumeratedItem& item : files().enumeratorAtURL(url({}), {}, options)) {
            names.push_back(item.url.path().value().substringFromIndex(folder_.length() + 1));
        }
        return names;
    }

private:
    NSString folder_ = subject().emptyFolder();
    Services machine_ = subject().described();
};
INSTANTIATE_TEST_SUITE_P(Of, ResourceValuesContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(ResourceValuesContract, WhatIsNotThereHasNoValues) {
    EXPECT_EQ(values("missing", {NSURLIsRegularFileKey}), std::nullopt);
    EXPECT_EQ(values("missing", {NSURLContentAccessDateKey, NSURLVolumeNameKey}), std::nullopt);
    EXPECT_EQ(values("missing/deeper", {NSURLIsReadableKey}), std::nullopt);
}

TEST_P(ResourceValuesContract, URLThatIsNoFileHasNoValues) {
    const NSURL other = NSURL::URLWithString("http://host/tmp").value();
    EXPECT_EQ(files().resourceValuesForKeys(other, {NSURLIsDirectoryKey}), std::nullopt);
}

TEST_P(ResourceValuesContract, OnlyTheKeysThatWereAskedForAreAnswered) {
    subject().makeFile(below("file"));
    EXPECT_EQ(values("file", {NSURLIsRegularFileKey, "NSURLNoSuchKey"}), (NSDictionary{{NSURLIsRegularFileKey, true}}));
    EXPECT_EQ(values("file", {NSURLIsRegularFileKey, NSURLVolumeNameKey}),
              (NSDictionary{{NSURLIsRegularFileKey, true}}));
}

TEST_P(ResourceValuesContract, FilesFoldersAndLinksAreToldApart) {
    subject().makeFile(below("folder/file"));
    subject().makeSymbolicLink(below("link"), "folder");
    const std::vector<NSString> kinds{NSURLIsRegularFileKey, NSURLIsDirectoryKey, NSURLIsSymbolicLinkKey};
    const auto expected = [](bool isFile, bool isFolder, bool isLink) {
        return NSDictionary{
            {NSURLIsRegularFileKey, isFile}, {NSURLIsDirectoryKey, isFolder}, {NSURLIsSymbolicLinkKey, isLink}};
    };
    EXPECT_EQ(values("folder/file", kinds), expected(true, false, false));
    EXPECT_EQ(values("folder", kinds), expected(false, true, false));
    EXPECT_EQ(values("link", kinds), expected(false, false, true));
    EXPECT_EQ(values("link/file", kinds), expected(true, false, false));
}

TEST_P(ResourceValuesContract, FolderIsTheSameWithATrailingSlash) {
    const NSURL folder = NSURL::fileURLWithPath(below(""), true).value();
    EXPECT_EQ(files().resourceValuesForKeys(folder, {NSURLIsDirectoryKey}),
              (NSDictionary{{NSURLIsDirectoryKey, true}}));
}

TEST_P(ResourceValuesContract, RightsAreThoseToWhatALinkLeadsTo) {
    subject().makeFile(below("file"));
    subject().makeSymbolicLink(below("link"), "file");
    subject().makeSymbolicLink(below("broken"), "nowhere");
    for (const char* name : {"file", "link"}) {
        EXPECT_TRUE(is(NSURLIsReadableKey, NSString::fromUTF8Lossy(name)));
        EXPECT_TRUE(is(NSURLIsWritableKey, NSString::fromUTF8Lossy(name)));
        EXPECT_FALSE(is(NSURLIsExecutableKey, NSString::fromUTF8Lossy(name)));
    }
    EXPECT_TRUE(is(NSURLIsExecutableKey, ""));
    EXPECT_FALSE(is(NSURLIsReadableKey, "broken"));
    EXPECT_FALSE(is(NSURLIsWritableKey, "broken"));
}

TEST_P(ResourceValuesContract, NameWithALeadingDotIsHidden) {
    subject().makeFile(below(".hidden"));
    subject().makeFile(below("shown.txt"));
    EXPECT_TRUE(is(NSURLIsHiddenKey, ".hidden"));
    EXPECT_FALSE(is(NSURLIsHiddenKey, "shown.txt"));
}

TEST_P(ResourceValuesContract, FolderInAVolumeIsNeitherAVolumeNorAPackage) {
    EXPECT_FALSE(is(NSURLIsVolumeKey, ""));
    EXPECT_FALSE(is(NSURLIsPackageKey, ""));
}

TEST_P(ResourceValuesContract, CanonicalPathHasNoLinks) {
    subject().makeFile(below("a/b/file"));
    subject().makeSymbolicLink(below("link"), "a/b");
    subject().makeSymbolicLink(below("circle"), "circle");
    EXPECT_EQ(values("link/file", {NSURLCanonicalPathKey}), (NSDictionary{{NSURLCanonicalPathKey, below("a/b/file")}}));
    EXPECT_EQ(values("link", {NSURLCanonicalPathKey}), (NSDictionary{{NSURLCanonicalPathKey, below("a/b")}}));
    EXPECT_EQ(values("circle", {NSURLCanonicalPathKey}), NSDictionary());
}

TEST_P(ResourceValuesContract, WhatIsNoFolderEnumeratesNothing) {
    subject().makeFile(below("file"));
    for (const char* name : {"file", "missing"}) {
        EXPECT_THAT(files().enumeratorAtURL(url(NSString::fromUTF8Lossy(name)), {}, 0), IsEmpty()) << name;
    }
    EXPECT_THAT(files().enumeratorAtURL(NSURL::URLWithString("http://host/tmp").value(), {}, 0), IsEmpty());
}

TEST_P(ResourceValuesContract, EnumerationGoesDownIntoFoldersButNotAlongLinks) {
    subject().makeFile(below("b/file"));
    subject().makeFile(below("b/deeper/file"));
    subject().makeFile(below("c"));
    subject().makeSymbolicLink(below("a"), "b");
    EXPECT_THAT(enumerated(0), ElementsAre(NSString("a"), NSString("b"), NSString("b/deeper"),
                                           NSString("b/deeper/file"), NSString("b/file"), NSString("c")));
    EXPECT_THAT(enumerated(kOneLevel), ElementsAre(NSString("a"), NSString("b"), NSString("c")));
}

TEST_P(ResourceValuesContract, HiddenItemsAreLeftOutWithWhatIsBelowThem) {
    subject().makeFile(below(".cache/file"));
    subject().makeFile(below("shown/.file"));
    EXPECT_THAT(enumerated(NSDirectoryEnumerationSkipsHiddenFiles), ElementsAre(NSString("shown")));
    EXPECT_THAT(enumerated(0),
                ElementsAre(NSString(".cache"), NSString(".cache/file"), NSString("shown"), NSString("shown/.file")));
}

TEST_P(ResourceValuesContract, EnumeratedItemsHaveTheValuesThatWereAskedFor) {
    subject().makeFile(below("folder/file"));
    subject().makeFile(below("file"));
    const auto items = files().enumeratorAtURL(url({}), {NSURLIsDirectoryKey, NSURLIsReadableKey}, kOneLevel);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].url, url("file"));
    EXPECT_EQ(items[0].resourceValues, (NSDictionary{{NSURLIsDirectoryKey, false}, {NSURLIsReadableKey, true}}));
    EXPECT_EQ(items[1].url, NSURL::fileURLWithPath(below("folder"), true));
    EXPECT_EQ(items[1].resourceValues, (NSDictionary{{NSURLIsDirectoryKey, true}, {NSURLIsReadableKey, true}}));
}

} // namespace
} // namespace qk::tests
