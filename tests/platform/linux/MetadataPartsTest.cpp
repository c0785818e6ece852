// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUniformTypes.h"
#include "QKFoundation/platform/linux/MetadataCandidates.h"
#include "QKFoundation/platform/linux/MetadataScopes.h"
#include "QKFoundation/platform/linux/MetadataUsedDates.h"
#include "QKFoundation/platform/services/MetadataIndex.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tests::TemporaryFolder;

// Types.

class MetadataTypes : public testing::Test {
protected:
    std::string treeOf(const std::string& name, FileKind kind = FileKind::file) {
        std::string text;
        for (const Value& element : types.typeOf(name, kind).tree) {
            text += (text.empty() ? "" : " ") + element.as<NSString>()->utf8Lossy();
        }
        return text;
    }

    TemporaryFolder folder; // without a MIME database
    MetadataContentTypes types{std::make_shared<LinuxUniformTypes>(LinuxRoot(folder.path())),
                               [](const MetadataContentType& type) { return type.identifier != "public.png"; }};
};

TEST_F(MetadataTypes, AnUnknownExtensionAndNoneAreData) {
    EXPECT_EQ(treeOf("a.unknownextension"), "public.data public.item");
    EXPECT_EQ(treeOf("a"), "public.data public.item");
    EXPECT_EQ(treeOf("a."), "public.data public.item");
    EXPECT_EQ(treeOf(""), "public.data public.item");
    EXPECT_EQ(treeOf("a.\xFF"), "public.data public.item");
    EXPECT_EQ(treeOf("a." + std::string(100, 'x')), "public.data public.item");
}

TEST_F(MetadataTypes, TheExtensionTellsTheTypeInAnyLetterCase) {
    EXPECT_EQ(types.typeOf("a.PDF", FileKind::file).identifier, "com.adobe.pdf");
    EXPECT_EQ(types.typeOf("a.txt.png", FileKind::file).identifier, "public.png");
}

TEST_F(MetadataTypes, TheTreeIsTheTypeAndAllThatItConformsToOnce) {
    const std::string tree = treeOf("a.png");
    EXPECT_THAT(tree, testing::StartsWith("public.png public.image "));
    for (const char* type : {"public.data", "public.item", "public.content"}) {
        const std::size_t first = tree.find(type);
        ASSERT_NE(first, std::string::npos) << type;
        EXPECT_EQ(tree.find(type, first + 1), std::string::npos) << type;
    }
}

TEST_F(MetadataTypes, FoldersAndLinksAreThatWhateverTheirNames) {
    EXPECT_THAT(treeOf("a.png", FileKind::folder), testing::StartsWith("public.folder "));
    EXPECT_THAT(treeOf("a.png", FileKind::symbolicLink), testing::StartsWith("public.symlink "));
}

TEST_F(MetadataTypes, WhatOnlyTheMimeDatabaseKnowsIsOfADynamicType) {
    folder.write("usr/share/mime/globs2", "50:text/x-strange:*.strange\n");
    EXPECT_THAT(treeOf("a.strange"), testing::AllOf(testing::StartsWith("dyn.a"), testing::HasSubstr(" public.text"),
                                                    testing::EndsWith("public.item")));
}

TEST_F(MetadataTypes, EachTypeIsJudgedOnce) {
    EXPECT_FALSE(types.typeOf("a.png", FileKind::file).isWanted);
    EXPECT_TRUE(types.typeOf("a.jpg", FileKind::file).isWanted);
    EXPECT_EQ(&types.typeOf("a.png", FileKind::file), &types.typeOf("b.png", FileKind::file));
    MetadataContentTypes::Reader reader(types);
    EXPECT_EQ(&reader.typeOf("a.png", FileKind::file), &types.typeOf("b.png", FileKind::file));
    EXPECT_EQ(&reader.typeOf("c.png", FileKind::file), &types.typeOf("b.png", FileKind::file));
}

TEST_F(MetadataTypes, FurtherExtensionsThanManyAreData) {
    MetadataContentTypes::Reader reader(types);
    for (int index = 0; index < 5000; ++index) {
        static_cast<void>(reader.typeOf("a.x" + std::to_string(index), FileKind::file));
    }
    EXPECT_EQ(reader.typeOf("a.pdf", FileKind::file).identifier, "public.data");
}

// Order and choice.

const MetadataContentType kAnyType{.identifier = "public.data", .tree = {"public.data"}};

MetadataCandidate candidate(const std::string& path, double modified, double used = 0) {
    return {.path = path, .modified = modified, .used = used, .type = &kAnyType};
}

MetadataOrder newestFirst() {
    return MetadataOrder({{kMDItemContentModificationDate, false}, {kMDItemLastUsedDate, false}}, MetadataAttributes());
}

std::vector<std::string> pathsOf(const MetadataSelection& selection) {
    std::vector<std::string> paths;
    for (const MetadataCandidate& each : selection.best) {
        paths.push_back(each.path);
    }
    return paths;
}

TEST(MetadataOrder, WithoutDescriptorsPathsAscend) {
    const MetadataOrder order({}, MetadataAttributes());
    EXPECT_TRUE(order.isBefore(candidate("/a", 1), candidate("/b", 2)));
    EXPECT_FALSE(order.isBefore(candidate("/b", 1), candidate("/a", 2)));
    EXPECT_FALSE(order.isBefore(candidate("/a", 1), candidate("/a", 1)));
    EXPECT_FALSE(order.comesAfter(1, 1, candidate("/a", 2)));
}

TEST(MetadataOrder, TheFirstDescriptorThatTellsThemApartDecides) {
    const MetadataOrder order = newestFirst();
    EXPECT_TRUE(order.isBefore(candidate("/b", 2, 0), candidate("/a", 1, 9)));
    EXPECT_TRUE(order.isBefore(candidate("/b", 2, 9), candidate("/a", 2, 8)));
    EXPECT_TRUE(order.isBefore(candidate("/a", 2, 9), candidate("/b", 2, 9)));
    EXPECT_TRUE(order.comesAfter(1, 9, candidate("/a", 2, 0)));
    EXPECT_TRUE(order.comesAfter(2, 8, candidate("/a", 2, 9)));
    EXPECT_FALSE(order.comesAfter(2, 9, candidate("/a", 2, 9)));
    EXPECT_FALSE(order.comesAfter(3, 0, candidate("/a", 2, 9)));
}

TEST(MetadataOrder, OtherAttributesOrderTheSameWay) {
    const auto firstIs = [](const char* first, const NSSortDescriptor& descriptor) {
        const MetadataOrder order({descriptor}, MetadataAttributes());
        const MetadataCandidate one = candidate("/x/b", 1);
        const MetadataCandidate two = candidate("/y/a", 1);
        return order.isBefore(one, two) ? one.path == first : two.path == first;
    };
    EXPECT_TRUE(firstIs("/y/a", {NSMetadataItemDisplayNameKey, true}));
    EXPECT_TRUE(firstIs("/x/b", {NSMetadataItemDisplayNameKey, false}));
    EXPECT_TRUE(firstIs("/x/b", {NSMetadataItemPathKey, true}));
    EXPECT_TRUE(firstIs("/y/a", {NSMetadataItemPathKey, false}));
    EXPECT_TRUE(firstIs("/x/b", {"kMDItemOfNoIndex", true}));
}

TEST(MetadataCollector, WithoutCandidatesThereIsNothing) {
    const MetadataOrder order = newestFirst();
    std::vector<MetadataCollector> none;
    const MetadataSelection selection = MetadataCollector(order, 2).select(none);
    EXPECT_THAT(selection.best, IsEmpty());
    EXPECT_FALSE(selection.horizon.has_value());
}

TEST(MetadataCollector, NoneIsLeftOutWhenAllFit) {
    const MetadataOrder order = newestFirst();
    MetadataCollector collector(order, 3);
    for (const int date : {2, 3, 1}) {
        collector.take(candidate("/" + std::to_string(date), date));
    }
    std::vector<MetadataCollector> none;
    const MetadataSelection selection = collector.select(none);
    EXPECT_THAT(pathsOf(selection), ElementsAre("/3", "/2", "/1"));
    EXPECT_FALSE(selection.horizon.has_value());
}

TEST(MetadataCollector, WhatComesAfterTheHorizonIsNotTaken) {
    const MetadataOrder order = newestFirst();
    MetadataCollector collector(order, 3, candidate("/h", 5));
    EXPECT_FALSE(collector.mayTake(4, 9));
    EXPECT_TRUE(collector.mayTake(5, 0));
    collector.take(candidate("/z", 5));
    collector.take(candidate("/a", 5));
    std::vector<MetadataCollector> none;
    EXPECT_THAT(pathsOf(collector.select(none)), ElementsAre("/a"));
}

RC_GTEST_PROP(MetadataCollector, KeepsTheFirstOfAllWhoeverFoundThem, ()) {
    const auto count = *rc::gen::inRange(0, 200);
    const auto most = *rc::gen::inRange<std::size_t>(0, 30);
    const MetadataOrder order = newestFirst();
    std::vector<MetadataCandidate> all;
    MetadataCollector first(order, most);
    std::vector<MetadataCollector> others(2, MetadataCollector(order, most));
    for (int index = 0; index < count; ++index) {
        const auto modified = *rc::gen::inRange(0, 40);
        const auto used = *rc::gen::inRange(0, 3);
        all.push_back(candidate("/" + std::to_string(index), modified, used));
        const auto who = *rc::gen::inRange<std::size_t>(0, 3);
        MetadataCollector& collector = who == 2 ? first : others[who];
        if (collector.mayTake(modified, used)) {
            collector.take(all.back());
        }
    }
    std::ranges::sort(all, [&](const auto& left, const auto& right) { return order.isBefore(left, right); });
    const MetadataSelection selection = first.select(others);
    RC_ASSERT(selection.best.size() == (most == 0 ? all.size() : std::min(most, all.size())));
    RC_ASSERT(std::equal(selection.best.begin(), selection.best.end(), all.begin()));
    if (selection.best.size() < all.size()) {
        RC_ASSERT(selection.horizon.has_value());
        RC_ASSERT(order.isBefore(*selection.horizon, all[selection.best.size()]));
    }
}

TEST(MetadataAttributes, AnUnknownAttributeIsAbsent) {
    EXPECT_FALSE(MetadataAttributes().valueOf(candidate("/a", 1), "kMDItemOfNoIndex").has_value());
}

TEST(MetadataAttributes, EachIsThatOfTheWholeList) {
    const MetadataAttributes attributes("/captured");
    const MetadataCandidate file = candidate("/captured/home/a b.txt", 10, 20);
    const NSDictionary all = attributes.allOf(file);
    EXPECT_EQ(all.count(), 6U);
    for (const auto& [name, value] : all) {
        EXPECT_EQ(attributes.valueOf(file, name), value) << name.utf8Lossy();
    }
    EXPECT_EQ(*all.get<NSString>(NSMetadataItemPathKey), "/home/a b.txt");
    EXPECT_EQ(*all.get<NSString>(NSMetadataItemDisplayNameKey), "a b.txt");
    EXPECT_EQ(all.get<NSDate>(kMDItemContentModificationDate)->timeIntervalSince1970(), 10);
    EXPECT_EQ(all.get<NSDate>(kMDItemLastUsedDate)->timeIntervalSince1970(), 20);
}

// Scopes.

TEST(MetadataScopes, WithoutScopesNothingIsSearched) {
    const MetadataScopes scopes({});
    EXPECT_FALSE(scopes.hold("/a"));
    EXPECT_FALSE(scopes.areAtOrBelow("/"));
    EXPECT_THAT(MetadataScopes({"relative", ""}).folders(), IsEmpty());
}

TEST(MetadataScopes, EverythingBelowIsSearchedButWhatIsHidden) {
    const MetadataScopes scopes({"/absent/.a"});
    EXPECT_TRUE(scopes.hold("/absent/.a/b/c"));
    EXPECT_FALSE(scopes.hold("/absent/.a"));
    EXPECT_FALSE(scopes.hold("/absent/.ab"));
    EXPECT_FALSE(scopes.hold("/absent/.a/.b/c"));
    EXPECT_FALSE(scopes.hold("/absent/.a/b/.c"));
    EXPECT_FALSE(scopes.hold(""));
    EXPECT_TRUE(scopes.areAtOrBelow("/absent/.a"));
    EXPECT_TRUE(scopes.areAtOrBelow("/absent"));
    EXPECT_TRUE(scopes.areAtOrBelow("/"));
    EXPECT_FALSE(scopes.areAtOrBelow("/absent/.a/b"));
    EXPECT_FALSE(scopes.areAtOrBelow("/abs"));
}

TEST(MetadataScopes, TheRootIsAScopeToo) {
    const MetadataScopes scopes({"/"});
    EXPECT_TRUE(scopes.hold("/a"));
    EXPECT_FALSE(scopes.hold("/.a"));
    EXPECT_FALSE(scopes.hold("/"));
}

TEST(MetadataScopes, OfScopesWithinEachOtherTheOuterOneIsEnough) {
    EXPECT_THAT(MetadataScopes({"/absent/a/b", "/absent/a", "/absent/a/", "/absent/ab"}).folders(),
                ElementsAre("/absent/a", "/absent/ab"));
    EXPECT_THAT(MetadataScopes({"/absent/a", "/absent/a/.b/c"}).folders(), ElementsAre("/absent/a", "/absent/a/.b/c"));
}

TEST(MetadataScopes, LinksOnTheWayToAScopeAreTakenAway) {
    const TemporaryFolder folder;
    const std::string real = std::filesystem::canonical(folder.path()).string() + "/real";
    std::filesystem::create_directory(real);
    std::filesystem::create_directory_symlink("real", folder.path("link"));
    EXPECT_THAT(MetadataScopes({folder.path("link"), folder.path("link/../real")}).folders(), ElementsAre(real));
}

// Dates of use.

std::string usedList(const std::vector<std::pair<std::string, std::string>>& files) {
    std::string text = "<xbel>";
    for (const auto& [path, moment] : files) {
        text += "<bookmark href=\"file://" + path + "\" visited=\"1970-01-01T00:00:" + moment + "Z\"/>";
    }
    return text + "</xbel>";
}

TEST(MetadataUsedDates, WithoutAListNothingIsKnown) {
    MetadataUsedDates dates("/absent/list", "");
    EXPECT_THAT(dates.read(), IsEmpty());
    EXPECT_EQ(dates.folder("/a"), nullptr);
    EXPECT_FALSE(dates.dateOf("/a/b").has_value());
    EXPECT_FALSE(dates.dateOf("").has_value());
}

TEST(MetadataUsedDates, TheListIsReadAgainWhenItChanges) {
    const TemporaryFolder folder;
    const std::string file = folder.write("list", usedList({{"/a/b", "10"}, {"/c", "20"}, {"/d/e", "30"}}));
    MetadataUsedDates dates(file, "/root");
    EXPECT_THAT(dates.read(), UnorderedElementsAre("/root/a/b", "/root/c", "/root/d/e"));
    EXPECT_THAT(dates.read(), IsEmpty());
    EXPECT_EQ(dates.dateOf("/root/a/b"), 10);
    EXPECT_EQ(dates.dateOf("/root/c"), 20);
    EXPECT_EQ(dates.folder("/root/d")->at("e"), 30);
    EXPECT_FALSE(dates.dateOf("/root/a/c").has_value());

    folder.write("list", usedList({{"/a/b", "11"}, {"/c", "20"}, {"/d/f", "12"}, {"/d/f", "09"}}));
    EXPECT_THAT(dates.read(), UnorderedElementsAre("/root/a/b", "/root/d/e", "/root/d/f"));
    EXPECT_EQ(dates.dateOf("/root/d/f"), 12);

    std::filesystem::remove(file);
    EXPECT_THAT(dates.read(), UnorderedElementsAre("/root/a/b", "/root/c", "/root/d/f"));
    EXPECT_EQ(dates.folder("/root/a"), nullptr);
}

} // namespace
} // namespace qk::platform
