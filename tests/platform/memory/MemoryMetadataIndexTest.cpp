// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryMetadataIndex.h"

#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

class MemoryIndex : public testing::Test {
protected:
    void begin(const NSString& format, std::vector<NSSortDescriptor> descriptors = {}, std::size_t limit = 0,
               std::vector<NSString> scopes = {}) {
        const MetadataSearch search{std::move(scopes), NSPredicate::predicateWithFormat(format), std::move(descriptors),
                                    limit};
        run = index.begin(search, {[this](std::size_t count) { examined.push_back(count); },
                                   [this](MetadataResults results) { deliveries.push_back(namesOf(results)); }});
    }
    static std::vector<NSString> namesOf(const MetadataResults& results) {
        std::vector<NSString> names;
        for (const auto& item : results) {
            names.push_back(item->valueForAttribute("name").value().description());
        }
        return names;
    }
    void add(const NSString& name, const std::optional<NSDate>& date = {}) {
        NSMutableDictionary attributes;
        attributes.setObject(name, "name");
        attributes.setObject("/" + name, NSMetadataItemPathKey);
        if (date.has_value()) {
            attributes.setObject(*date, "date");
        }
        index.addItem(attributes.copy());
    }

    memory::Machine machine;
    memory::MemoryMetadataIndex& index = machine.metadataIndex;
    std::unique_ptr<MetadataSearchRun> run;
    std::vector<std::size_t> examined;
    std::vector<std::vector<NSString>> deliveries;
};

TEST_F(MemoryIndex, EmptyIndexGathersNothingAndSaysSo) {
    begin("TRUEPREDICATE");
    EXPECT_THAT(deliveries, IsEmpty());
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty()));
    EXPECT_THAT(examined, ElementsAre(0U));
}

TEST_F(MemoryIndex, OrderIsThatOfTheDescriptorsAndItemsWithoutTheAttributeAreLast) {
    add("none");
    add("early", at(1));
    add("late", at(3));
    add("late too", at(3));
    begin("TRUEPREDICATE", {{"date", false}});
    machine.dispatch.drain();
    EXPECT_THAT(deliveries,
                ElementsAre(ElementsAre(NSString("late"), NSString("late too"), NSString("early"), NSString("none"))));
}

TEST_F(MemoryIndex, PredicateIsAboutTheAttributes) {
    add("a", at(1));
    add("b", at(2));
    begin("name == 'b' OR missing == 1");
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(NSString("b"))));
}

TEST_F(MemoryIndex, OnlyChangesOfTheResultsAreTold) {
    begin("name == 'b'");
    machine.dispatch.drain();
    deliveries.clear();
    add("a");
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, IsEmpty());
    add("b");
    machine.dispatch.drain();
    index.removeItem("/b");
    index.removeItem("/missing");
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(NSString("b")), IsEmpty()));
}

TEST_F(MemoryIndex, UpdateOfAnItemIsToldWhenItTellsSomethingNew) {
    add("a", at(1));
    begin("TRUEPREDICATE");
    machine.dispatch.drain();
    deliveries.clear();
    const NSDictionary same{{"name", "a"}, {NSMetadataItemPathKey, "/a"}, {"date", at(1)}};
    index.updateItem(same);
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, IsEmpty());
    index.updateItem({{"name", "new"}, {NSMetadataItemPathKey, "/a"}});
    index.updateItem({{"name", "another"}, {NSMetadataItemPathKey, "/b"}});
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(ElementsAre(NSString("new"), NSString("another"))));
}

TEST_F(MemoryIndex, ItemWithoutAPathIsFoundEverywhereOnly) {
    index.addItem({{"name", "a"}});
    begin("TRUEPREDICATE", {}, 0, {"/"});
    machine.dispatch.drain();
    begin("TRUEPREDICATE");
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, ElementsAre(IsEmpty(), ElementsAre(NSString("a"))));
}

TEST_F(MemoryIndex, SearchThatHasEndedIsToldNothing) {
    begin("TRUEPREDICATE");
    EXPECT_EQ(index.runningSearches(), 1U);
    run.reset();
    EXPECT_EQ(index.runningSearches(), 0U);
    add("a");
    machine.dispatch.drain();
    EXPECT_THAT(deliveries, IsEmpty());
}

} // namespace
} // namespace qk::platform
