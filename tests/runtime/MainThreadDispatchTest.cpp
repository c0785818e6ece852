// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/MainThreadDispatch.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/runtime/internal/MainThread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace qk {
namespace {

using platform::memory::Machine;
using platform::memory::ScopedMachine;
using testing::ElementsAre;

TEST(MainThreadDispatch, AMissingTaskIsNothingToRun) {
    const Machine machine;
    const ScopedMachine installed(machine);
    const auto callAll = [] {
        dispatch_sync_mainthread(nullptr);
        dispatch_async_mainthread(nullptr);
        dispatch_sync_mainthread_f(nullptr, nullptr);
        dispatch_async_mainthread_f(nullptr, nullptr);
    };
    callAll();
    machine.dispatch.runElsewhere(callAll);
    EXPECT_FALSE(machine.dispatch.drain());
}

TEST(MainThreadDispatch, OnTheMainThreadATaskHasRunWhenTheCallReturns) {
    const Machine machine;
    const ScopedMachine installed(machine);
    int calls = 0;
    dispatch_sync_mainthread([&] { ++calls; });
    EXPECT_EQ(calls, 1);
    dispatch_async_mainthread([&] { ++calls; });
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(machine.dispatch.drain());
}

TEST(MainThreadDispatch, OnTheMainThreadATaskRunsBeforeWhatWasQueuedEarlier) {
    const Machine machine;
    const ScopedMachine installed(machine);
    std::vector<std::string> calls;
    machine.dispatch.asyncOnMainQueue([&] { calls.emplace_back("queued"); });
    dispatch_async_mainthread([&] { calls.emplace_back("asynchronous"); });
    dispatch_sync_mainthread([&] { calls.emplace_back("synchronous"); });
    machine.dispatch.drain();
    EXPECT_THAT(calls, ElementsAre("asynchronous", "synchronous", "queued"));
}

TEST(MainThreadDispatch, ElsewhereAnAsynchronousTaskIsQueued) {
    const Machine machine;
    const ScopedMachine installed(machine);
    std::vector<std::string> calls;
    machine.dispatch.runElsewhere([&] {
        dispatch_async_mainthread([&] { calls.emplace_back(machine.dispatch.isMainThread() ? "main" : "elsewhere"); });
        calls.emplace_back("returned");
    });
    EXPECT_THAT(calls, ElementsAre("returned"));
    EXPECT_TRUE(machine.dispatch.drain());
    EXPECT_THAT(calls, ElementsAre("returned", "main"));
}

TEST(MainThreadDispatch, ElsewhereASynchronousTaskIsWaitedForBehindWhatWasQueuedEarlier) {
    const Machine machine;
    const ScopedMachine installed(machine);
    std::vector<std::string> calls;
    machine.dispatch.runElsewhere([&] {
        dispatch_async_mainthread([&] { calls.emplace_back("queued"); });
        dispatch_sync_mainthread([&] { calls.emplace_back(machine.dispatch.isMainThread() ? "main" : "elsewhere"); });
        calls.emplace_back("returned");
    });
    EXPECT_THAT(calls, ElementsAre("queued", "main", "returned"));
}

TEST(MainThreadDispatch, WhatATaskThrowsReachesACallerThatWaits) {
    const Machine machine;
    const ScopedMachine installed(machine);
    const auto fail = [] { throw std::out_of_range("task"); };
    EXPECT_THROW(dispatch_sync_mainthread(fail), std::out_of_range);
    EXPECT_THROW(dispatch_async_mainthread(fail), std::out_of_range);
    machine.dispatch.runElsewhere([&] { EXPECT_THROW(dispatch_sync_mainthread(fail), std::out_of_range); });
}

TEST(MainThreadDispatch, CallersInCPassAContext) {
    const Machine machine;
    const ScopedMachine installed(machine);
    int calls = 0;
    const auto count = [](void* context) { ++*static_cast<int*>(context); };
    dispatch_sync_mainthread_f(&calls, count);
    dispatch_async_mainthread_f(&calls, count);
    EXPECT_EQ(calls, 2);
    machine.dispatch.runElsewhere([&] {
        dispatch_sync_mainthread_f(&calls, count);
        EXPECT_EQ(calls, 3);
        dispatch_async_mainthread_f(&calls, count);
        EXPECT_EQ(calls, 3);
    });
    machine.dispatch.drain();
    EXPECT_EQ(calls, 4);
}

TEST(MainThreadDispatch, ARealOtherThreadWaitsForTheMainThread) {
    const Machine machine;
    const ScopedMachine installed(machine);
    const auto loop = machine.dispatch.mainRunLoop();
    const std::thread::id main = std::this_thread::get_id();
    std::thread other([&] {
        std::thread::id ran;
        dispatch_sync_mainthread([&] { ran = std::this_thread::get_id(); });
        EXPECT_EQ(ran, main);
        dispatch_async_mainthread([&] {
            EXPECT_EQ(std::this_thread::get_id(), main);
            loop->stop();
        });
    });
    loop->run();
    other.join();
}

} // namespace
} // namespace qk
