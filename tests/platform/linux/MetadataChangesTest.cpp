// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/MetadataFixture.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace qk::platform {
namespace {

using testing::SizeIs;

constexpr FSEventStreamEventFlags kCreated = kFSEventStreamEventFlagItemCreated;
constexpr FSEventStreamEventFlags kRemoved = kFSEventStreamEventFlagItemRemoved;
constexpr FSEventStreamEventFlags kRenamed = kFSEventStreamEventFlagItemRenamed;
constexpr FSEventStreamEventFlags kModified = kFSEventStreamEventFlagItemModified;
constexpr FSEventStreamEventFlags kAttributes = kFSEventStreamEventFlagItemInodeMetaMod;
constexpr FSEventStreamEventFlags kScan = kFSEventStreamEventFlagMustScanSubDirs;

class LinuxMetadataChanges : public testing::Test, protected tests::MetadataFixture {};

TEST_F(LinuxMetadataChanges, WithoutAChangeNothingMoreIsTold) {
    write("scope/a", 10);
    begin(40);
    pass();
    emit("scope/a", kModified);
    emit("scope/absent", kRemoved);
    emit("elsewhere/a", kCreated);
    pass();
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataChanges, ANewFileIsTold) {
    write("scope/a", 10);
    begin(40);
    pass();
    write("scope/b", 20);
    emit("scope/b", kCreated | kModified);
    pass();
    EXPECT_EQ(last(), "scope/b scope/a");
    EXPECT_THAT(delivered, SizeIs(2));
}

TEST_F(LinuxMetadataChanges, AFileOfAnotherTypeIsNotTold) {
    begin(40, "kMDItemContentTypeTree == 'public.archive'");
    pass();
    write("scope/a.txt", 20);
    emit("scope/a.txt", kCreated);
    pass();
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataChanges, AModifiedFileMovesAndTheOthersAreTheSameObjects) {
    write("scope/a", 10);
    write("scope/b", 20);
    begin(40);
    pass();
    write("scope/a", 30);
    emit("scope/a", kModified);
    pass();
    EXPECT_EQ(last(), "scope/a scope/b");
    EXPECT_EQ(delivered[0][0], delivered[1][1]);
    EXPECT_NE(delivered[0][1], delivered[1][0]);
}

TEST_F(LinuxMetadataChanges, ARemovedFileGoesAndTheReserveFollows) {
    for (int index = 0; index < 50; ++index) {
        write("scope/" + std::to_string(index), index);
    }
    begin(2);
    pass();
    EXPECT_EQ(last(), "scope/49 scope/48");
    remove("scope/49");
    emit("scope/49", kRemoved);
    pass();
    EXPECT_EQ(last(), "scope/48 scope/47");
}

TEST_F(LinuxMetadataChanges, WhenTheReserveIsUsedUpAllIsLookedThroughAgain) {
    constexpr int kFiles = 300;
    for (int index = 0; index < kFiles; ++index) {
        write("scope/" + std::to_string(index), index);
    }
    begin(2);
    pass();
    for (int index = kFiles - 1; index > 5; --index) {
        remove("scope/" + std::to_string(index));
        emit("scope/" + std::to_string(index), kRemoved);
    }
    pass();
    EXPECT_EQ(last(), "scope/5 scope/4");
    EXPECT_THAT(delivered, SizeIs(2));
}

TEST_F(LinuxMetadataChanges, AFileThatBecomesOlderThanTheReserveLeavesItsPlaceToTheRightOne) {
    constexpr int kFiles = 300;
    for (int index = 0; index < kFiles; ++index) {
        write("scope/" + std::to_string(index), 1000 + index);
    }
    begin(2);
    pass();
    for (int index = kFiles - 1; index >= 100; --index) {
        write("scope/" + std::to_string(index), 1);
        emit("scope/" + std::to_string(index), kAttributes);
    }
    pass();
    EXPECT_EQ(last(), "scope/99 scope/98");
}

TEST_F(LinuxMetadataChanges, ANewFolderIsLookedThrough) {
    begin(40);
    pass();
    write("scope/new/deep/a", 10);
    emit("scope/new", kCreated | kFSEventStreamEventFlagItemIsDir);
    pass();
    EXPECT_EQ(last(), "scope/new/deep/a");
}

TEST_F(LinuxMetadataChanges, ANewFolderAndItsFilesAreToldOnceEach) {
    begin(40);
    pass();
    write("scope/new/deep/a", 10);
    emit("scope/new", kCreated);
    emit("scope/new/deep", kCreated);
    emit("scope/new/deep/a", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/new/deep/a");
}

TEST_F(LinuxMetadataChanges, ARenamedFolderTakesItsFilesAlong) {
    write("scope/old/a", 10);
    write("scope/older", 5);
    begin(40);
    pass();
    move("scope/old", "scope/new");
    emit("scope/old", kRenamed);
    emit("scope/new", kRenamed);
    pass();
    EXPECT_EQ(last(), "scope/new/a scope/older");
}

TEST_F(LinuxMetadataChanges, AFolderThatIsMovedAwayTakesItsFilesAlong) {
    write("scope/old/a", 10);
    write("scope/b", 5);
    begin(40);
    pass();
    move("scope/old", "elsewhere");
    emit("scope/old", kRenamed);
    pass();
    EXPECT_EQ(last(), "scope/b");
}

TEST_F(LinuxMetadataChanges, ARemovedFolderTakesItsFilesAlong) {
    write("scope/old/deep/a", 10);
    write("scope/old-not/a", 5);
    begin(40);
    pass();
    remove("scope/old");
    emit("scope/old", kRemoved | kFSEventStreamEventFlagItemIsDir);
    pass();
    EXPECT_EQ(last(), "scope/old-not/a");
}

TEST_F(LinuxMetadataChanges, LostEventsHaveTheFolderLookedThrough) {
    write("scope/x/a", 10);
    write("scope/y/b", 20);
    begin(40);
    pass();
    remove("scope/x/a");
    write("scope/x/c", 30);
    emit("scope/x", kScan);
    pass();
    EXPECT_EQ(last(), "scope/x/c scope/y/b");
}

TEST_F(LinuxMetadataChanges, LostEventsOfAllHaveAllLookedThrough) {
    write("scope/a", 10);
    begin(40);
    pass();
    remove("scope/a");
    write("scope/c", 30);
    emit("scope", kScan | kFSEventStreamEventFlagKernelDropped);
    pass();
    EXPECT_EQ(last(), "scope/c");
}

TEST_F(LinuxMetadataChanges, AScopeThatIsRemovedAndMadeAgainIsSearched) {
    write("scope/a", 10);
    begin(40);
    pass();
    remove("scope");
    emit("scope", kRemoved);
    pass();
    EXPECT_EQ(last(), "");
    write("scope/b", 10);
    emit("scope", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/b");
}

TEST_F(LinuxMetadataChanges, AFolderIsModifiedByWhatIsMadeInIt) {
    write("scope/x/a", 10);
    write("scope/y/b", 10);
    tests::setDates(path("scope/x"), 10, 10);
    tests::setDates(path("scope/y"), 20, 20);
    begin(40, "kMDItemContentTypeTree == 'public.folder'");
    pass();
    EXPECT_EQ(last(), "scope/y scope/x");
    write("scope/x/c", 10);
    tests::setDates(path("scope/x"), 30, 30);
    emit("scope/x/c", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/x scope/y");
}

TEST_F(LinuxMetadataChanges, AFolderIsModifiedByWhatIsHiddenInItToo) {
    write("scope/x/a", 10);
    write("scope/y/b", 10);
    tests::setDates(path("scope/x"), 10, 10);
    tests::setDates(path("scope/y"), 20, 20);
    begin(40, "kMDItemContentTypeTree == 'public.folder'");
    pass();
    EXPECT_EQ(last(), "scope/y scope/x");
    write("scope/x/.c", 10);
    tests::setDates(path("scope/x"), 30, 30);
    emit("scope/x/.c", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/x scope/y");
}

TEST_F(LinuxMetadataChanges, WhatIsHiddenIsNotToldLaterEither) {
    begin(40);
    pass();
    write("scope/.a/b", 10);
    emit("scope/.a", kCreated);
    emit("scope/.a/b", kCreated);
    pass();
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataChanges, WhatChangesDuringTheWalkIsToldAfterIt) {
    write("scope/a", 10);
    begin(40);
    dispatch->runBackground(); // the walk is over, but nobody has been told
    write("scope/b", 20);
    emit("scope/b", kCreated);
    dispatch->advance(kLatency);
    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_EQ(last(), "scope/a");
    pass();
    EXPECT_EQ(last(), "scope/b scope/a");
}

TEST_F(LinuxMetadataChanges, WhatChangesBeforeTheWalkBeginsIsFoundOnce) {
    begin(40);
    write("scope/b", 20);
    emit("scope/b", kCreated);
    pass();
    EXPECT_EQ(last(), "scope/b");
    EXPECT_THAT(delivered, SizeIs(1));
}

TEST_F(LinuxMetadataChanges, ResultsChangeOnceALatencyAtMost) {
    begin(40);
    settle();
    constexpr int kSteps = 40;
    for (int step = 1; step <= kSteps; ++step) {
        write("scope/" + std::to_string(step), 10 + step);
        emit("scope/" + std::to_string(step), kCreated);
        settle();
        dispatch->advance(kLatency / 10);
        settle();
    }
    pass();
    EXPECT_THAT(delivered.back(), SizeIs(kSteps));
    EXPECT_LE(delivered.size(), 7U);
}

TEST_F(LinuxMetadataChanges, MoreChangesThanCanBeKeptHaveAllLookedThrough) {
    begin(40);
    pass();
    write("scope/a", 10);
    for (int index = 0; index < 20'000; ++index) {
        emit("scope/x/" + std::to_string(index), kCreated);
    }
    pass();
    EXPECT_EQ(last(), "scope/a");
}

TEST_F(LinuxMetadataChanges, WhereNothingCanBeWatchedAllIsLookedThroughEveryMinute) {
    events->failStart();
    begin(40);
    pass();
    EXPECT_EQ(last(), "");
    write("scope/a", 10);
    dispatch->advance(50);
    settle();
    EXPECT_THAT(delivered, SizeIs(1));
    dispatch->advance(10);
    settle();
    EXPECT_EQ(last(), "scope/a");
    dispatch->advance(60);
    settle();
    EXPECT_THAT(delivered, SizeIs(2));
}

TEST_F(LinuxMetadataChanges, WhereNoStreamIsMadeAllIsLookedThroughEveryMinute) {
    events->refuseStreams();
    begin(40);
    pass();
    write("scope/a", 10);
    dispatch->advance(60);
    settle();
    EXPECT_EQ(last(), "scope/a");
}

} // namespace
} // namespace qk::platform
