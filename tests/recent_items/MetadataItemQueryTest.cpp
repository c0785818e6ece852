// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/MetadataItemQuery.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace qk;
using namespace qk::platform;
using testing::ElementsAre;
using testing::IsEmpty;

NSDictionary item(int number) {
    return {{NSMetadataItemPathKey, "/home/" + NSString::fromInteger(number)}, {"number", number}};
}

class MetadataItems : public testing::Test {
protected:
    std::shared_ptr<MetadataItemQuery> queryOf(std::uint64_t most) {
        auto query = MetadataItemQuery::metadataItemQueryWithSearchScopes(
            {"/home"}, NSPredicate::predicateWithFormat("number >= 0"), {{"number", false}}, most);
        query->setCallback([this](const std::shared_ptr<MetadataItemSet>& items) {
            deliveries.push_back(numbersOf(*items));
            delivered = items;
            wasOnMainThread = machine.dispatch.isMainThread();
        });
        return query;
    }
    static std::vector<std::int64_t> numbersOf(const MetadataItemSet& items) {
        std::vector<std::int64_t> numbers;
        for (const auto& each : items.allObjects()) {
            numbers.push_back(each->valueForAttribute("number")->as<NSNumber>()->integerValue());
        }
        return numbers;
    }
    void addItems(int count) {
        for (int number = 0; number < count; ++number) {
            machine.metadataIndex.addItem(item(number));
        }
    }
    void settle() {
        do {
            machine.dispatch.drain();
        } while (machine.dispatch.runBackground() > 0);
    }

    memory::Machine machine;
    memory::ScopedMachine installed{machine};
    std::vector<std::vector<std::int64_t>> deliveries;
    std::shared_ptr<MetadataItemSet> delivered;
    bool wasOnMainThread = true;
};

TEST_F(MetadataItems, NewQueryIsStoppedAndEmpty) {
    const auto query = queryOf(40);
    EXPECT_FALSE(query->isStarted());
    EXPECT_TRUE(query->resultItems()->isEmpty());
    query->stop();
    settle();
    EXPECT_THAT(deliveries, IsEmpty());
    EXPECT_EQ(query->metadataQuery()->searchScopes(), NSArray{"/home"});
    EXPECT_EQ(query->metadataQuery()->sortDescriptors().size(), 1U);
    EXPECT_NE(query->metadataQuery()->predicate(), nullptr);
}

TEST_F(MetadataItems, NoResultsAreDeliveredToo) {
    const auto query = queryOf(40);
    query->start();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty()));
}

TEST_F(MetadataItems, OfMoreResultsThanTheCapTheFirstAreDelivered) {
    addItems(100);
    const auto query = queryOf(40);
    query->start();
    settle();
    ASSERT_EQ(deliveries.size(), 1U);
    ASSERT_EQ(deliveries[0].size(), 40U);
    EXPECT_EQ(deliveries[0].front(), 99);
    EXPECT_EQ(deliveries[0].back(), 60);
    EXPECT_FALSE(wasOnMainThread);
}

TEST_F(MetadataItems, OfFewerResultsThanTheCapAllAreDelivered) {
    addItems(3);
    const auto query = queryOf(40);
    query->start();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(2, 1, 0)));
}

TEST_F(MetadataItems, CapOfNothingDeliversNothingAndSaysSo) {
    addItems(3);
    const auto query = queryOf(0);
    query->start();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty()));
}

TEST_F(MetadataItems, CapIsKeptUnderOneNameAlone) {
    for (const std::uint64_t most : {0U, 1U, 40U}) {
        const auto query = queryOf(most);
        EXPECT_EQ(query->maximalNumberOfResults(), 0U);
        EXPECT_EQ(query->valueForKey("maximalNumberOfResults"), Value(std::uint64_t{0}));
        EXPECT_EQ(query->maximalNumberOfResultItems(), most);
    }
}

TEST_F(MetadataItems, CapMayBeRaisedWhileTheQueryRuns) {
    addItems(5);
    const auto query = queryOf(2);
    query->start();
    settle();
    query->setMaximalNumberOfResultItems(4);
    settle();
    query->setMaximalNumberOfResultItems(1);
    machine.metadataIndex.addItem(item(9));
    settle();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(4, 3), ElementsAre(4, 3, 2, 1), ElementsAre(9)));
}

TEST_F(MetadataItems, EveryUpdateIsDelivered) {
    const auto query = queryOf(2);
    query->start();
    settle();
    addItems(2);
    settle();
    machine.metadataIndex.removeItem("/home/0");
    settle();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty(), ElementsAre(1, 0), ElementsAre(1)));
}

TEST_F(MetadataItems, StartingTwiceRegistersOnce) {
    const auto query = queryOf(2);
    query->start();
    query->start();
    settle();
    EXPECT_EQ(deliveries.size(), 1U);
    query->stop();
    query->stop();
    EXPECT_FALSE(query->isStarted());
    query->start();
    settle();
    EXPECT_EQ(deliveries.size(), 2U);
}

TEST_F(MetadataItems, SetIsTheLiveOneAndIsEmptiedByTheNextDelivery) {
    addItems(2);
    const auto query = queryOf(40);
    query->start();
    settle();
    const auto first = delivered;
    EXPECT_EQ(first, query->resultItems());
    const std::shared_ptr<NSMetadataItem> kept = first->allObjects().at(0);
    machine.metadataIndex.removeItem("/home/1");
    settle();
    EXPECT_EQ(delivered, first);
    EXPECT_EQ(first->count(), 1U);
    EXPECT_FALSE(first->containsObject(kept));
}

TEST_F(MetadataItems, UpdatesWaitUntilTheResultsHaveBeenRead) {
    addItems(1);
    const auto query = queryOf(40);
    query->start();
    machine.dispatch.drain();
    machine.metadataIndex.addItem(item(5));
    machine.dispatch.drain();
    EXPECT_EQ(query->metadataQuery()->resultCount(), 1U);
    EXPECT_EQ(machine.dispatch.runBackground(), 1U);
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(0)));
    settle();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(0), ElementsAre(5, 0)));
}

TEST_F(MetadataItems, WhatWasToldBeforeTheStopIsDelivered) {
    addItems(1);
    const auto query = queryOf(40);
    query->start();
    machine.dispatch.drain();
    query->stop();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(0)));
    machine.metadataIndex.addItem(item(5));
    settle();
    EXPECT_EQ(deliveries.size(), 1U);
}

TEST_F(MetadataItems, TaskInTheBackgroundHoldsTheQuery) {
    addItems(1);
    auto query = queryOf(40);
    const std::weak_ptr<MetadataItemQuery> weak = query;
    query->start();
    machine.dispatch.drain();
    query.reset();
    EXPECT_FALSE(weak.expired());
    settle();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(deliveries.size(), 1U);
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
}

TEST_F(MetadataItems, EndStopsAndEmptiesTheItems) {
    addItems(1);
    auto query = queryOf(40);
    query->start();
    settle();
    query.reset();
    EXPECT_TRUE(delivered->isEmpty());
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    machine.metadataIndex.addItem(item(5));
    settle();
    EXPECT_EQ(deliveries.size(), 1U);
}

TEST_F(MetadataItems, NotificationWithoutAnObjectIsIgnored) {
    const auto query = queryOf(40);
    query->didFinishGatheringNotification(NSNotification::initWithName("n", nullptr));
    query->didUpdateNotification(NSNotification::initWithName("n", query));
    query->didUpdateNotification(nullptr);
    settle();
    EXPECT_THAT(deliveries, IsEmpty());
    query->didUpdateNotification(NSNotification::initWithName("n", query->metadataQuery()));
    settle();
    EXPECT_EQ(deliveries.size(), 1U);
}

TEST_F(MetadataItems, WithoutACallbackTheItemsAreTakenAllTheSame) {
    addItems(2);
    const auto query = queryOf(40);
    query->setCallback({});
    query->start();
    settle();
    EXPECT_EQ(query->resultItems()->count(), 2U);
}

TEST_F(MetadataItems, StartedFollowsAPathThatNobodyHas) {
    EXPECT_THAT(MetadataItemQuery::keyPathsForValuesAffectingStarted(), ElementsAre(NSString("self.query.isStarted")));
    const auto query = queryOf(1);
    EXPECT_EQ(query->valueForKey("started"), Value(false));
    query->start();
    EXPECT_EQ(query->valueForKey("started"), Value(true));
}

TEST_F(MetadataItems, WithoutAPlatformQueryNothingStarts) {
    const auto query = queryOf(1);
    query->setMetadataQuery(nullptr);
    query->start();
    query->stop();
    query->processQuery(nullptr);
    query->handleQueryUpdates(nullptr);
    EXPECT_FALSE(query->isStarted());
}

TEST(MetadataItemSet, HasEachItemOnceInOrder) {
    const auto set = MetadataItemSet::set();
    const auto first = NSMetadataItem::initWithAttributes({{"a", 1}});
    const auto second = NSMetadataItem::initWithAttributes({{"a", 1}});
    for (const auto& each : {second, first, second, std::shared_ptr<NSMetadataItem>()}) {
        set->addObject(each);
    }
    EXPECT_THAT(set->allObjects(), ElementsAre(second, first));
    EXPECT_TRUE(set->containsObject(first));
    EXPECT_FALSE(set->containsObject(nullptr));
    set->removeAllObjects();
    EXPECT_TRUE(set->isEmpty());
    set->addObject(first);
    EXPECT_EQ(set->count(), 1U);
}

} // namespace
