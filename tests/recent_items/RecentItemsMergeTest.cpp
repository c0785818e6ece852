// SPDX-License-Identifier: Apache-2.0
// How a delivery changes the list.
#include "tests/platform/values/Printing.h"
#include "tests/recent_items/RecentItemsFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace qk;
using namespace qk::platform;
using testing::ElementsAre;
using testing::IsEmpty;

class RecentItemsMerge : public qk::tests::RecentItemsFixture {
protected:
    std::shared_ptr<RecentItem> item(const NSString& path, std::optional<double> date) {
        auto result = RecentItem::recentItemWithPath(path);
        result->setLatestInteractionDate(date.has_value() ? std::optional(qk::tests::at(*date)) : std::nullopt);
        return result;
    }
    void deliver(const std::vector<NSString>& paths) {
        std::vector<std::shared_ptr<NSMetadataItem>> items;
        for (const NSString& path : paths) {
            items.push_back(metadataItem(path));
        }
        observer->updateResultsWithMetadataItems(items);
    }
    [[nodiscard]] std::vector<std::string> paths() const { return pathsOf(observer->recentItems()); }

    std::shared_ptr<RecentItemsObserver> observer = makeObserver();
};

TEST_F(RecentItemsMerge, EmptyDeliveryEmptiesTheListAndIsHandedOn) {
    deliver({"/a"});
    deliver({});
    EXPECT_THAT(paths(), IsEmpty());
    settle();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty(), IsEmpty())) << "the items of the moment of the call";
}

TEST_F(RecentItemsMerge, MetadataWithoutAPathMakesNoItem) {
    const std::vector<std::shared_ptr<NSMetadataItem>> items{
        metadataItem("/b"), NSMetadataItem::initWithAttributes({}), nullptr,
        NSMetadataItem::initWithAttributes({{NSMetadataItemPathKey, 17}}), metadataItem("/a")};
    EXPECT_THAT(pathsOf(observer->recentItemsForMetadataItems(items)), ElementsAre("/b", "/a"));
}

TEST_F(RecentItemsMerge, NewPathsAreAppendedInTheirOrder) {
    deliver({"/b", "/a"});
    deliver({"/c", "/a", "/b"});
    EXPECT_THAT(paths(), ElementsAre("/b", "/a", "/c"));
}

TEST_F(RecentItemsMerge, OnlyPathsOfTheDeliveryStay) {
    observer->setRecentItems({item("/a", 1), item("/b", 1), item("/A", 1)});
    observer->removeOutdatedItemsThatAreNotPresentInItems({item("/b", 2), item("/c", 2)});
    EXPECT_THAT(paths(), ElementsAre("/b"));
}

TEST_F(RecentItemsMerge, LaterObjectOfAKnownPathReplacesTheOldOneAtTheEnd) {
    observer->setRecentItems({item("/a", 1), item("/b", 1)});
    const auto later = item("/a", 2);
    observer->updateRecentItems({later});
    EXPECT_THAT(paths(), ElementsAre("/b", "/a"));
    EXPECT_EQ(observer->recentItems().back(), later);
}

TEST_F(RecentItemsMerge, EqualAndEarlierAndAbsentDatesKeepTheOldObject) {
    struct Case {
        std::optional<double> known;
        std::optional<double> given;
    };
    for (const Case& each : {Case{2, 2}, {2, 1}, {2, std::nullopt}, {std::nullopt, 2}, {std::nullopt, std::nullopt}}) {
        const auto known = item("/a", each.known);
        observer->setRecentItems({known});
        observer->updateRecentItems({item("/a", each.given)});
        EXPECT_THAT(observer->recentItems(), ElementsAre(known));
    }
}

TEST_F(RecentItemsMerge, FirstOfANameIsTheOneThatIsComparedAndReplaced) {
    const auto oldB = item("/two/x", 5);
    observer->setRecentItems({item("/one/x", 1), oldB});
    observer->updateRecentItems({item("/two/x", 6)});
    EXPECT_THAT(paths(), ElementsAre("/two/x", "/two/x")) << "two of one path, and none of the other";
    EXPECT_EQ(observer->recentItems().front(), oldB);
}

TEST_F(RecentItemsMerge, UpdateIsRefusedWhenAnotherFileOfThatNameIsLater) {
    const auto known = item("/two/x", 1);
    observer->setRecentItems({item("/one/x", 9), known});
    observer->updateRecentItems({item("/two/x", 5)});
    EXPECT_EQ(observer->recentItems().back(), known);
}

TEST_F(RecentItemsMerge, EvictedPathComesBackWhenItIsHandledAfterwards) {
    observer->setRecentItems({item("/one/x", 1), item("/two/x", 1)});
    observer->updateRecentItems({item("/two/x", 6), item("/one/x", 1)});
    EXPECT_THAT(paths(), ElementsAre("/two/x", "/two/x", "/one/x"));
    observer->setRecentItems({item("/one/x", 1), item("/two/x", 1)});
    observer->updateRecentItems({item("/one/x", 1), item("/two/x", 6)});
    EXPECT_THAT(paths(), ElementsAre("/two/x", "/two/x"));
}

TEST_F(RecentItemsMerge, ReplacingTakesAllWithThePathOfTheFirstAway) {
    observer->setRecentItems({item("/one/x", 1), item("/two/x", 1), item("/one/x", 1)});
    observer->updateRecentItem(item("/three/x", 2));
    EXPECT_THAT(paths(), ElementsAre("/two/x", "/three/x"));
}

TEST_F(RecentItemsMerge, ItemOfANewNameIsNotAppendedByAnUpdate) {
    observer->updateRecentItem(item("/a", 1));
    observer->updateRecentItem(nullptr);
    observer->updateRecentItems({nullptr});
    EXPECT_THAT(paths(), IsEmpty());
}

TEST_F(RecentItemsMerge, LookUpOfANameGivesTheFirst) {
    const auto first = item("/one/x", 1);
    observer->setRecentItems({item("/y", 1), first, item("/two/x", 2)});
    EXPECT_EQ(observer->recentItemForDisplayName("x"), first);
    EXPECT_EQ(observer->recentItemForDisplayName("X"), nullptr);
    EXPECT_EQ(observer->recentItemForDisplayName(std::nullopt), nullptr);
}

TEST_F(RecentItemsMerge, LatestComeFirstAndThoseWithoutADateLast) {
    observer->setRecentItems({item("/none", std::nullopt), item("/early", 1), item("/late", 3), item("/as late", 3),
                              item("/before all", -1e9)});
    EXPECT_THAT(pathsOf(observer->latestRecentItems()),
                ElementsAre("/late", "/as late", "/early", "/before all", "/none"));
    EXPECT_EQ(observer->recentItems().front()->path(), "/none") << "the list itself keeps its order";
}

TEST_F(RecentItemsMerge, ItemsWithoutADateAreCutFirst) {
    RecentItemsObserver::Items items{item("/none", std::nullopt)};
    for (int index = 0; index < 20; ++index) {
        items.push_back(item("/" + NSString::fromInteger(index), index));
    }
    observer->setRecentItems(items);
    const auto latest = pathsOf(observer->latestRecentItems());
    EXPECT_EQ(latest.size(), 20U);
    EXPECT_EQ(latest.back(), "/0");
}

} // namespace
