// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/NSMetadataQuery.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/NSNotificationCenter.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace qk;
using namespace qk::platform;
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what a query posts.
class Listener final : public NSObject {
public:
    static std::shared_ptr<Listener> of(const NSMetadataQuery& query) {
        auto listener = std::make_shared<Listener>();
        NSNotificationCenter::defaultCenter().addObserver(*listener, "notice:", std::nullopt, &query);
        return listener;
    }
    ~Listener() override { NSNotificationCenter::defaultCenter().removeObserver(*this); }

    void notice(const std::shared_ptr<NSNotification>& notification) {
        static const std::string prefix = "NSMetadataQuery";
        const std::string name = notification->name().utf8Lossy();
        posted.push_back(name.substr(prefix.size(), name.size() - prefix.size() - std::string("Notification").size()));
        thread = std::this_thread::get_id();
        if (also) {
            also(posted.back());
        }
    }
    void observeValueForKeyPath(const NSString& keyPath, NSObject& /*ofObject*/, const NSDictionary& change,
                                void* /*context*/) override {
        posted.push_back(keyPath.utf8Lossy() + "=" +
                         change.objectForKey(NSKeyValueChangeNewKey)->description().utf8Lossy());
    }

    static const ClassDescription& describedClass() {
        static const ClassDescription& description =
            ClassBuilder<Listener>("Listener", NSObject::describedClass()).method("notice:", &Listener::notice).build();
        return description;
    }
    const ClassDescription& classDescription() const override { return describedClass(); }

    std::vector<std::string> posted;
    std::thread::id thread;
    std::function<void(const std::string& name)> also;
};

NSDictionary file(const NSString& path, double modified = 0) {
    return {{NSMetadataItemPathKey, path},
            {kMDItemContentTypeTree, NSArray{"public.content", "public.item"}},
            {kMDItemContentModificationDate, NSDate::dateWithTimeIntervalSince1970(modified)}};
}

class MetadataQuery : public testing::Test {
protected:
    MetadataQuery() {
        query->setPredicate(NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.content'"));
        query->setSortDescriptors({{kMDItemContentModificationDate, false}});
    }
    [[nodiscard]] std::vector<NSString> paths() const {
        std::vector<NSString> found;
        for (std::size_t index = 0; index < query->resultCount(); ++index) {
            found.push_back(*query->resultAtIndex(index)->valueForAttribute(NSMetadataItemPathKey)->as<NSString>());
        }
        return found;
    }

    memory::Machine machine;
    std::shared_ptr<NSMetadataQuery> query = NSMetadataQuery::create(*machine.services());
    std::shared_ptr<Listener> listener = Listener::of(*query);
    std::vector<std::string>& posted = listener->posted;
};

TEST_F(MetadataQuery, NewOneHasNothing) {
    EXPECT_FALSE(query->isStarted());
    EXPECT_FALSE(query->isGathering());
    EXPECT_EQ(query->resultCount(), 0U);
    EXPECT_THROW((void)query->resultAtIndex(0), NSRangeException);
    EXPECT_TRUE(NSMetadataQuery::create(*machine.services())->searchScopes().isEmpty());
    query->stopQuery();
    query->enableUpdates();
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
}

TEST_F(MetadataQuery, WithoutAPredicateItDoesNotStart) {
    query->setPredicate(nullptr);
    EXPECT_FALSE(query->startQuery());
    EXPECT_FALSE(query->isStarted());
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
}

TEST_F(MetadataQuery, GatheringIsToldFromTheRunLoopInItsOrder) {
    machine.metadataIndex.addItem(file("/a", 1));
    EXPECT_TRUE(query->startQuery());
    EXPECT_FALSE(query->startQuery());
    EXPECT_TRUE(query->isStarted());
    EXPECT_TRUE(query->isGathering());
    EXPECT_THAT(posted, IsEmpty());
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering", "GatheringProgress", "DidFinishGathering"));
    EXPECT_FALSE(query->isGathering());
    EXPECT_THAT(paths(), ElementsAre(NSString("/a")));
}

TEST_F(MetadataQuery, ChangesAreToldAsUpdates) {
    query->startQuery();
    machine.dispatch.drain();
    posted.clear();
    machine.metadataIndex.addItem(file("/a", 1));
    machine.metadataIndex.addItem(file("/b", 2));
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidUpdate"));
    EXPECT_THAT(paths(), ElementsAre(NSString("/b"), NSString("/a")));
}

TEST_F(MetadataQuery, OnlyWhatIsBelowAScopeIsFound) {
    machine.metadataIndex.addItem(file("/home/a"));
    machine.metadataIndex.addItem(file("/homestead/a"));
    machine.metadataIndex.addItem(file("/srv/a"));
    query->setSearchScopes({"/home/", NSURL::fileURLWithPath("/srv", true).value()});
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_THAT(paths(), ElementsAre(NSString("/home/a"), NSString("/srv/a")));
}

TEST_F(MetadataQuery, ScopeThatIsNoPlaceIsNotEverywhere) {
    machine.metadataIndex.addItem(file("/home/a"));
    query->setSearchScopes({17, NSURL::URLWithString("http://host/home").value()});
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_EQ(query->resultCount(), 0U);
    query->setSearchScopes({});
    machine.dispatch.drain();
    EXPECT_EQ(query->resultCount(), 1U);
}

TEST_F(MetadataQuery, StopKeepsTheResultsAndEndsTheNotifications) {
    machine.metadataIndex.addItem(file("/a"));
    query->startQuery();
    machine.dispatch.drain();
    posted.clear();
    machine.metadataIndex.addItem(file("/b"));
    query->stopQuery();
    EXPECT_FALSE(query->isStarted());
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
    EXPECT_THAT(paths(), ElementsAre(NSString("/a")));
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
}

TEST_F(MetadataQuery, StopBeforeTheRunLoopRunsTellsNothing) {
    query->startQuery();
    query->stopQuery();
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
    EXPECT_TRUE(query->startQuery());
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering", "GatheringProgress", "DidFinishGathering"));
}

TEST_F(MetadataQuery, MayBeStoppedAndStartedInsideANotification) {
    int finished = 0;
    listener->also = [&](const std::string& name) {
        if (name == "DidFinishGathering" && ++finished == 1) {
            query->stopQuery();
            query->startQuery();
        }
    };
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_EQ(finished, 2);
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 1U);
}

TEST_F(MetadataQuery, MayBeLetGoInsideANotification) {
    listener->also = [&](const std::string& /*name*/) { query.reset(); };
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering"));
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    query = NSMetadataQuery::create(*machine.services());
}

TEST_F(MetadataQuery, ResultsStayWhileUpdatesAreDisabled) {
    machine.metadataIndex.addItem(file("/a", 1));
    query->startQuery();
    machine.dispatch.drain();
    posted.clear();
    query->disableUpdates();
    query->disableUpdates();
    machine.metadataIndex.addItem(file("/b", 2));
    machine.dispatch.drain();
    machine.metadataIndex.addItem(file("/c", 3));
    machine.dispatch.drain();
    query->enableUpdates();
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
    EXPECT_THAT(paths(), ElementsAre(NSString("/a")));
    query->enableUpdates();
    EXPECT_THAT(paths(), ElementsAre(NSString("/a"))) << "they change on the run loop alone";
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidUpdate"));
    EXPECT_THAT(paths(), ElementsAre(NSString("/c"), NSString("/b"), NSString("/a")));
}

TEST_F(MetadataQuery, EnablingUpdatesElsewhereTellsThemOnTheStartingThread) {
    query->startQuery();
    machine.dispatch.drain();
    query->disableUpdates();
    machine.metadataIndex.addItem(file("/a"));
    machine.dispatch.drain();
    posted.clear();
    std::thread([&] { query->enableUpdates(); }).join();
    EXPECT_THAT(posted, IsEmpty());
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidUpdate"));
    EXPECT_EQ(listener->thread, std::this_thread::get_id());
}

TEST_F(MetadataQuery, EndOfTheGatheringWaitsForDisabledUpdates) {
    query->disableUpdates();
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering", "GatheringProgress"));
    EXPECT_TRUE(query->isGathering());
    query->enableUpdates();
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering", "GatheringProgress", "DidFinishGathering"));
}

TEST_F(MetadataQuery, SomebodyWhoReadsResultsKeepsThemThroughARestart) {
    machine.metadataIndex.addItem(file("/a"));
    query->startQuery();
    machine.dispatch.drain();
    query->disableUpdates();
    query->setSearchScopes({"/nowhere"});
    query->stopQuery();
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_THAT(paths(), ElementsAre(NSString("/a")));
    query->enableUpdates();
    machine.dispatch.drain();
    EXPECT_THAT(paths(), IsEmpty());
}

TEST_F(MetadataQuery, ChangeOfWhatIsLookedForGathersAnewOnce) {
    machine.metadataIndex.addItem(file("/a", 1));
    machine.metadataIndex.addItem(file("/b", 2));
    query->startQuery();
    machine.dispatch.drain();
    posted.clear();
    query->setSortDescriptors({{kMDItemContentModificationDate, true}});
    query->setSearchScopes({"/"});
    query->setPredicate(NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.item'"));
    EXPECT_EQ(query->resultCount(), 0U);
    EXPECT_TRUE(query->isGathering());
    EXPECT_TRUE(query->isStarted());
    machine.dispatch.drain();
    EXPECT_THAT(posted, ElementsAre("DidStartGathering", "GatheringProgress", "DidFinishGathering"));
    EXPECT_THAT(paths(), ElementsAre(NSString("/a"), NSString("/b")));
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 1U);
}

TEST_F(MetadataQuery, TakingThePredicateAwayEndsIt) {
    query->startQuery();
    machine.dispatch.drain();
    query->setPredicate(nullptr);
    machine.dispatch.drain();
    EXPECT_FALSE(query->isStarted());
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
}

TEST_F(MetadataQuery, LimitKeepsTheFirstResultsAndMayBeRaised) {
    for (int index = 0; index < 5; ++index) {
        machine.metadataIndex.addItem(file("/" + NSString::fromInteger(index), index));
    }
    query->setResultLimit(2);
    query->startQuery();
    machine.dispatch.drain();
    EXPECT_THAT(paths(), ElementsAre(NSString("/4"), NSString("/3")));
    query->setResultLimit(3);
    machine.dispatch.drain();
    EXPECT_EQ(query->resultCount(), 3U);
    query->setResultLimit(1);
    machine.dispatch.drain();
    EXPECT_EQ(query->resultCount(), 3U);
    query->setResultLimit(0);
    machine.dispatch.drain();
    EXPECT_EQ(query->resultCount(), 5U);
}

TEST_F(MetadataQuery, ThreadThatDidNotStartItMayStopIt) {
    query->startQuery();
    machine.dispatch.drain();
    std::thread([&] { query->stopQuery(); }).join();
    EXPECT_FALSE(query->isStarted());
    machine.dispatch.drain();
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
}

TEST_F(MetadataQuery, BeingStartedCanBeObserved) {
    query->addObserver(*listener, "started", NSKeyValueObservingOptions::New);
    query->startQuery();
    query->startQuery();
    query->stopQuery();
    query->stopQuery();
    EXPECT_THAT(posted, ElementsAre("started=1", "started=0"));
    query->removeObserver(*listener, "started");
}

TEST_F(MetadataQuery, LetGoWhileItRunsEndsTheSearch) {
    query->startQuery();
    query.reset();
    EXPECT_EQ(machine.metadataIndex.runningSearches(), 0U);
    machine.dispatch.drain();
    EXPECT_THAT(posted, IsEmpty());
}

TEST(MetadataQueryThreads, StartsStopsAndReadingsOfSeveralThreadsMeet) {
    memory::Machine machine;
    for (int index = 0; index < 20; ++index) {
        machine.metadataIndex.addItem(file("/" + NSString::fromInteger(index), index));
    }
    const auto query = NSMetadataQuery::create(*machine.services());
    query->setPredicate(NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.content'"));
    constexpr int kRounds = 300;
    std::thread starting([&] {
        const auto runLoop = machine.dispatch.currentRunLoop();
        for (int round = 0; round < kRounds; ++round) {
            query->startQuery();
            while (runLoop->drain()) {
            }
        }
        query->stopQuery();
        while (runLoop->drain()) {
        }
    });
    std::thread stopping([&] {
        for (int round = 0; round < kRounds; ++round) {
            query->stopQuery();
            query->setSearchScopes({"/"});
        }
    });
    std::thread reading([&] {
        for (int round = 0; round < kRounds; ++round) {
            query->disableUpdates();
            const std::size_t count = query->resultCount();
            for (std::size_t index = 0; index < count; ++index) {
                EXPECT_NE(query->resultAtIndex(index), nullptr);
            }
            query->enableUpdates();
        }
    });
    starting.join();
    stopping.join();
    reading.join();
    EXPECT_FALSE(query->isStarted());
}

} // namespace
