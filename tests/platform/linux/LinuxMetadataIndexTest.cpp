// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/MetadataFixture.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace qk::platform {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr FSEventStreamEventFlags kCreated = kFSEventStreamEventFlagItemCreated;
constexpr FSEventStreamEventFlags kModified = kFSEventStreamEventFlagItemModified;

class LinuxMetadataIndexTest : public testing::Test, protected tests::MetadataFixture {
protected:
    [[nodiscard]] NSString textOf(const std::string& name) const { return NSString::fromUTF8Lossy(path(name)); }
};

TEST_F(LinuxMetadataIndexTest, WhereNothingIsNothingIsFound) {
    begin(40);
    pass();
    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_THAT(delivered[0], IsEmpty());
}

TEST_F(LinuxMetadataIndexTest, AScopeThatIsNotThereHoldsNothing) {
    remove("scope");
    begin(40);
    pass();
    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_THAT(delivered[0], IsEmpty());
}

TEST_F(LinuxMetadataIndexTest, TheNewestComeFirst) {
    write("scope/a", 10);
    write("scope/b/c", 30);
    write("scope/d", 20);
    begin(2);
    pass();
    EXPECT_EQ(last(), "scope/b/c scope/d");
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataIndexTest, WithoutALimitAllAreFound) {
    for (int index = 0; index < 300; ++index) {
        write("scope/" + std::to_string(index % 20) + "/" + std::to_string(index), 1000 + index);
    }
    begin(0);
    pass();
    ASSERT_THAT(delivered, SizeIs(1));
    ASSERT_THAT(delivered[0], SizeIs(300));
    EXPECT_THAT(last(), testing::StartsWith("scope/19/299 scope/18/298 "));
}

TEST_F(LinuxMetadataIndexTest, NothingIsToldBeforeTheRunLoopRuns) {
    write("scope/a", 10);
    begin(40);
    EXPECT_THAT(delivered, IsEmpty());
    dispatch->runBackground();
    EXPECT_THAT(delivered, IsEmpty());
    dispatch->drain();
    EXPECT_EQ(last(), "scope/a");
}

TEST_F(LinuxMetadataIndexTest, AnItemTellsItsAttributes) {
    write("scope/a b.pdf", 10);
    tests::setDates(path("scope/a b.pdf"), 10, 20);
    begin(40);
    pass();
    ASSERT_THAT(delivered, SizeIs(1));
    ASSERT_THAT(delivered[0], SizeIs(1));
    const NSMetadataItem& item = *delivered[0][0];
    EXPECT_EQ(item.valueForAttribute(NSMetadataItemPathKey), Value(textOf("scope/a b.pdf")));
    EXPECT_EQ(item.valueForAttribute(NSMetadataItemDisplayNameKey), Value("a b.pdf"));
    EXPECT_EQ(item.valueForAttribute(kMDItemContentType), Value("com.adobe.pdf"));
    EXPECT_THAT(item.valueForAttribute(kMDItemContentTypeTree)->as<NSArray>()->values(),
                testing::Contains(Value("public.composite-content")));
    EXPECT_EQ(item.valueForAttribute(kMDItemContentModificationDate), Value(NSDate::dateWithTimeIntervalSince1970(10)));
    EXPECT_EQ(item.valueForAttribute(kMDItemLastUsedDate), Value(NSDate::dateWithTimeIntervalSince1970(20)));
    EXPECT_FALSE(item.valueForAttribute("kMDItemOfNoIndex").has_value());
}

TEST_F(LinuxMetadataIndexTest, ScopesAreNoResultsButFoldersInThemAre) {
    write("scope/folder/file", 10);
    begin(40, "kMDItemContentTypeTree == 'public.folder'");
    pass();
    EXPECT_EQ(last(), "scope/folder");
}

TEST_F(LinuxMetadataIndexTest, WhatIsHiddenIsNotFound) {
    write("scope/.a", 10);
    write("scope/.b/c", 10);
    write("scope/d/.e/f", 10);
    begin(40);
    pass();
    EXPECT_EQ(last(), "");
}

TEST_F(LinuxMetadataIndexTest, TypesAreAlternatives) {
    write("scope/a.pdf", 50);
    write("scope/b.zip", 40);
    write("scope/c.unknownextension", 30);
    write("scope/d.o", 20);
    begin(40, "kMDItemContentTypeTree == 'public.content' OR kMDItemContentTypeTree == 'public.archive'");
    pass();
    EXPECT_EQ(last(), "scope/a.pdf scope/b.zip");
}

TEST_F(LinuxMetadataIndexTest, ConditionsMayAskForAnyAttribute) {
    write("scope/a.txt", 10);
    write("scope/b.txt", 20);
    begin(40, "kMDItemDisplayName BEGINSWITH 'a' AND kMDItemContentTypeTree == 'public.text'");
    pass();
    EXPECT_EQ(last(), "scope/a.txt");
}

TEST_F(LinuxMetadataIndexTest, WithoutScopesTheHomeFolderIsSearched) {
    write("home/a", 10);
    begin({.scopes = {}, .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"), .sortDescriptors = {}});
    pass();
    EXPECT_EQ(last(), "home/a");
}

TEST_F(LinuxMetadataIndexTest, ScopesThatAreLinksTellTheRealPaths) {
    write("scope/a", 10);
    std::filesystem::create_directory_symlink("scope", path("link"));
    begin({.scopes = {textOf("link"), textOf("scope"), textOf("scope/")},
           .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"),
           .sortDescriptors = {}});
    pass();
    EXPECT_EQ(last(), "scope/a");
}

TEST_F(LinuxMetadataIndexTest, ProgressIsToldNowAndThen) {
    for (int index = 0; index < 10'050; ++index) {
        write("scope/" + std::to_string(index % 3) + "/" + std::to_string(index), 10);
    }
    begin(1);
    pass();
    EXPECT_THAT(progress, SizeIs(1));
    EXPECT_GE(progress.at(0), 10'000U);
}

TEST_F(LinuxMetadataIndexTest, CapturedFilesAreSearchedUnderTheirRoot) {
    write("scope/home/a", 10);
    LinuxMetadataIndex captured(LinuxRoot(path("scope")), dispatch, events,
                                std::make_shared<LinuxUniformTypes>(LinuxRoot(path("scope"))),
                                StandardFolders(LinuxRoot(path("scope")), std::make_shared<memory::MemoryUsers>(),
                                                [](const char*) { return std::nullopt; }));
    MetadataResults found;
    const auto search = captured.begin(
        {.scopes = {"/home"}, .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"), .sortDescriptors = {}},
        {.progress = {}, .deliver = [&](MetadataResults results) { found = results; }});
    pass();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0]->valueForAttribute(NSMetadataItemPathKey), Value("/home/a"));
}

// The toolkits' list.

std::string usedList(const std::string& path, int second) {
    return "<xbel><bookmark href=\"file://" + path + "\" visited=\"1970-01-01T00:00:" + (second < 10 ? "0" : "") +
           std::to_string(second) + "Z\"/></xbel>";
}

TEST_F(LinuxMetadataIndexTest, TheToolkitsListTellsWhenFilesWereUsed) {
    write("scope/a", 10);
    write("scope/x/b", 10);
    write("data/recently-used.xbel", 1);
    std::ofstream(path("data/recently-used.xbel")) << usedList(path("scope/x/b"), 20);
    begin(40);
    pass();
    EXPECT_EQ(last(), "scope/x/b scope/a");
    EXPECT_EQ(delivered[0][0]->valueForAttribute(kMDItemLastUsedDate),
              Value(NSDate::dateWithTimeIntervalSince1970(20)));

    std::ofstream(path("data/recently-used.xbel"), std::ios::trunc) << usedList(path("scope/a"), 30);
    emit("data/recently-used.xbel", kModified);
    pass();
    EXPECT_EQ(last(), "scope/a scope/x/b");
}

TEST_F(LinuxMetadataIndexTest, AMalformedListTellsNothing) {
    write("scope/a", 10);
    write("data/recently-used.xbel", 1);
    std::ofstream(path("data/recently-used.xbel")) << usedList(path("scope/a"), 20).substr(3);
    begin(40);
    pass();
    EXPECT_EQ(delivered[0][0]->valueForAttribute(kMDItemLastUsedDate),
              Value(NSDate::dateWithTimeIntervalSince1970(10)));
}

TEST_F(LinuxMetadataIndexTest, AFileOfTheListIsFoundAlsoWhenItWasNotAmongTheFirst) {
    for (int index = 10; index < 300; ++index) {
        write("scope/" + std::to_string(index), index);
    }
    begin({.scopes = {textOf("scope")},
           .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"),
           .sortDescriptors = {{kMDItemLastUsedDate, true}},
           .limit = 2});
    pass();
    EXPECT_EQ(last(), "scope/10 scope/11");
    write("data/recently-used.xbel", 1);
    std::ofstream(path("data/recently-used.xbel")) << usedList(path("scope/299"), 0);
    emit("data/recently-used.xbel", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/299 scope/10");
}

// The end.

TEST_F(LinuxMetadataIndexTest, AnEndedSearchTellsNothingAndWatchesNothing) {
    write("scope/a", 10);
    begin(40);
    EXPECT_THAT(events->streams(), testing::Not(IsEmpty()));
    run = nullptr;
    EXPECT_THAT(events->streams(), IsEmpty());
    pass();
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_THAT(progress, IsEmpty());
}

TEST_F(LinuxMetadataIndexTest, AnEndAfterTheWalkComesInTime) {
    begin(40);
    dispatch->runBackground();
    run = nullptr;
    pass();
    EXPECT_THAT(delivered, IsEmpty());
}

TEST_F(LinuxMetadataIndexTest, AnEndDuringAnUpdateComesInTime) {
    begin(40);
    pass();
    write("scope/a", 10);
    emit("scope/a", kCreated);
    dispatch->drain();
    dispatch->advance(kLatency);
    dispatch->runBackground();
    run = nullptr;
    pass();
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataIndexTest, ASearchMayBeEndedByWhatItTells) {
    write("scope/a", 10);
    int calls = 0;
    std::unique_ptr<MetadataSearchRun> search;
    search = metadataIndex.begin({.scopes = {textOf("scope")},
                                  .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"),
                                  .sortDescriptors = {}},
                                 {.progress = {}, .deliver = [&](const MetadataResults&) {
                                      ++calls;
                                      search = nullptr;
                                  }});
    pass();
    EXPECT_EQ(calls, 1);
}

TEST_F(LinuxMetadataIndexTest, StreamsAreStartedBeforeTheWalk) {
    begin(40);
    ASSERT_THAT(events->streams(), testing::Not(IsEmpty()));
    EXPECT_TRUE(events->streams()[0].isStarted);
    EXPECT_EQ(events->streams()[0].latency, 0.5);
    EXPECT_EQ(events->streams()[0].pathsToWatch, NSArray({textOf("scope")}));
    dispatch->runBackground();
}

TEST_F(LinuxMetadataIndexTest, EachSearchIsOnItsOwn) {
    write("scope/a", 10);
    begin(40);
    MetadataResults other;
    const auto second =
        metadataIndex.begin({.scopes = {textOf("scope")},
                             .predicate = NSPredicate::predicateWithFormat("TRUEPREDICATE"),
                             .sortDescriptors = {}},
                            {.progress = {}, .deliver = [&](MetadataResults results) { other = results; }});
    run = nullptr;
    pass();
    EXPECT_THAT(delivered, IsEmpty());
    EXPECT_THAT(other, SizeIs(1));
}

} // namespace
} // namespace qk::platform
