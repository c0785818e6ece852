// SPDX-License-Identifier: Apache-2.0
#include "tests/recent_items/RecentItemsFixture.h"

#include <atomic>
#include <thread>

namespace {

using namespace qk;
using namespace qk::platform;

constexpr int kRounds = 50;

class RecentItemsThreads : public qk::tests::RecentItemsFixture {};

TEST_F(RecentItemsThreads, QueryIsStartedAndStoppedByAnyThread) {
    for (int index = 0; index < 10; ++index) {
        addFile("/home/anna/Documents/" + NSString::fromInteger(index), index);
    }
    std::atomic<std::size_t> delivered = 0;
    const auto query = MetadataItemQuery::initWithSearchScopes(
        machine.services(), {}, NSPredicate::predicateWithFormat("TRUEPREDICATE"), {}, 5);
    query->setCallback([&](const std::shared_ptr<MetadataItemSet>& items) { delivered += items->count(); });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 2; ++thread) {
        threads.emplace_back([&] {
            const auto runLoop = machine.dispatch.currentRunLoop();
            for (int round = 0; round < kRounds; ++round) {
                query->start();
                while (runLoop->drain()) {
                }
                query->stop();
            }
        });
    }
    std::thread background([&] {
        for (int round = 0; round < kRounds; ++round) {
            machine.dispatch.runBackground();
            (void)query->maximalNumberOfResultItems();
            query->setMaximalNumberOfResultItems(static_cast<std::uint64_t>(round % 5));
        }
    });
    for (std::thread& thread : threads) {
        thread.join();
    }
    background.join();
    EXPECT_FALSE(query->isStarted());
    query->setMaximalNumberOfResultItems(5);
    query->start();
    settle();
    EXPECT_GE(delivered, 5U);
    query->stop();
}

TEST_F(RecentItemsThreads, EventsComeWhileStreamsGo) {
    std::atomic<bool> isDone = false;
    std::thread elsewhere([&] {
        while (!isDone) {
            machine.fsEvents.emit("/home/anna/x", platform::kFSEventStreamEventFlagItemCreated);
        }
    });
    for (int round = 0; round < 10 * kRounds; ++round) {
        const auto stream = machine.fsEvents.streamCreate([](auto...) {}, {}, {"/home"}, 0, 0, 0);
        stream->scheduleWithRunLoop(machine.dispatch.currentRunLoop());
        EXPECT_TRUE(stream->start());
        stream->release(); // not stopped before
        machine.dispatch.drain();
    }
    isDone = true;
    elsewhere.join();
    EXPECT_TRUE(machine.fsEvents.streams().empty());
}

TEST_F(RecentItemsThreads, ListIsReadWhileDeliveriesChangeIt) {
    const auto observer = makeObserver();
    std::vector<std::shared_ptr<NSMetadataItem>> items;
    for (int index = 0; index < 30; ++index) {
        const NSString path = "/home/anna/Documents/" + NSString::fromInteger(index);
        addFile(path, index);
        items.push_back(metadataItem(path));
    }
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < 2; ++thread) {
        threads.emplace_back([&, thread] {
            for (std::size_t round = 0; round < kRounds; ++round) {
                const std::size_t count = (round * 7 + thread * 11) % items.size();
                observer->updateResultsWithMetadataItems(std::span(items).first(count));
            }
        });
    }
    threads.emplace_back([&] {
        for (int round = 0; round < kRounds; ++round) {
            EXPECT_LE(observer->latestRecentItems().size(), 20U);
            (void)observer->recentItemForDisplayName("3");
            (void)observer->callback();
        }
    });
    for (int round = 0; round < kRounds; ++round) {
        machine.dispatch.drain();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    settle();
    EXPECT_EQ(deliveries.size(), 2U * kRounds);
}

TEST_F(RecentItemsThreads, QueryIsReplacedWhileAnEarlierOneDelivers) {
    const auto observer = makeObserver();
    observer->startObserving();
    std::atomic<bool> isDone = false;
    std::thread background([&] {
        while (!isDone) {
            machine.dispatch.runBackground();
        }
    });
    for (int round = 0; round < kRounds; ++round) {
        addFile("/home/anna/Documents/" + NSString::fromInteger(round % 7), round);
        makeFolder("/home/anna/Folder" + NSString::fromInteger(round % 5));
    }
    isDone = true;
    background.join();
    settle();
    EXPECT_EQ(observer->recentItems().size(), 7U);
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 1U);
}

} // namespace
