// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/recent_items/RecentItem.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using namespace qk;
using namespace qk::platform;

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

class RecentItems : public testing::Test {
protected:
    memory::Machine machine;
    memory::ScopedMachine installed{machine};
    memory::MemoryFileManager& files = machine.fileManager;
};

TEST_F(RecentItems, PathThatDoesNotExistGivesAnItemThatKnowsNothing) {
    const auto item = RecentItem::recentItemWithPath("/home/anna/gone.txt");
    EXPECT_EQ(item->type(), RecentItemTypeUnknown);
    EXPECT_FALSE(item->isReadable() || item->isWriteable() || item->isExecuteable());
    EXPECT_EQ(item->displayName(), "gone.txt");
    EXPECT_EQ(item->path(), "/home/anna/gone.txt");
    EXPECT_EQ(item->contentModificationDate(), std::nullopt);
    EXPECT_EQ(item->contentAccessDate(), std::nullopt);
    EXPECT_EQ(item->latestInteractionDate(), std::nullopt);
}

TEST_F(RecentItems, PathThatIsNoneGivesAnItemWithoutOne) {
    const auto item = RecentItem::initWithPath(std::nullopt);
    EXPECT_EQ(item->path(), std::nullopt);
    EXPECT_EQ(item->displayName(), std::nullopt);
    EXPECT_EQ(item->hash(), 0U);
    const auto relative = RecentItem::initWithPath("notes");
    EXPECT_EQ(relative->type(), RecentItemTypeUnknown);
    EXPECT_EQ(relative->path(), "notes");
}

TEST_F(RecentItems, KindIsTheFirstThatHolds) {
    const std::vector<NSString> kinds{NSURLIsRegularFileKey, NSURLIsSymbolicLinkKey, NSURLIsDirectoryKey,
                                      NSURLIsPackageKey, NSURLIsVolumeKey};
    files.addFile("/x");
    const auto item = RecentItem::initWithPath("/x");
    const NSURL url = NSURL::fileURLWithPath("/x").value();
    for (unsigned set = 0; set < 32; ++set) {
        std::uint64_t expected = 0;
        for (unsigned kind = 0; kind < kinds.size(); ++kind) {
            const bool holds = (set >> kind & 1U) != 0;
            files.setResourceValue("/x", kinds[kind], Value(holds));
            expected = holds && expected == 0 ? kind + 1 : expected;
        }
        EXPECT_EQ(item->typeForURL(url), expected) << set;
        EXPECT_EQ(RecentItem::initWithPath("/x")->type(), expected) << set;
    }
}

TEST_F(RecentItems, PackagesAndVolumesAreFoldersAndLinksAreThemselves) {
    files.addDirectory("/a.app");
    files.setResourceValue("/a.app", NSURLIsPackageKey, Value(true));
    files.addDirectory("/media/stick");
    files.addVolume("/media/stick", {});
    files.addSymbolicLink("/link", "a.app");
    EXPECT_EQ(RecentItem::initWithPath("/a.app")->type(), RecentItemTypeDirectory);
    EXPECT_EQ(RecentItem::initWithPath("/media/stick")->type(), RecentItemTypeDirectory);
    EXPECT_EQ(RecentItem::initWithPath("/")->type(), RecentItemTypeDirectory);
    EXPECT_EQ(RecentItem::initWithPath("/link")->type(), RecentItemTypeSymbolicLink);
}

TEST_F(RecentItems, RightsAreRead) {
    files.addFile("/x");
    files.setResourceValue("/x", NSURLIsWritableKey, Value(false));
    files.setResourceValue("/x", NSURLIsExecutableKey, Value(true));
    const auto item = RecentItem::initWithPath("/x");
    EXPECT_TRUE(item->isReadable());
    EXPECT_FALSE(item->isWriteable());
    EXPECT_TRUE(item->isExecuteable());
}

TEST_F(RecentItems, AccessDateStandsInThePlaceOfTheModificationDate) {
    files.addFile("/x");
    files.setResourceValue("/x", NSURLContentModificationDateKey, at(9 * 3600.0));
    files.setResourceValue("/x", NSURLContentAccessDateKey, at(10 * 3600.0));
    const auto item = RecentItem::initWithPath("/x");
    EXPECT_EQ(item->contentModificationDate(), at(10 * 3600.0));
    EXPECT_EQ(item->latestInteractionDate(), at(10 * 3600.0));
    EXPECT_EQ(item->contentAccessDate(), std::nullopt);
}

TEST_F(RecentItems, WithoutAnAccessDateThereIsNone) {
    files.addFile("/x");
    files.setResourceValue("/x", NSURLContentModificationDateKey, at(9));
    const auto item = RecentItem::initWithPath("/x");
    EXPECT_EQ(item->contentModificationDate(), std::nullopt);
    EXPECT_EQ(item->latestInteractionDate(), std::nullopt);
}

TEST_F(RecentItems, LatestInteractionIsTheModificationUnlessTheAccessIsLater) {
    using Date = std::optional<NSDate>;
    const auto item = RecentItem::initWithPath("/x");
    for (const auto& [modified, accessed, expected] : {std::tuple{Date(at(1)), Date(at(2)), Date(at(2))},
                                                       {Date(at(2)), Date(at(1)), Date(at(2))},
                                                       {Date(at(1)), Date(at(1)), Date(at(1))},
                                                       {Date(at(1)), Date(), Date(at(1))},
                                                       {Date(), Date(at(1)), Date()},
                                                       {Date(), Date(), Date()}}) {
        item->setContentModificationDate(modified);
        item->setContentAccessDate(accessed);
        EXPECT_EQ(item->evaluateLatestInteractionDate(), expected);
    }
}

TEST_F(RecentItems, AreReadOnceWhenTheyAreMade) {
    files.addFile("/x");
    const auto item = RecentItem::initWithPath("/x");
    files.remove("/x");
    EXPECT_EQ(item->type(), RecentItemTypeFile);
    EXPECT_EQ(item->typeForURL(NSURL::fileURLWithPath("/x").value()), RecentItemTypeUnknown);
}

TEST_F(RecentItems, EqualityIsThatOfThePath) {
    files.addFile("/x");
    const auto first = RecentItem::initWithPath("/x");
    files.setResourceValue("/x", NSURLContentAccessDateKey, at(1));
    const auto second = RecentItem::initWithPath("/x");
    EXPECT_NE(first->latestInteractionDate(), second->latestInteractionDate());
    EXPECT_TRUE(first->isEqual(second));
    EXPECT_EQ(first->hash(), second->hash());
    for (const char* other : {"/X", "/x/", "/y"}) {
        EXPECT_FALSE(first->isEqual(RecentItem::initWithPath(text(other)))) << other;
    }
    EXPECT_EQ(RecentItem::initWithPath("/x/")->displayName(), "x");
    EXPECT_FALSE(first->isEqual("/x"));
    EXPECT_FALSE(first->isEqual(NSNull()));
}

TEST_F(RecentItems, ItemsWithoutAPathEqualEachOtherAlone) {
    const auto none = RecentItem::initWithPath(std::nullopt);
    EXPECT_TRUE(none->isEqual(none));
    EXPECT_TRUE(none->isEqual(RecentItem::initWithPath(std::nullopt)));
    EXPECT_FALSE(none->isEqual(RecentItem::initWithPath("/x")));
    EXPECT_FALSE(RecentItem::initWithPath("/x")->isEqual(none));
}

TEST_F(RecentItems, DescriptionHasTheDateAndThePath) {
    files.addFile("/a b");
    files.setResourceValue("/a b", NSURLContentAccessDateKey, at(1'479'269'100));
    const auto item = RecentItem::initWithPath("/a b");
    EXPECT_EQ(item->description(), item->NSObject::description() + "(2016-11-16 04:05:00 +0000 /a b)");
    EXPECT_TRUE(item->description().hasPrefix("<RecentItem: 0x"));
    EXPECT_TRUE(RecentItem::initWithPath("/gone")->description().hasSuffix("((null) /gone)"));
    EXPECT_TRUE(RecentItem::initWithPath(std::nullopt)->description().hasSuffix("((null) (null))"));
}

TEST_F(RecentItems, ValuesOfTheWrongKindAreNone) {
    files.addFile("/x");
    files.setResourceValue("/x", NSURLContentAccessDateKey, Value("yesterday"));
    files.setResourceValue("/x", NSURLIsReadableKey, Value("YES"));
    const auto item = RecentItem::initWithPath("/x");
    EXPECT_EQ(item->latestInteractionDate(), std::nullopt);
    EXPECT_FALSE(item->isReadable());
    const NSURL url = NSURL::fileURLWithPath("/x").value();
    EXPECT_TRUE(item->boolValueForURL(url, NSURLIsRegularFileKey));
    EXPECT_FALSE(item->boolValueForURL(url, "NSURLNoSuchKey"));
    EXPECT_EQ(item->dateValueForURL(url, NSURLIsRegularFileKey), std::nullopt);
}

TEST_F(RecentItems, PropertiesAreFoundByTheirNames) {
    files.addFile("/x");
    const auto item = RecentItem::initWithPath("/x");
    EXPECT_EQ(item->valueForKey("type"), Value(std::uint64_t{1}));
    EXPECT_EQ(item->valueForKey("readable"), Value(true));
    EXPECT_EQ(item->valueForKey("writeable"), Value(true));
    EXPECT_EQ(item->valueForKey("executeable"), Value(false));
    EXPECT_EQ(item->valueForKey("displayName"), Value("x"));
    EXPECT_EQ(item->valueForKey("path"), Value("/x"));
    EXPECT_EQ(item->valueForKey("contentAccessDate"), std::nullopt);
    item->setValueForKey(at(5), "latestInteractionDate");
    EXPECT_EQ(item->valueForKey("latestInteractionDate"), Value(at(5)));
}

TEST_F(RecentItems, AskTheMachineThatTheyWereMadeOn) {
    files.addFile("/x");
    const auto item = RecentItem::initWithPath("/x");
    const memory::Machine other;
    const memory::ScopedMachine otherInstalled(other);
    EXPECT_EQ(item->typeForURL(NSURL::fileURLWithPath("/x").value()), RecentItemTypeFile);
    EXPECT_EQ(RecentItem::initWithPath("/x")->type(), RecentItemTypeUnknown);
}

} // namespace
