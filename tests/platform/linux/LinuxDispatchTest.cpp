// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDispatch.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

/// What happens between threads. Meant for ThreadSanitizer, too.
namespace qk::platform {
namespace {

using namespace std::chrono_literals;

TEST(LinuxDispatch, ManyThreadsPostAndTheOrderOfEachIsKept) {
    constexpr int kThreads = 4;
    constexpr int kTasks = 5000;
    LinuxDispatch dispatch;
    const auto loop = dispatch.mainLoop();
    std::vector<int> next(kThreads, 0);
    int total = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int task = 0; task < kTasks; ++task) {
                dispatch.asyncOnMainQueue([&, thread, task] {
                    EXPECT_EQ(next[static_cast<std::size_t>(thread)]++, task);
                    if (++total == kThreads * kTasks) {
                        loop->stop();
                    }
                });
            }
        });
    }
    loop->run();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(total, kThreads * kTasks);
}

TEST(LinuxDispatch, ManyThreadsWaitForTheMainThread) {
    constexpr int kThreads = 4;
    constexpr int kCalls = 500;
    LinuxDispatch dispatch;
    const auto loop = dispatch.mainLoop();
    int inside = 0;
    int ended = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            for (int call = 0; call < kCalls; ++call) {
                dispatch.syncOnMainQueue([&] {
                    EXPECT_TRUE(dispatch.isMainThread());
                    ++inside;
                });
            }
            dispatch.asyncOnMainQueue([&] {
                if (++ended == kThreads) {
                    loop->stop();
                }
            });
        });
    }
    loop->run();
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(inside, kThreads * kCalls);
}

TEST(LinuxDispatch, SourcesAreTakenAwayFromOtherThreads) {
    LinuxDispatch dispatch;
    const auto loop = dispatch.mainLoop();
    std::atomic<int> ticks = 0;
    std::vector<std::unique_ptr<RunLoopSource>> timers(100);
    for (auto& timer : timers) {
        timer = loop->scheduleTimer(0, true, [&ticks] { ++ticks; });
    }
    std::thread other([&] {
        for (auto& timer : timers) {
            timer.reset();
        }
        loop->stop();
    });
    loop->run();
    other.join();
    loop->drain();
    const int before = ticks;
    EXPECT_FALSE(loop->drain());
    EXPECT_EQ(ticks, before);
}

TEST(LinuxDispatch, TheLoopOfAThreadGoesWithIt) {
    LinuxDispatch dispatch;
    std::weak_ptr<LinuxRunLoop> loop;
    std::thread([&] { loop = dispatch.currentLoop(); }).join();
    EXPECT_TRUE(loop.expired());
}

TEST(LinuxDispatch, AChildMadeByForkHasItsOwnMainThread) {
    LinuxDispatch dispatch;
    EXPECT_TRUE(dispatch.isMainThread());
    std::thread([&] {
        EXPECT_FALSE(dispatch.isMainThread());
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(dispatch.isMainThread() ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
        EXPECT_FALSE(dispatch.isMainThread());
    }).join();
}

TEST(BackgroundQueue, WithoutTasksThereAreNoThreads) {
    BackgroundQueue queue({2, 1h});
    EXPECT_EQ(queue.threadCount(), 0U);
    queue.submit(nullptr);
    EXPECT_EQ(queue.threadCount(), 0U);
}

TEST(BackgroundQueue, TasksRunOnOtherThreadsOfLowPriorityWithoutSignals) {
    BackgroundQueue queue({1, 1h});
    std::latch done(1);
    const int ordinary = ::getpriority(PRIO_PROCESS, 0);
    queue.submit([&, submitter = std::this_thread::get_id()] {
        EXPECT_NE(std::this_thread::get_id(), submitter);
        EXPECT_EQ(::sched_getscheduler(0), SCHED_BATCH);
        EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), std::min(ordinary + 10, 19));
        sigset_t mask;
        ::pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        EXPECT_EQ(::sigismember(&mask, SIGTERM), 1);
        done.count_down();
    });
    done.wait();
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), ordinary);
    sigset_t mask;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    EXPECT_EQ(::sigismember(&mask, SIGTERM), 0);
}

TEST(BackgroundQueue, TasksRunTogetherUpToTheLimit) {
    std::latch together(3); // before the queue, which waits for its tasks when it goes
    std::atomic<int> more = 0;
    BackgroundQueue queue({3, 1h});
    for (int task = 0; task < 3; ++task) {
        queue.submit([&] { together.arrive_and_wait(); });
    }
    for (int task = 0; task < 100; ++task) {
        queue.submit([&] { ++more; });
    }
    together.wait();
    EXPECT_LE(queue.threadCount(), 3U);
    while (more < 100) {
        std::this_thread::yield();
    }
    EXPECT_EQ(queue.threadCount(), 3U);
}

TEST(BackgroundQueue, OneThreadKeepsTheOrder) {
    std::vector<int> order;
    {
        BackgroundQueue queue({1, 1h});
        for (int task = 0; task < 1000; ++task) {
            queue.submit([&order, task] { order.push_back(task); });
        }
    }
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(BackgroundQueue, ManyThreadsSubmit) {
    std::atomic<int> count = 0;
    {
        BackgroundQueue queue({4, 1h});
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&] {
                for (int task = 0; task < 1000; ++task) {
                    queue.submit([&count] { ++count; });
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    EXPECT_EQ(count, 4000);
}

TEST(BackgroundQueue, ThreadsWithoutWorkEndAndComeAgain) {
    BackgroundQueue queue({2, 0ms});
    for (int round = 0; round < 3; ++round) {
        std::latch done(1);
        queue.submit([&] { done.count_down(); });
        done.wait();
        while (queue.threadCount() > 0) {
            std::this_thread::yield();
        }
    }
}

TEST(BackgroundQueue, TasksMaySubmitTasks) {
    std::atomic<int> count = 0;
    {
        BackgroundQueue queue({1, 1h});
        queue.submit([&] {
            ++count;
            queue.submit([&] { ++count; });
        });
        while (count < 2) {
            std::this_thread::yield();
        }
    }
    EXPECT_EQ(count, 2);
}

TEST(BackgroundQueue, AChildMadeByForkStartsWithAnEmptyQueueOfItsOwn) {
#if defined(QK_SANITIZE_THREAD)
    GTEST_SKIP() << "ThreadSanitizer does not follow threads that a forked child starts";
#endif
    std::latch isHeld(1); // before the queue, which waits for its tasks when it goes
    std::latch release(1);
    BackgroundQueue queue({1, 1h});
    queue.submit([&] {
        isHeld.count_down();
        release.wait();
    });
    isHeld.wait();
    queue.submit([] {}); // waits in the parent alone
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(60);
        const bool isEmpty = queue.threadCount() == 0;
        std::latch done(1);
        queue.submit([&] { done.count_down(); });
        done.wait();
        ::_exit(isEmpty ? 0 : 1);
    }
    release.count_down();
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(BackgroundQueueDeathTest, AProcessEndsWhileTasksRunAndWait) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::atomic<int> begun = 0;
            auto* const never = new std::latch(1);
            for (int task = 0; task < 10; ++task) {
                BackgroundQueue::shared().submit([&begun, never] {
                    ++begun;
                    never->wait();
                });
            }
            while (begun == 0) {
                std::this_thread::yield();
            }
            ::exit(3);
        },
        testing::ExitedWithCode(3), "");
}

TEST(BackgroundQueueDeathTest, WhatATaskThrowsEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            BackgroundQueue queue({1, 1h});
            queue.submit([] { throw 1; });
        },
        "");
}

} // namespace
} // namespace qk::platform
