// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/recent_items/internal/FileSystemEventCallback.h"

#include "tests/platform/values/Printing.h"
#include "tests/recent_items/FileSystemObserverFixture.h"

#include <gmock/gmock.h>

#include <array>

// When an observer gives up, and the stream that it runs.
namespace {

using namespace qk;
using namespace qk::platform;
using namespace qk::tests;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FileSystemObservation, TimeoutIsAskedForByABatchWithoutAMatchAlone) {
    const auto observer = observe({"log"}, 0, kAny, 10);
    observer->startObservingAtPath("/a");
    machine.dispatch.advance(60);
    EXPECT_NE(observer->stream(), nullptr) << "a quiet tree";
    batch(*observer, {"/a/log"});
    EXPECT_NE(observer->stream(), nullptr) << "a match";
    told.clear();
    batch(*observer, {"/a/other"});
    EXPECT_EQ(observer->stream(), nullptr);
    EXPECT_THAT(told, ElementsAre("time-out"));
}

TEST_F(FileSystemObservation, MomentOfTheTimeoutItselfIsNotLate) {
    const auto observer = observe({}, 0, kAny, 10);
    machine.clock.advance(10);
    batch(*observer, {"/private/x"});
    EXPECT_THAT(told, IsEmpty());
    machine.clock.advance(0.001);
    batch(*observer, {"/private/x"});
    EXPECT_THAT(told, ElementsAre("time-out"));
}

TEST_F(FileSystemObservation, TimeoutRunsFromTheMakingAndARestartDoesNotMoveIt) {
    const auto observer = observe({"log"}, 0, kAny, 10);
    machine.clock.advance(11);
    observer->startObservingAtPath("/a");
    batch(*observer, {"/a/x"});
    EXPECT_EQ(observer->stream(), nullptr);
    observer->startObservingAtPath("/a");
    EXPECT_NE(observer->stream(), nullptr);
    batch(*observer, {"/a/x"});
    EXPECT_EQ(observer->stream(), nullptr);
    EXPECT_THAT(told, ElementsAre("time-out", "time-out"));
}

TEST_F(FileSystemObservation, WithoutADateThereIsNoTimeout) {
    const auto observer = observe({}, 0, kAny, 10);
    observer->setTimeoutDate(std::nullopt);
    machine.clock.advance(11);
    batch(*observer, {"/private/x"});
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FileSystemObservation, StreamIsMadeScheduledAndStarted) {
    const auto observer = observe();
    observer->startObservingAtPaths({"/a", "/b"});
    const auto streams = machine.fsEvents.streams();
    ASSERT_EQ(streams.size(), 1U);
    EXPECT_EQ(streams[0].pathsToWatch, (NSArray{"/a", "/b"}));
    EXPECT_EQ(streams[0].sinceWhen, kFSEventStreamEventIdSinceNow);
    EXPECT_EQ(streams[0].latency, 0.5);
    EXPECT_EQ(streams[0].flags, 0x11U);
    EXPECT_EQ(streams[0].runLoop, machine.dispatch.mainRunLoop());
    observer->stopObserving();
    observer->stopObserving();
    EXPECT_EQ(observer->stream(), nullptr);
    EXPECT_THAT(machine.fsEvents.calls(), ElementsAre("create", "schedule", "start", "stop", "invalidate", "release"));
}

TEST_F(FileSystemObservation, StartingAgainReplacesTheStream) {
    const auto observer = observe();
    observer->startObservingAtPath("/a");
    observer->startObservingAtPath("/b");
    ASSERT_EQ(machine.fsEvents.streams().size(), 1U);
    EXPECT_EQ(machine.fsEvents.streams()[0].pathsToWatch, NSArray{"/b"});
}

TEST_F(FileSystemObservation, StreamThatCannotBeMadeOrStartedIsNotToldOf) {
    const auto observer = observe();
    machine.fsEvents.refuseStreams();
    observer->startObservingAtPath("/a");
    EXPECT_EQ(observer->stream(), nullptr);
    machine.fsEvents.refuseStreams(false);
    machine.fsEvents.failStart();
    observer->startObservingAtPath("/a");
    EXPECT_EQ(observer->stream(), nullptr);
    EXPECT_THAT(machine.fsEvents.streams(), IsEmpty());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FileSystemObservation, EventsReachTheDelegateAfterTheLatency) {
    const auto observer = observe({}, FileSystemObserverItemTypeDirectory, FileSystemObserverChangeCreated);
    observer->startObservingAtPath("/home/anna");
    machine.fsEvents.emit("/home/anna/new", kCreated | kFolder);
    machine.fsEvents.emit("/home/anna/file", kCreated | kFile);
    machine.dispatch.advance(0.25);
    EXPECT_THAT(told, IsEmpty());
    machine.dispatch.advance(0.5);
    EXPECT_THAT(told, ElementsAre("file:///home/anna/|new"));
}

TEST_F(FileSystemObservation, QuietObserverOutlivesItsTenSeconds) {
    const auto observer = FileSystemObserver::fileSystemObserver();
    observer->setDelegate(delegate);
    observer->startObservingAtPath("/home");
    machine.dispatch.advance(20);
    EXPECT_NE(observer->stream(), nullptr);
    machine.fsEvents.emit("/home/a", kModified);
    machine.dispatch.advance(1);
    EXPECT_THAT(told, ElementsAre("file:///home/|a")) << "a match does not time out";
    observer->setItemType(3);
    machine.fsEvents.emit("/home/a", kModified);
    machine.dispatch.advance(1);
    EXPECT_EQ(observer->stream(), nullptr);
}

TEST_F(FileSystemObservation, NothingIsToldAfterTheStopOrTheEnd) {
    auto observer = observe();
    observer->startObservingAtPath("/a");
    machine.fsEvents.emit("/a/x", kCreated);
    observer->stopObserving();
    machine.dispatch.advance(1);
    observer->startObservingAtPath("/a");
    machine.fsEvents.emit("/a/x", kCreated);
    observer.reset();
    machine.dispatch.advance(1);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(machine.fsEvents.streams(), IsEmpty());
}

TEST_F(FileSystemObservation, DelegateMayLetGoOfTheObserver) {
    auto observer = observe();
    observer->startObservingAtPath("/a");
    delegate->also = [&] {
        observer->setDelegate(nullptr);
        observer.reset();
    };
    machine.fsEvents.emit("/a/x", kCreated);
    machine.dispatch.advance(1);
    EXPECT_EQ(delegate->calls, 1);
    EXPECT_THAT(machine.fsEvents.streams(), IsEmpty());
}

TEST_F(FileSystemObservation, DelegateIsHeld) {
    const auto observer = observe();
    const std::weak_ptr<Delegate> weak = delegate;
    delegate.reset();
    EXPECT_FALSE(weak.expired());
    observer->setDelegate(nullptr);
    EXPECT_TRUE(weak.expired());
}

TEST_F(FileSystemObservation, CallbackOfTheStreamHandsPathsAndFlagsOn) {
    const auto observer = observe();
    const std::array<FSEventStreamEventFlags, 1> flags{kCreated};
    const std::array<FSEventStreamEventId, 1> ids{7};
    qk::internal::fileSystemEventCallback(nullptr, observer.get(), 99, {"/a/x"}, flags, ids);
    EXPECT_THAT(told, ElementsAre("file:///a/|x"));
}

TEST_F(FileSystemObservation, PropertiesAreFoundByTheirNames) {
    const auto observer = observe({"log"}, 2, 4, 1);
    EXPECT_EQ(observer->valueForKey("itemType"), Value(std::int64_t{2}));
    EXPECT_EQ(observer->valueForKey("changeOptions"), Value(std::int64_t{4}));
    EXPECT_EQ(observer->valueForKey("filesToLookFor"), Value(NSArray{"log"}));
    EXPECT_EQ(observer->valueForKey("shouldTimeout"), Value(true));
    observer->setValueForKey(Value(std::int64_t{1}), "itemType");
    EXPECT_EQ(observer->itemType(), 1);
    observer->performSelector("startObservingAtPath:", std::array{std::optional<Value>("/a")});
    EXPECT_NE(observer->stream(), nullptr);
    EXPECT_EQ(FileSystemObserverDelegate::describedProtocol().methods().size(), 2U);
    EXPECT_FALSE(FileSystemObserverDelegate::describedProtocol().methods()[1].isRequired);
}

} // namespace
