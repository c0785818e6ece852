// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryFileManager.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk::platform::memory {
namespace {

class MemoryResourceValues : public testing::Test {
protected:
    MemoryResourceValues() { files.addFile("/folder/file"); }
    [[nodiscard]] std::optional<NSDictionary> values(const NSString& path, const std::vector<NSString>& keys) const {
        return files.resourceValuesForKeys(NSURL::fileURLWithPath(path).value(), keys);
    }

    MemoryFileManager files;
};

TEST_F(MemoryResourceValues, ThereAreNoDatesUntilTheyAreTold) {
    EXPECT_EQ(values("/folder/file", {NSURLContentAccessDateKey}), NSDictionary());
    const NSDate date = NSDate::dateWithTimeIntervalSince1970(5);
    files.setResourceValue("/folder/file", NSURLContentAccessDateKey, date);
    EXPECT_EQ(values("/folder/file", {NSURLContentAccessDateKey}), (NSDictionary{{NSURLContentAccessDateKey, date}}));
}

TEST_F(MemoryResourceValues, WhatWasToldCountsMoreThanWhatIsKnown) {
    files.setResourceValue("/folder", NSURLIsPackageKey, Value(true));
    files.setResourceValue("/folder", NSURLIsReadableKey, std::nullopt);
    EXPECT_EQ(values("/folder", {NSURLIsPackageKey, NSURLIsReadableKey, NSURLIsDirectoryKey}),
              (NSDictionary{{NSURLIsPackageKey, true}, {NSURLIsDirectoryKey, true}}));
}

TEST_F(MemoryResourceValues, WhatIsNotThereCannotBeToldAnything) {
    files.setResourceValue("/missing", NSURLIsHiddenKey, Value(true));
    EXPECT_EQ(values("/missing", {NSURLIsHiddenKey}), std::nullopt);
}

TEST_F(MemoryResourceValues, DeniedReadingShows) {
    files.denyReading("/folder");
    EXPECT_EQ(values("/folder", {NSURLIsReadableKey}), (NSDictionary{{NSURLIsReadableKey, false}}));
}

TEST_F(MemoryResourceValues, VolumesAreFoldersWithBothKindsOfValues) {
    files.addVolume("/folder", {{NSURLVolumeNameKey, "stick"}});
    const NSURL url = NSURL::fileURLWithPath("/folder", true).value();
    EXPECT_EQ(files.resourceValuesForKeys(url, {NSURLIsVolumeKey, NSURLVolumeNameKey}),
              (NSDictionary{{NSURLIsVolumeKey, true}, {NSURLVolumeNameKey, "stick"}}));
    EXPECT_EQ(values("/", {NSURLIsVolumeKey}), (NSDictionary{{NSURLIsVolumeKey, true}}));
}

TEST_F(MemoryResourceValues, LinksAreFollowedToFilesAndFolders) {
    files.addSymbolicLink("/link", "folder");
    files.addSymbolicLink("/absolute", "/link/../folder/file");
    EXPECT_TRUE(files.fileExistsAtPath("/link/file", nullptr));
    EXPECT_TRUE(files.contentsAtPath("/absolute").has_value());
    EXPECT_EQ(files.contentsOfDirectoryAtPath("/link")->size(), 1U);
    EXPECT_EQ(values("/absolute", {NSURLCanonicalPathKey}), (NSDictionary{{NSURLCanonicalPathKey, "/folder/file"}}));
}

} // namespace
} // namespace qk::platform::memory
