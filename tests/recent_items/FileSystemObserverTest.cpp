// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/values/Printing.h"
#include "tests/recent_items/FileSystemObserverFixture.h"

#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace qk;
using namespace qk::platform;
using namespace qk::tests;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FileSystemObservation, EmptyBatchTellsNothing) {
    batch(*observe(), {});
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FileSystemObservation, WithoutADelegateNothingHappens) {
    const auto observer = FileSystemObserver::fileSystemObserverWithItemType(0, kAny, 1);
    batch(*observer, {"/a/b"});
    observer->startObservingAtPath("/a");
    machine.clock.advance(2);
    batch(*observer, {"/private/b"});
    EXPECT_EQ(observer->stream(), nullptr) << "a time-out stops it all the same";
    observer->setDelegate(std::make_shared<PlainDelegate>());
    observer->startObservingAtPath("/a");
    batch(*observer, {"/private/b"});
    EXPECT_EQ(observer->stream(), nullptr);
}

TEST_F(FileSystemObservation, ShorthandsMeanEveryChangeAndTenSeconds) {
    machine.clock.setNow(NSDate::dateWithTimeIntervalSince1970(100));
    const auto plain = FileSystemObserver::fileSystemObserver();
    const auto one = FileSystemObserver::fileSystemObserverWithFileToLookFor("log");
    const auto several = FileSystemObserver::fileSystemObserverWithFilesToLookFor({"log", "db"});
    for (const auto& observer : {plain, one, several}) {
        EXPECT_TRUE(observer->shouldTimeout());
        EXPECT_EQ(observer->timeoutDate(), NSDate::dateWithTimeIntervalSince1970(110));
        EXPECT_EQ(observer->itemType(), FileSystemObserverItemTypeAny);
        EXPECT_EQ(observer->changeOptions(), FileSystemObserverChangeAny);
        EXPECT_EQ(observer->stream(), nullptr);
        EXPECT_EQ(observer->delegate(), nullptr);
    }
    EXPECT_EQ(plain->filesToLookFor(), NSArray());
    EXPECT_EQ(one->filesToLookFor(), NSArray{"log"});
    EXPECT_EQ(several->filesToLookFor(), (NSArray{"log", "db"}));
}

TEST_F(FileSystemObservation, LongerFormsTakeEverythingFromTheCaller) {
    const auto plain = FileSystemObserver::fileSystemObserverWithItemType(2, 12, 3.5);
    const auto one = FileSystemObserver::fileSystemObserverWithFileToLookFor("log", 2, 12, 3.5);
    const auto several = FileSystemObserver::fileSystemObserverWithFilesToLookFor({"log", "db"}, 2, 12, 3.5);
    for (const auto& observer : {plain, one, several}) {
        EXPECT_EQ(observer->timeoutDate(), NSDate::dateWithTimeIntervalSince1970(3.5));
        EXPECT_EQ(observer->itemType(), FileSystemObserverItemTypeFile);
        EXPECT_EQ(observer->changeOptions(), FileSystemObserverChangeModified | FileSystemObserverChangeRemoved);
    }
    EXPECT_EQ(one->filesToLookFor(), NSArray{"log"});
    EXPECT_EQ(several->filesToLookFor(), (NSArray{"log", "db"}));
}

TEST_F(FileSystemObservation, NoTimeoutStillHasADate) {
    for (const double seconds : {0.0, -5.0}) {
        const auto observer = observe({}, 0, kAny, seconds);
        EXPECT_FALSE(observer->shouldTimeout());
        EXPECT_EQ(observer->timeoutDate(), NSDate::dateWithTimeIntervalSince1970(seconds));
        machine.clock.advance(1000);
        batch(*observer, {"/private/x"});
        machine.clock.advance(-1000);
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FileSystemObservation, BatchIsToldAtOnceWithNamesAndFolders) {
    batch(*observe(), {"/b/two", "/a/one", "/c/three/"});
    EXPECT_THAT(told, ElementsAre("file:///a/|one", "file:///c/|three", "file:///b/|two"));
    EXPECT_EQ(delegate->calls, 1);
}

TEST_F(FileSystemObservation, OfOneNameInTwoFoldersTheLaterPathCounts) {
    batch(*observe(), {"/a/x", "/b/x"});
    EXPECT_THAT(told, ElementsAre("file:///b/|x"));
}

TEST_F(FileSystemObservation, SkippedEventDoesNotReplaceAnEarlierOne) {
    batch(*observe(), {"/a/x", "/private/x"});
    EXPECT_THAT(told, ElementsAre("file:///a/|x"));
}

TEST_F(FileSystemObservation, PrivateTreeIsNeverToldAndItsPrefixIsAText) {
    const auto observer = observe();
    batch(*observer, {"/private/x", "/private/var/x", "/privateer/x", "/private-data/x"});
    EXPECT_EQ(delegate->calls, 0);
    batch(*observer, {"/private", "/home/private/x"});
    EXPECT_THAT(told, ElementsAre("file:///|private", "file:///home/private/|x"));
}

TEST_F(FileSystemObservation, PathWithoutAFolderIsSkipped) {
    batch(*observe(), {"name", ""});
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FileSystemObservation, BatchWithFewerFlagsThanPathsEndsWithTheFlags) {
    const std::array<FSEventStreamEventFlags, 1> flags{kCreated};
    observe()->filesChangedAtPaths({"/a/x", "/a/y"}, flags);
    EXPECT_THAT(told, ElementsAre("file:///a/|x"));
}

TEST_F(FileSystemObservation, NamesAreLookedForAsPartsOfTheLastComponent) {
    const auto observer = observe({"log"});
    for (const char* path : {"/a/catalog.db", "/a/syslog.txt", "/a/log", "/a/log/"}) {
        EXPECT_TRUE(observer->isFileToLookForAtPath(text(path))) << path;
    }
    for (const char* path : {"/log/other", "/a/LOG", "", "/"}) {
        EXPECT_FALSE(observer->isFileToLookForAtPath(text(path))) << path;
    }
    batch(*observer, {"/a/catalog.db", "/a/other"});
    EXPECT_THAT(told, ElementsAre("file:///a/|catalog.db"));
}

TEST_F(FileSystemObservation, EveryNameMatchesWithoutNamesAndNoneMatchesTheEmptyOne) {
    EXPECT_TRUE(observe()->isFileToLookForAtPath(""));
    EXPECT_FALSE(observe({""})->isFileToLookForAtPath("/a/b"));
    EXPECT_TRUE(observe({"", "b"})->isFileToLookForAtPath("/a/b"));
    EXPECT_FALSE(observe({17})->isFileToLookForAtPath("/a/17"));
}

TEST_F(FileSystemObservation, ItemTypesAskForTheirFlag) {
    struct Case {
        std::int64_t itemType;
        FSEventStreamEventFlags flags;
        bool matches;
    };
    constexpr auto kLink = kFSEventStreamEventFlagItemIsSymlink;
    for (const Case& each : {Case{0, 0, true},
                             {0, kLink, true},
                             {1, kFolder, true},
                             {1, kFile, false},
                             {2, kFile, true},
                             {2, kFolder, false},
                             {1, kFile | kFolder, true},
                             {2, kFile | kFolder, true},
                             {1, kLink, false},
                             {2, kLink, false},
                             {3, kFile | kFolder, false},
                             {-1, kFile, false}}) {
        EXPECT_EQ(observe({}, each.itemType)->itemTypeMatchingEventFlags(each.flags), each.matches)
            << each.itemType << " " << each.flags;
    }
}

TEST_F(FileSystemObservation, AllChangesThatAreAskedForMustBeInOneEvent) {
    struct Case {
        std::int64_t options;
        FSEventStreamEventFlags flags;
        bool matches;
    };
    for (const Case& each : {Case{1, 0, true},
                             {1 | 8, kCreated, true},
                             {-1, 0, true},
                             {2, kCreated, true},
                             {2, kModified, false},
                             {4, kModified, true},
                             {8, kRemoved, true},
                             {2 | 8, kCreated | kRemoved, true},
                             {2 | 8, kCreated, false},
                             {2 | 8, kRemoved, false},
                             {-2, kCreated | kRemoved | kModified, true},
                             {-2, kCreated | kRemoved, false},
                             {0, 0, true},
                             {16, 0, true},
                             {32, kRemoved, true},
                             {2, kFSEventStreamEventFlagItemRenamed, false},
                             {std::numeric_limits<std::int64_t>::min(), 0, true}}) {
        EXPECT_EQ(observe({}, 0, each.options)->changeOptionsMatchingEventFlags(each.flags), each.matches)
            << each.options << " " << each.flags;
    }
}

TEST_F(FileSystemObservation, FlagsMustMatchInBoth) {
    const auto observer = observe({}, FileSystemObserverItemTypeDirectory, FileSystemObserverChangeCreated);
    EXPECT_TRUE(observer->verifyEventFlags(kCreated | kFolder));
    EXPECT_FALSE(observer->verifyEventFlags(kCreated | kFile));
    EXPECT_FALSE(observer->verifyEventFlags(kRemoved | kFolder));
}

} // namespace
