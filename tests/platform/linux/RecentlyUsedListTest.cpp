// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/RecentlyUsedList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace qk::platform {

static void PrintTo(const RecentlyUsedFile& file, std::ostream* out) {
    *out << file.path << " at " << file.visited;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string list(const std::string& bookmarks) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info">)" +
           bookmarks + "</xbel>";
}

std::string bookmark(const std::string& href, const std::string& visited) {
    return "<bookmark href=\"" + href +
           "\" added=\"2020-01-01T00:00:00Z\" modified=\"2020-01-01T00:00:00Z\" visited=\"" + visited +
           R"("><info><metadata owner="http://freedesktop.org"><mime:mime-type type="text/plain"/>
</metadata></info></bookmark>)";
}

std::vector<RecentlyUsedFile> filesOf(const std::string& href, const std::string& visited) {
    return recentlyUsedFiles(list(bookmark(href, visited)));
}

TEST(RecentlyUsedList, WithoutAListThereAreNoFiles) {
    EXPECT_THAT(recentlyUsedFiles(""), IsEmpty());
    EXPECT_THAT(recentlyUsedFiles(list("")), IsEmpty());
    EXPECT_THAT(recentlyUsedFiles("<other><bookmark href=\"file:///a\" visited=\"2020-01-01T00:00:00Z\"/></other>"),
                IsEmpty());
}

TEST(RecentlyUsedList, FilesAndWhenTheyWereVisited) {
    EXPECT_THAT(
        recentlyUsedFiles(list(bookmark("file:///home/anna/a.txt", "1970-01-02T00:00:01Z") +
                               bookmark("file:///home/anna/b.txt", "2024-02-29T12:30:15.500000Z"))),
        ElementsAre(RecentlyUsedFile{"/home/anna/a.txt", 86401}, RecentlyUsedFile{"/home/anna/b.txt", 1709209815.5}));
}

TEST(RecentlyUsedList, AMalformedListHasNoFiles) {
    const std::string sound = list(bookmark("file:///a", "2020-01-01T00:00:00Z"));
    for (std::size_t length = 0; length + 1 < sound.size(); ++length) {
        EXPECT_THAT(recentlyUsedFiles(sound.substr(0, length)), IsEmpty()) << length;
    }
    EXPECT_THAT(recentlyUsedFiles(sound), testing::SizeIs(1));
}

TEST(RecentlyUsedList, AListThatIsTooLargeHasNoFiles) {
    std::string large = list(bookmark("file:///a", "2020-01-01T00:00:00Z"));
    large.append(kRecentlyUsedListLimit, ' ');
    EXPECT_THAT(recentlyUsedFiles(large), IsEmpty());
}

TEST(RecentlyUsedList, EscapesOfTheUrlAndOfTheTextAreTakenAway) {
    EXPECT_THAT(filesOf("file:///a%20b/%C3%A4&amp;c%2525%FF", "1970-01-01T00:00:00Z"),
                ElementsAre(RecentlyUsedFile{"/a b/\xC3\xA4&c%25\xFF", 0}));
}

TEST(RecentlyUsedList, UrlsThatAreNoFilesOfThisMachineAreLeftOut) {
    for (const char* href : {"", "http://host/a", "file://host/a", "file:a", "file://", "file:///a%0", "file:///a%zz",
                             "file:///a%00b", "file:///a#b", "/a", "file://localhostess/a"}) {
        EXPECT_THAT(filesOf(href, "2020-01-01T00:00:00Z"), IsEmpty()) << href;
    }
    EXPECT_THAT(filesOf("file://localhost/a", "1970-01-01T00:00:00Z"), ElementsAre(RecentlyUsedFile{"/a", 0}));
}

TEST(RecentlyUsedList, ATrailingSlashGoes) {
    EXPECT_THAT(filesOf("file:///a//", "1970-01-01T00:00:00Z"), ElementsAre(RecentlyUsedFile{"/a", 0}));
    EXPECT_THAT(filesOf("file:///", "1970-01-01T00:00:00Z"), ElementsAre(RecentlyUsedFile{"/", 0}));
}

TEST(RecentlyUsedList, MomentsMayHaveAnOffset) {
    for (const char* moment : {"1970-01-01T02:00:00+02:00", "1969-12-31T18:30:00-0530", "1970-01-01T00:00:00",
                               "1970-01-01T00:00:00+00:00", "1970-01-01T00:00:00.Z"}) {
        EXPECT_THAT(filesOf("file:///a", moment), ElementsAre(RecentlyUsedFile{"/a", 0})) << moment;
    }
}

TEST(RecentlyUsedList, WhatIsNoMomentIsLeftOut) {
    for (const char* moment :
         {"", "2020", "2020-13-01T00:00:00Z", "2021-02-29T00:00:00Z", "2020-01-01 00:00:00Z", "2020-01-01T24:00:00Z",
          "2020-01-01T00:60:00Z", "2020-01-01T00:00:61Z", "2020-01-01T00:00:00X", "2020-01-01T00:00:00Zx",
          "2020-01-01T00:00:00+24:00", "-020-01-01T00:00:00Z", "2020-01-01T+1:00:00Z", "2020-01-01T00:00:00+1"}) {
        EXPECT_THAT(filesOf("file:///a", moment), IsEmpty()) << moment;
    }
}

TEST(RecentlyUsedList, BookmarksInFoldersAreNotOfTheToolkits) {
    EXPECT_THAT(recentlyUsedFiles(list("<folder>" + bookmark("file:///a", "2020-01-01T00:00:00Z") + "</folder>")),
                IsEmpty());
}

TEST(RecentlyUsedList, DeepNestingIsHarmless) {
    constexpr int kDepth = 200'000;
    std::string deep;
    for (int depth = 0; depth < kDepth; ++depth) {
        deep += "<a>";
    }
    EXPECT_THAT(recentlyUsedFiles(list(deep)), IsEmpty());
}

TEST(RecentlyUsedList, EntitiesOfADocumentTypeAreNotUnfolded) {
    EXPECT_THAT(recentlyUsedFiles("<!DOCTYPE xbel [<!ENTITY a \"file:///a\">]>" +
                                  list(bookmark("&a;", "2020-01-01T00:00:00Z"))),
                IsEmpty());
}

} // namespace
} // namespace qk::platform
