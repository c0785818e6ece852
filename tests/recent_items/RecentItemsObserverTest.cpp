// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/platform/values/Printing.h"
#include "tests/recent_items/RecentItemsFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace qk;
using namespace qk::platform;
using qk::tests::at;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class RecentItemsObservation : public qk::tests::RecentItemsFixture {};

TEST_F(RecentItemsObservation, NewObserverWatchesTheHomeFolderAndDoesNotSearch) {
    const auto observer = makeObserver();
    EXPECT_EQ(observer->userHomePath(), "/home/anna");
    EXPECT_THAT(observer->recentItems(), IsEmpty());
    ASSERT_NE(observer->metadataQuery(), nullptr);
    EXPECT_FALSE(observer->metadataQuery()->isStarted());
    ASSERT_EQ(machine.fsEvents.streams().size(), 1U);
    EXPECT_EQ(machine.fsEvents.streams()[0].pathsToWatch, NSArray{"/home/anna"});
    const auto& watcher = *observer->userHomeObserver();
    EXPECT_EQ(watcher.itemType(), FileSystemObserverItemTypeDirectory);
    EXPECT_EQ(watcher.changeOptions(), FileSystemObserverChangeCreated);
    EXPECT_FALSE(watcher.shouldTimeout());
    EXPECT_EQ(watcher.filesToLookFor(), NSArray());
    settle();
    EXPECT_THAT(deliveries, IsEmpty());
}

TEST_F(RecentItemsObservation, QueryIsOfTheGivenTypesOrderAndNumber) {
    const auto query = makeObserver()->metadataQuery();
    EXPECT_EQ(query->maximalNumberOfResultItems(), 40U);
    EXPECT_EQ(query->metadataQuery()->searchScopes(), NSArray{"/home/anna/Documents"});
    const auto order = query->metadataQuery()->sortDescriptors();
    ASSERT_EQ(order.size(), 2U);
    EXPECT_EQ(order[0].key(), "kMDItemContentModificationDate");
    EXPECT_EQ(order[1].key(), "kMDItemLastUsedDate");
    EXPECT_FALSE(order[0].ascending() || order[1].ascending());
    const auto predicate = query->metadataQuery()->predicate();
    for (const char* type : {"public.content", "public.composite-content", "public.archive", "public.folder"}) {
        EXPECT_TRUE(predicate->evaluateWithLookup([&](const NSString& /*key*/) {
            return NSArray{"x", text(type)};
        })) << type;
    }
    EXPECT_FALSE(predicate->evaluateWithLookup([](const NSString& /*key*/) { return NSArray{"public.data"}; }));
    EXPECT_FALSE(predicate->evaluateWithLookup([](const NSString& /*key*/) { return std::nullopt; }));
}

TEST_F(RecentItemsObservation, PredicateWithoutTypesIsThatOfAllItems) {
    const auto predicate = makeObserver()->createPredicateWithUTIs({});
    EXPECT_THAT(predicate->keyPaths(), ElementsAre(NSString("kMDItemContentTypeTree")));
    EXPECT_TRUE(predicate->evaluateWithLookup([](const NSString& /*key*/) { return NSArray{"public.item"}; }));
    EXPECT_FALSE(predicate->evaluateWithLookup([](const NSString& /*key*/) { return NSArray{"public.content"}; }));
}

TEST_F(RecentItemsObservation, ScopesAreTheVisibleReadableFoldersButLibrary) {
    auto& files = machine.fileManager;
    for (const char* folder : {".config", "library", "Pictures", "closed", "Hidden", "Mail.app", "Music/Library"}) {
        files.addDirectory("/home/anna/" + text(folder));
    }
    files.denyReading("/home/anna/closed");
    files.setResourceValue("/home/anna/Hidden", NSURLIsHiddenKey, Value(true));
    files.setResourceValue("/home/anna/Mail.app", NSURLIsPackageKey, Value(true));
    files.addFile("/home/anna/letter.txt");
    files.addSymbolicLink("/home/anna/link", "Documents");
    EXPECT_EQ(makeObserver()->createSearchPaths(),
              (NSArray{"/home/anna/Documents", "/home/anna/Mail.app", "/home/anna/Music", "/home/anna/Pictures",
                       "/home/anna/library"}));
}

TEST_F(RecentItemsObservation, HomeFolderBehindALinkIsTheRealOne) {
    machine.fileManager.addDirectory("/data/people/bob/Documents");
    machine.fileManager.addSymbolicLink("/people", "data/people");
    machine.users.addPasswordEntry({.name = "bob", .uid = 1001, .homeDirectory = "/people/bob/"});
    machine.users.setUserID(1001);
    const auto observer = makeObserver();
    EXPECT_EQ(observer->userHomePath(), "/data/people/bob");
    EXPECT_EQ(observer->createSearchPaths(), NSArray{"/data/people/bob/Documents"});
}

TEST_F(RecentItemsObservation, HomeFolderThatIsNotThereHasNoScopes) {
    machine.users.addPasswordEntry({.name = "eve", .uid = 1002, .homeDirectory = "/nonexistent/"});
    machine.users.setUserID(1002);
    const auto observer = makeObserver();
    EXPECT_EQ(observer->userHomePath(), "/nonexistent");
    EXPECT_EQ(observer->createSearchPaths(), NSArray());
}

TEST_F(RecentItemsObservation, OfTwentyFiveItemsTheTwentyLatestAreHandedOutLatestFirst) {
    for (int index = 0; index < 25; ++index) {
        addFile("/home/anna/Documents/" + NSString::fromInteger(index), 100 + (index * 7) % 25);
    }
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    ASSERT_EQ(deliveries.size(), 1U);
    EXPECT_EQ(observer->recentItems().size(), 25U);
    ASSERT_EQ(deliveries[0].size(), 20U);
    const auto latest = observer->latestRecentItems();
    for (std::size_t index = 0; index < latest.size(); ++index) {
        EXPECT_EQ(latest[index]->latestInteractionDate(), at(124.0 - static_cast<double>(index)));
    }
}

TEST_F(RecentItemsObservation, OfFiveItemsAllAreHandedOut) {
    for (int index = 0; index < 5; ++index) {
        addFile("/home/anna/Documents/" + NSString::fromInteger(index), index);
    }
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    ASSERT_EQ(deliveries.size(), 1U);
    EXPECT_EQ(deliveries[0].size(), 5U);
    EXPECT_EQ(deliveries[0][0], "/home/anna/Documents/4");
}

TEST_F(RecentItemsObservation, NothingFoundIsHandedOutToo) {
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty()));
}

TEST_F(RecentItemsObservation, ItemsOutsideTheScopesAreNotFound) {
    addFile("/home/anna/letter.txt", 1);
    addFile("/home/anna/Library/x", 1);
    addFile("/srv/x", 1);
    addFile("/home/anna/Documents/deep/er/x", 1);
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre("/home/anna/Documents/deep/er/x")));
}

TEST_F(RecentItemsObservation, DeliveryWithoutAPathTakesItsItemAway) {
    addFile("/home/anna/Documents/a", 1);
    addFile("/home/anna/Documents/b", 2);
    const auto observer = makeObserver();
    observer->startObserving();
    settle();
    machine.metadataIndex.removeItem("/home/anna/Documents/b");
    settle();
    EXPECT_THAT(deliveries.back(), ElementsAre("/home/anna/Documents/a"));
    machine.metadataIndex.removeItem("/home/anna/Documents/a");
    settle();
    EXPECT_THAT(deliveries.back(), IsEmpty());
    EXPECT_EQ(deliveries.size(), 3U);
}

TEST_F(RecentItemsObservation, CallbackComesFromTheMainQueueWithTheItemsOfThatMoment) {
    addFile("/home/anna/Documents/a", 1);
    const auto observer = makeObserver();
    observer->startObserving();
    machine.dispatch.drain();
    machine.dispatch.runBackground();
    EXPECT_THAT(deliveries, IsEmpty());
    addFile("/srv/later", 2);
    observer->updateRecentItems({RecentItem::recentItemWithPath("/srv/later")});
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre("/srv/later", "/home/anna/Documents/a")));
}

TEST_F(RecentItemsObservation, WithoutACallbackTheListIsKeptAllTheSame) {
    addFile("/home/anna/Documents/a", 1);
    const auto observer = makeObserver();
    observer->setCallback({});
    observer->startObserving();
    settle();
    EXPECT_EQ(observer->recentItems().size(), 1U);
    observer->setCallback([](const auto& /*items*/) { FAIL(); });
    observer->updateResultsWithMetadataItems({});
    observer->setCallback({});
    settle();
}

TEST_F(RecentItemsObservation, StoppingEndsTheSearchAndNotTheWatching) {
    const auto observer = makeObserver();
    observer->startObserving();
    observer->startObserving();
    settle();
    observer->stopObserving();
    observer->stopObserving();
    EXPECT_FALSE(observer->metadataQuery()->isStarted());
    addFile("/home/anna/Documents/a", 1);
    settle();
    EXPECT_EQ(deliveries.size(), 1U);
    EXPECT_EQ(machine.fsEvents.streams().size(), 1U);
    observer->setMetadataQuery(nullptr);
    observer->startObserving();
    observer->stopObserving();
}

TEST_F(RecentItemsObservation, NeverSaysThatItObserves) {
    const auto observer = makeObserver();
    EXPECT_FALSE(observer->isObserving());
    observer->startObserving();
    EXPECT_FALSE(observer->isObserving());
    EXPECT_EQ(observer->valueForKey("observing"), Value(false));
    settle();
    EXPECT_FALSE(observer->isObserving());
}

TEST_F(RecentItemsObservation, PropertiesAndTheProtocolAreFoundByTheirNames) {
    const auto observer = makeObserver();
    EXPECT_TRUE(observer->conformsToProtocol("FileSystemObserverDelegate"));
    EXPECT_EQ(observer->valueForKey("userHomePath"), Value("/home/anna"));
    EXPECT_EQ(observer->valueForKey("recentItems"), Value(NSArray()));
    EXPECT_THAT(observer->valueForKey("metadataQuery"), Not(std::nullopt));
}

} // namespace
