// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace qk::platform::memory {
namespace {

using testing::ElementsAre;

TEST(MemoryDispatch, WithoutTasksNothingHappens) {
    Machine machine;
    EXPECT_FALSE(machine.dispatch.drain());
    EXPECT_EQ(machine.dispatch.runBackground(), 0U);
    machine.dispatch.runElsewhere(nullptr);
    machine.dispatch.advance(10);
    EXPECT_EQ(machine.clock.now().timeIntervalSince1970(), 10);
    EXPECT_EQ(machine.dispatch.mainRunLoop()->fileDescriptor(), -1);
}

TEST(MemoryDispatch, DrainingGoesOnUntilNothingIsLeft) {
    Machine machine;
    std::vector<std::string> calls;
    machine.dispatch.asyncOnMainQueue([&] {
        calls.emplace_back("first");
        machine.dispatch.asyncOnMainQueue([&] { calls.emplace_back("second"); });
    });
    EXPECT_TRUE(machine.dispatch.drain());
    EXPECT_THAT(calls, ElementsAre("first", "second"));
}

TEST(MemoryDispatch, TimersFireAtTheirOwnTimesWhileTimePasses) {
    Machine machine;
    std::vector<double> times;
    const auto note = [&] { times.push_back(machine.clock.now().timeIntervalSince1970()); };
    const auto loop = machine.dispatch.mainRunLoop();
    const auto repeating = loop->scheduleTimer(2, true, note);
    const auto once = loop->scheduleTimer(3, false, note);
    machine.dispatch.advance(1.5);
    EXPECT_THAT(times, ElementsAre());
    machine.dispatch.advance(4.5);
    EXPECT_THAT(times, ElementsAre(2, 3, 4, 6));
    EXPECT_EQ(machine.clock.now().timeIntervalSince1970(), 6);
}

TEST(MemoryDispatch, WhatATimerPostsIsCalledBeforeTimeGoesOn) {
    Machine machine;
    double posted = 0;
    const auto timer = machine.dispatch.mainRunLoop()->scheduleTimer(1, false, [&] {
        machine.dispatch.asyncOnMainQueue([&] { posted = machine.clock.now().timeIntervalSince1970(); });
    });
    machine.dispatch.advance(5);
    EXPECT_EQ(posted, 1);
}

TEST(MemoryDispatch, TimeDoesNotGoBackAndSettingTheClockMovesNoTimer) {
    Machine machine;
    bool fired = false;
    const auto timer = machine.dispatch.mainRunLoop()->scheduleTimer(10, false, [&] { fired = true; });
    machine.clock.advance(1000);
    machine.dispatch.advance(-5);
    EXPECT_FALSE(machine.dispatch.drain());
    EXPECT_FALSE(fired);
    EXPECT_EQ(machine.clock.now().timeIntervalSince1970(), 1000);
    machine.dispatch.advance(10);
    EXPECT_TRUE(fired);
}

TEST(MemoryDispatch, BackgroundTasksRunHereAsIfElsewhere) {
    Machine machine;
    std::vector<std::string> calls;
    machine.dispatch.asyncOnBackgroundQueue([&] {
        calls.emplace_back(machine.dispatch.isMainThread() ? "main" : "background");
        EXPECT_NE(machine.dispatch.currentRunLoop(), machine.dispatch.mainRunLoop());
        machine.dispatch.asyncOnBackgroundQueue([&] { calls.emplace_back("added"); });
        machine.dispatch.asyncOnMainQueue(
            [&] { calls.emplace_back(machine.dispatch.isMainThread() ? "main" : "background"); });
    });
    EXPECT_THAT(calls, ElementsAre());
    EXPECT_EQ(machine.dispatch.runBackground(), 2U);
    EXPECT_THAT(calls, ElementsAre("background", "added"));
    EXPECT_TRUE(machine.dispatch.isMainThread());
    machine.dispatch.drain();
    EXPECT_THAT(calls, ElementsAre("background", "added", "main"));
}

TEST(MemoryDispatch, ElsewhereTheMainThreadIsWaitedForOnOneThread) {
    Machine machine;
    std::vector<std::string> calls;
    machine.dispatch.asyncOnMainQueue([&] { calls.emplace_back("queued before"); });
    machine.dispatch.runElsewhere([&] {
        EXPECT_FALSE(machine.dispatch.isMainThread());
        machine.dispatch.syncOnMainQueue(
            [&] { calls.emplace_back(machine.dispatch.isMainThread() ? "main" : "elsewhere"); });
        EXPECT_FALSE(machine.dispatch.isMainThread());
        EXPECT_THROW(machine.dispatch.syncOnMainQueue([] { throw std::out_of_range("task"); }), std::out_of_range);
    });
    EXPECT_THAT(calls, ElementsAre("queued before", "main"));
    EXPECT_THROW(machine.dispatch.runElsewhere([] { throw std::out_of_range("task"); }), std::out_of_range);
    EXPECT_TRUE(machine.dispatch.isMainThread());
}

TEST(MemoryDispatch, TheMainThreadIsToldInsteadOfWaitingForItself) {
    Machine machine;
    EXPECT_THROW(machine.dispatch.syncOnMainQueue([] {}), std::logic_error);
}

TEST(MemoryDispatch, AnotherThreadCanBeTheMainOne) {
    Machine machine;
    std::thread([&] {
        EXPECT_FALSE(machine.dispatch.isMainThread());
        machine.dispatch.setMainThread();
        EXPECT_TRUE(machine.dispatch.isMainThread());
        EXPECT_EQ(machine.dispatch.currentRunLoop(), machine.dispatch.mainRunLoop());
    }).join();
    EXPECT_FALSE(machine.dispatch.isMainThread());
    machine.dispatch.setMainThread();
    EXPECT_TRUE(machine.dispatch.isMainThread());
}

TEST(MemoryDispatch, RunningLetsTimePassUntilTheNextTimer) {
    Machine machine;
    const auto loop = machine.dispatch.mainRunLoop();
    const auto timer = loop->scheduleTimer(3600, false, [&] { loop->stop(); });
    loop->run();
    EXPECT_EQ(machine.clock.now().timeIntervalSince1970(), 3600);
}

} // namespace
} // namespace qk::platform::memory
