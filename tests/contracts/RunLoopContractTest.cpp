// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Dispatch.h"

#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace qk::tests {
namespace {

using platform::Dispatch;
using platform::RunLoop;
using platform::RunLoopSource;
using testing::ElementsAre;

class RunLoopContract : public Contract {
protected:
    const std::shared_ptr<Dispatch> dispatch_ = subject().silent().dispatch;
    const std::shared_ptr<RunLoop> loop_ = dispatch_->mainRunLoop();
    std::vector<std::string> calls_;

    /// A task that notes `name`.
    std::function<void()> note(const std::string& name) {
        return [this, name] { calls_.push_back(name); };
    }
    std::function<void()> noteAndStop(const std::string& name) {
        return [this, name] {
            calls_.push_back(name);
            loop_->stop();
        };
    }
};
INSTANTIATE_TEST_SUITE_P(Of, RunLoopContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(RunLoopContract, AnIdleLoopHasNothingToCall) {
    EXPECT_FALSE(loop_->drain());
}

TEST_P(RunLoopContract, EmptyTasksAreNothingToCall) {
    loop_->perform(nullptr);
    dispatch_->asyncOnMainQueue(nullptr);
    dispatch_->asyncOnBackgroundQueue(nullptr);
    std::thread([&] { dispatch_->syncOnMainQueue(nullptr); }).join();
    EXPECT_FALSE(loop_->drain());
}

TEST_P(RunLoopContract, TasksAreCalledOnceInTheOrderOfTheCalls) {
    loop_->perform(note("one"));
    dispatch_->asyncOnMainQueue(note("two"));
    loop_->perform(note("three"));
    EXPECT_THAT(calls_, ElementsAre());
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("one", "two", "three"));
    EXPECT_FALSE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("one", "two", "three"));
}

TEST_P(RunLoopContract, WhatATaskAddsWaitsForTheNextTime) {
    loop_->perform([this] {
        calls_.emplace_back("first");
        loop_->perform(note("second"));
    });
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("first"));
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("first", "second"));
}

TEST_P(RunLoopContract, WhatATaskHoldsIsGivenBackBehindItsCall) {
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    loop_->perform([held = std::move(held)] {});
    loop_->perform([&] { EXPECT_TRUE(watched.expired()); });
    EXPECT_TRUE(loop_->drain());
}

TEST_P(RunLoopContract, ALoopInsideATaskCallsWhatWasAddedMeanwhile) {
    loop_->perform([this] {
        loop_->perform(note("inner"));
        EXPECT_TRUE(loop_->drain());
        calls_.emplace_back("outer");
    });
    loop_->perform(note("behind"));
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("inner", "outer", "behind"));
}

TEST_P(RunLoopContract, StoppedBeforeItRunsALoopCallsNothing) {
    loop_->perform(note("task"));
    loop_->stop();
    loop_->run();
    EXPECT_THAT(calls_, ElementsAre());
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("task"));
}

TEST_P(RunLoopContract, StoppedInACallALoopMakesTheOthersThatItBegan) {
    loop_->perform([this] {
        calls_.emplace_back("stop");
        loop_->stop();
        loop_->perform(note("later"));
    });
    loop_->perform(note("behind"));
    loop_->run();
    EXPECT_THAT(calls_, ElementsAre("stop", "behind"));
}

TEST_P(RunLoopContract, AnotherThreadWakesAndStopsALoop) {
    std::thread other([this] {
        loop_->perform(note("from another thread"));
        loop_->stop();
    });
    loop_->run();
    other.join();
    loop_->drain(); // the loop may have seen the stop first
    EXPECT_THAT(calls_, ElementsAre("from another thread"));
}

TEST_P(RunLoopContract, TimersFireInTheOrderOfTheirTimes) {
    const auto third = loop_->scheduleTimer(0.003, false, noteAndStop("third"));
    const auto first = loop_->scheduleTimer(0.001, false, note("first"));
    const auto second = loop_->scheduleTimer(0.002, false, note("second"));
    loop_->run();
    EXPECT_THAT(calls_, ElementsAre("first", "second", "third"));
    EXPECT_FALSE(loop_->drain());
}

TEST_P(RunLoopContract, TimersWithoutDelayAreDueAtOnceBehindTheTasks) {
    const auto now = loop_->scheduleTimer(0, false, note("now"));
    const auto before = loop_->scheduleTimer(-5, false, note("before"));
    loop_->perform(note("task"));
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("task", "now", "before"));
}

TEST_P(RunLoopContract, AnEmptyTimerIsHarmless) {
    const auto timer = loop_->scheduleTimer(0, false, nullptr);
    loop_->drain();
}

TEST_P(RunLoopContract, FarTimersAreNotDue) {
    const auto far = loop_->scheduleTimer(1e300, false, note("far"));
    const auto farther = loop_->scheduleTimer(1e300, true, note("farther"));
    EXPECT_FALSE(loop_->drain());
}

TEST_P(RunLoopContract, ATimerRepeatsUntilItsSourceGoesInsideItself) {
    std::unique_ptr<RunLoopSource> timer;
    timer = loop_->scheduleTimer(0.0005, true, [&] {
        calls_.emplace_back("tick");
        if (calls_.size() == 3) {
            timer.reset();
            loop_->stop();
        }
    });
    loop_->run();
    EXPECT_THAT(calls_, ElementsAre("tick", "tick", "tick"));
    EXPECT_EQ(timer, nullptr);
}

TEST_P(RunLoopContract, AnIntervalOfNothingRepeatsAllTheSame) {
    std::unique_ptr<RunLoopSource> timer;
    timer = loop_->scheduleTimer(0, true, [&] {
        calls_.emplace_back("tick");
        if (calls_.size() == 2) {
            loop_->stop();
        }
    });
    loop_->run();
    EXPECT_THAT(calls_, ElementsAre("tick", "tick"));
}

TEST_P(RunLoopContract, ATaskTakesAwayATimerThatIsDueTogether) {
    std::unique_ptr<RunLoopSource> victim = loop_->scheduleTimer(0, false, note("victim"));
    loop_->perform([&] { victim.reset(); });
    EXPECT_TRUE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre());
}

TEST_P(RunLoopContract, TimersTakeEachOtherAway) {
    std::unique_ptr<RunLoopSource> second;
    const auto first = loop_->scheduleTimer(0, false, [&] {
        calls_.emplace_back("first");
        second.reset();
    });
    second = loop_->scheduleTimer(0, false, note("second"));
    loop_->drain();
    EXPECT_FALSE(loop_->drain());
    EXPECT_THAT(calls_, ElementsAre("first"));
}

TEST_P(RunLoopContract, WhatATimerAddsWaitsForTheNextTime) {
    std::unique_ptr<RunLoopSource> added;
    const auto timer = loop_->scheduleTimer(0, false, [&] {
        calls_.emplace_back("first");
        added = loop_->scheduleTimer(0, false, note("second"));
    });
    loop_->drain();
    EXPECT_THAT(calls_, ElementsAre("first"));
    loop_->drain();
    EXPECT_THAT(calls_, ElementsAre("first", "second"));
}

TEST_P(RunLoopContract, WhatATimerHoldsIsGivenBackBehindItsOnlyCall) {
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    const auto timer = loop_->scheduleTimer(0, false, [held = std::move(held)] {});
    EXPECT_TRUE(loop_->drain());
    EXPECT_TRUE(watched.expired());
}

TEST_P(RunLoopContract, ATimerIsNotCalledInsideItsOwnCall) {
    int depth = 0;
    const auto timer = loop_->scheduleTimer(0.0001, true, [&] {
        ++depth;
        EXPECT_EQ(depth, 1);
        const auto inner = loop_->scheduleTimer(0.0005, false, [this] { loop_->stop(); });
        loop_->run();
        --depth;
        loop_->stop();
    });
    loop_->run();
}

TEST_P(RunLoopContract, ASourceOutlivesItsLoop) {
    std::unique_ptr<RunLoopSource> timer;
    std::thread([&] { timer = dispatch_->currentRunLoop()->scheduleTimer(0, true, note("never")); }).join();
    timer.reset();
    EXPECT_THAT(calls_, ElementsAre());
}

TEST_P(RunLoopContract, AThreadHasOneLoopOfItsOwn) {
    EXPECT_TRUE(dispatch_->isMainThread());
    EXPECT_EQ(dispatch_->currentRunLoop(), loop_);
    EXPECT_EQ(dispatch_->mainRunLoop(), loop_);
    std::thread([&] {
        EXPECT_FALSE(dispatch_->isMainThread());
        const auto own = dispatch_->currentRunLoop();
        EXPECT_NE(own, loop_);
        EXPECT_EQ(dispatch_->currentRunLoop(), own);
        EXPECT_EQ(dispatch_->mainRunLoop(), loop_);
        bool called = false;
        own->perform([&] {
            called = true;
            own->stop();
        });
        own->run();
        EXPECT_TRUE(called);
    }).join();
}

TEST_P(RunLoopContract, ASynchronousTaskHasRunOnTheMainThreadWhenTheCallReturns) {
    std::thread other([&] {
        bool wasMain = false;
        dispatch_->syncOnMainQueue([&] { wasMain = dispatch_->isMainThread(); });
        EXPECT_TRUE(wasMain);
        loop_->stop();
    });
    loop_->run();
    other.join();
}

TEST_P(RunLoopContract, WhatASynchronousTaskThrowsReachesItsCaller) {
    std::thread other([&] {
        EXPECT_THROW(dispatch_->syncOnMainQueue([] { throw std::out_of_range("from the task"); }), std::out_of_range);
        loop_->stop();
    });
    loop_->run();
    other.join();
}

} // namespace
} // namespace qk::tests
