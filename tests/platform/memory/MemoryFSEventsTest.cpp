// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace qk::platform::memory {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Told = std::vector<std::pair<std::string, FSEventStreamEventFlags>>;

class MemoryFSEventsTest : public testing::Test {
protected:
    static void note(FSEventStreamRef /*stream*/, void* info, std::size_t numEvents, const NSArray& paths,
                     std::span<const FSEventStreamEventFlags> flags, std::span<const FSEventStreamEventId> ids) {
        auto& self = *static_cast<MemoryFSEventsTest*>(info);
        EXPECT_EQ(paths.count(), numEvents);
        EXPECT_EQ(flags.size(), numEvents);
        EXPECT_EQ(ids.size(), numEvents);
        ++self.calls_;
        for (std::size_t index = 0; index < numEvents; ++index) {
            self.told_.emplace_back(paths[index].as<NSString>()->utf8Lossy(), flags[index]);
        }
    }
    FSEventStreamRef make(const NSArray& paths) {
        return machine_.fsEvents.streamCreate(note, {0, this}, paths, kFSEventStreamEventIdSinceNow, 0.5, 0x11);
    }
    FSEventStreamRef started(const NSArray& paths) {
        FSEventStreamRef stream = make(paths);
        stream->scheduleWithRunLoop(machine_.dispatch.mainRunLoop());
        EXPECT_TRUE(stream->start());
        return stream;
    }

    Machine machine_;
    Told told_;
    int calls_ = 0;
};

TEST_F(MemoryFSEventsTest, NobodyIsToldWithoutAStream) {
    machine_.fsEvents.emit("/a", kFSEventStreamEventFlagItemCreated);
    machine_.dispatch.advance(1);
    EXPECT_THAT(machine_.fsEvents.streams(), IsEmpty());
    EXPECT_THAT(machine_.fsEvents.calls(), IsEmpty());
}

TEST_F(MemoryFSEventsTest, StreamsAreRefusedWhenToldTo) {
    machine_.fsEvents.refuseStreams();
    EXPECT_EQ(make({"/a"}), nullptr);
    machine_.fsEvents.refuseStreams(false);
    FSEventStreamRef stream = make({"/a"});
    ASSERT_NE(stream, nullptr);
    stream->release();
    EXPECT_THAT(machine_.fsEvents.streams(), IsEmpty());
}

TEST_F(MemoryFSEventsTest, StreamsFailToStartWhenToldTo) {
    FSEventStreamRef stream = make({"/a"});
    stream->scheduleWithRunLoop(machine_.dispatch.mainRunLoop());
    machine_.fsEvents.failStart();
    EXPECT_FALSE(stream->start());
    EXPECT_FALSE(machine_.fsEvents.streams().at(0).isStarted);
    machine_.fsEvents.failStart(false);
    EXPECT_TRUE(stream->start());
    stream->release();
}

TEST_F(MemoryFSEventsTest, StreamsAreDescribedAsTheyWereMade) {
    FSEventStreamRef stream = started({"/a", "/b"});
    const MemoryFSEvents::Stream described = machine_.fsEvents.streams().at(0);
    EXPECT_EQ(described.pathsToWatch, (NSArray{"/a", "/b"}));
    EXPECT_EQ(described.sinceWhen, kFSEventStreamEventIdSinceNow);
    EXPECT_EQ(described.latency, 0.5);
    EXPECT_EQ(described.flags, kFSEventStreamCreateFlagUseCFTypes | kFSEventStreamCreateFlagFileEvents);
    EXPECT_EQ(described.runLoop, machine_.dispatch.mainRunLoop());
    EXPECT_TRUE(described.isStarted);
    stream->stop();
    EXPECT_FALSE(machine_.fsEvents.streams().at(0).isStarted);
    stream->invalidate();
    EXPECT_EQ(machine_.fsEvents.streams().at(0).runLoop, nullptr);
    stream->release();
    EXPECT_THAT(machine_.fsEvents.calls(), ElementsAre("create", "schedule", "start", "stop", "invalidate", "release"));
}

TEST_F(MemoryFSEventsTest, OnlyWhatIsAtOrBelowAWatchedPathIsTold) {
    FSEventStreamRef stream = started({"/a/", "/b/c"});
    for (const NSString& path : std::vector<NSString>{"/a", "/a/x/", "/ab", "/b", "/b/c/d/e", "/b/cd", "a/x"}) {
        machine_.fsEvents.emit(path, kFSEventStreamEventFlagItemModified);
    }
    machine_.dispatch.advance(0.5);
    EXPECT_THAT(told_, ElementsAre(Pair("/a", 0x1000), Pair("/a/x", 0x1000), Pair("/b/c/d/e", 0x1000)));
    EXPECT_EQ(calls_, 1);
    stream->release();
}

TEST_F(MemoryFSEventsTest, TheRootHoldsEverything) {
    FSEventStreamRef stream = started({"/"});
    machine_.fsEvents.emit("/a", 1);
    machine_.fsEvents.emit("/", 1);
    machine_.dispatch.advance(0.5);
    EXPECT_THAT(told_, ElementsAre(Pair("/a", 1), Pair("/", 1)));
    stream->release();
}

TEST_F(MemoryFSEventsTest, TheLatencyBeginsWithTheFirstEvent) {
    FSEventStreamRef stream = started({"/a"});
    machine_.dispatch.advance(10);
    machine_.fsEvents.emit("/a/1", kFSEventStreamEventFlagItemCreated);
    machine_.dispatch.advance(0.25);
    machine_.fsEvents.emit("/a/2", kFSEventStreamEventFlagItemCreated);
    machine_.fsEvents.emit("/a/1", kFSEventStreamEventFlagItemRemoved);
    machine_.dispatch.advance(0.125);
    EXPECT_EQ(calls_, 0);
    machine_.dispatch.advance(0.125);
    EXPECT_EQ(calls_, 1);
    EXPECT_THAT(told_, ElementsAre(Pair("/a/1", 0x300), Pair("/a/2", 0x100)));
    stream->release();
}

TEST_F(MemoryFSEventsTest, WhatWasEmittedBeforeAStopIsForgotten) {
    FSEventStreamRef stream = started({"/a"});
    machine_.fsEvents.emit("/a/early", 1);
    machine_.dispatch.drain();
    machine_.fsEvents.emit("/a/late", 1);
    stream->stop();
    machine_.fsEvents.emit("/a/never", 1);
    ASSERT_TRUE(stream->start());
    machine_.fsEvents.emit("/a/again", 1);
    machine_.dispatch.advance(1);
    EXPECT_THAT(told_, ElementsAre(Pair("/a/again", 1)));
    stream->release();
}

TEST_F(MemoryFSEventsTest, EventsComeOnTheRunLoopOfTheStream) {
    FSEventStreamRef stream = nullptr;
    machine_.dispatch.runElsewhere([&] {
        stream = make({"/a"});
        stream->scheduleWithRunLoop(machine_.dispatch.currentRunLoop());
        EXPECT_TRUE(stream->start());
    });
    std::thread([&] { machine_.fsEvents.emit("/a", 1); }).join();
    machine_.dispatch.advance(1);
    EXPECT_EQ(calls_, 0);
    machine_.dispatch.runElsewhere([&] { machine_.dispatch.currentRunLoop()->drain(); });
    machine_.dispatch.advance(1);
    machine_.dispatch.runElsewhere([&] { machine_.dispatch.currentRunLoop()->drain(); });
    EXPECT_EQ(calls_, 1);
    stream->release();
}

} // namespace
} // namespace qk::platform::memory
