// SPDX-License-Identifier: Apache-2.0
// What happens in the home folder, and how long the one who watches it lives.
#include "tests/platform/values/Printing.h"
#include "tests/recent_items/RecentItemsFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace qk;
using namespace qk::platform;
using testing::ElementsAre;
using testing::IsEmpty;

class RecentItemsHome : public qk::tests::RecentItemsFixture {};

TEST_F(RecentItemsHome, FolderMadeInTheHomeFolderIsSearchedFromThenOn) {
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    const auto before = observer->metadataQuery();
    makeFolder("/home/anna/New");
    EXPECT_NE(observer->metadataQuery(), before);
    EXPECT_FALSE(before->isStarted());
    EXPECT_TRUE(observer->metadataQuery()->isStarted());
    addFile("/home/anna/New/file", 1);
    settle();
    EXPECT_THAT(deliveries.back(), ElementsAre("/home/anna/New/file"));
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 1U);
}

TEST_F(RecentItemsHome, QueryThatDidNotRunIsMadeAnewAndNotStarted) {
    const auto observer = makeObserver();
    const auto before = observer->metadataQuery();
    makeFolder("/home/anna/New");
    EXPECT_NE(observer->metadataQuery(), before);
    EXPECT_FALSE(observer->metadataQuery()->isStarted());
}

TEST_F(RecentItemsHome, FolderDeeperDownAndFilesChangeNothing) {
    const auto observer = makeObserver();
    const auto before = observer->metadataQuery();
    makeFolder("/home/anna/Documents/New");
    machine.fsEvents.emit("/home/anna/file", kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsFile);
    machine.fsEvents.emit("/home/anna/Gone", kFSEventStreamEventFlagItemRemoved | kFSEventStreamEventFlagItemIsDir);
    machine.dispatch.advance(1);
    EXPECT_EQ(observer->metadataQuery(), before);
}

TEST_F(RecentItemsHome, FolderOfTheSameNameDeeperDownHidesANewOne) {
    const auto observer = makeObserver();
    const auto before = observer->metadataQuery();
    machine.fileManager.addDirectory("/home/anna/New/New");
    for (const char* path : {"/home/anna/New", "/home/anna/New/New"}) {
        machine.fsEvents.emit(text(path), kFSEventStreamEventFlagItemCreated | kFSEventStreamEventFlagItemIsDir);
    }
    machine.dispatch.advance(1);
    EXPECT_EQ(observer->metadataQuery(), before);
}

TEST_F(RecentItemsHome, FoldersAreComparedByTheirPaths) {
    const auto observer = makeObserver();
    auto before = observer->metadataQuery();
    for (const bool isDirectory : {true, false}) {
        const NSURL home = NSURL::fileURLWithPath("/home/anna", isDirectory).value();
        observer->fileSystemObserver(*observer->userHomeObserver(), {"a", "b"}, {"no URL", home});
        EXPECT_NE(observer->metadataQuery(), before);
        before = observer->metadataQuery();
    }
    observer->fileSystemObserver(*observer->userHomeObserver(), {}, {});
    EXPECT_EQ(observer->metadataQuery(), before);
}

TEST_F(RecentItemsHome, StaysAliveUntilItIsShutDown) {
    auto observer = makeObserver();
    const std::weak_ptr<RecentItemsObserver> weak = observer;
    observer->startObserving();
    settle();
    observer.reset();
    ASSERT_FALSE(weak.expired());
    addFile("/home/anna/Documents/a", 1);
    settle();
    EXPECT_EQ(deliveries.size(), 2U);
    weak.lock()->shutdown();
    EXPECT_TRUE(weak.expired());
    EXPECT_THAT(machine.fsEvents.streams(), IsEmpty());
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    settle();
    EXPECT_EQ(deliveries.size(), 2U);
}

TEST_F(RecentItemsHome, ShutDownOneDiesWithItsLastOwner) {
    auto observer = makeObserver();
    const std::weak_ptr<RecentItemsObserver> weak = observer;
    observer->startObserving();
    settle();
    observer->shutdown();
    EXPECT_EQ(observer->userHomeObserver()->delegate(), nullptr);
    EXPECT_TRUE(observer->metadataQuery()->isStarted()) << "the query is another matter";
    addFile("/home/anna/Documents/a", 1);
    machine.dispatch.drain();
    machine.dispatch.runBackground();
    observer.reset();
    EXPECT_FALSE(weak.expired()) << "the task on the main queue holds it";
    machine.dispatch.drain();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(deliveries.size(), 2U);
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
}

TEST_F(RecentItemsHome, DeliveryOfAQueryWhoseObserverIsGoneDoesNothing) {
    auto observer = makeObserver();
    observer->startObserving();
    machine.dispatch.drain();
    observer->shutdown();
    observer.reset();
    settle();
    EXPECT_THAT(deliveries, IsEmpty());
}

} // namespace
