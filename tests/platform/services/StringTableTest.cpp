// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/StringTable.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk::internal {
namespace {

TEST(StringTable, AnEmptyOneHasNoTexts) {
    EXPECT_EQ(StringTable().find("key"), nullptr);
    EXPECT_EQ(StringTable().find(""), nullptr);
    EXPECT_EQ(StringTable(NSDictionary{{"key", 1}}).find("key"), nullptr);
    EXPECT_EQ(StringTable(NSDictionary{{"key", 1}}).count(), 0U);
}

TEST(StringTable, FindsEveryTextAndNothingElse) {
    for (const int count : {1, 2, 3, 4, 5, 31, 32, 33, 5000}) {
        std::vector<NSDictionary::Entry> entries;
        for (int number = 0; number < count; ++number) {
            entries.emplace_back("key " + NSString::fromInteger(number), NSString::fromInteger(number));
        }
        const StringTable table{NSDictionary(entries)};
        EXPECT_EQ(table.count(), static_cast<std::size_t>(count));
        for (int number = 0; number < count; ++number) {
            const auto* const found = table.find("key " + NSString::fromInteger(number));
            ASSERT_NE(found, nullptr) << number << " of " << count;
            EXPECT_EQ(found->text, NSString::fromInteger(number));
            EXPECT_FALSE(found->equalsKey);
            EXPECT_EQ(table.find("no " + NSString::fromInteger(number)), nullptr);
        }
        EXPECT_EQ(table.find("key"), nullptr);
        EXPECT_EQ(table.find(""), nullptr);
    }
}

TEST(StringTable, TellsTextsThatEqualTheirKeys) {
    const StringTable table(NSDictionary{{"OK", "OK"}, {"ok", "OK"}, {"", ""}});
    EXPECT_TRUE(table.find("OK")->equalsKey);
    EXPECT_FALSE(table.find("ok")->equalsKey);
    EXPECT_TRUE(table.find("")->equalsKey);
}

TEST(StringTable, KeysMayBeEmptyOrHoldAnyUnits) {
    const NSString lone(u"\xD800");
    const NSString zero(std::u16string_view(u"a\0b", 3));
    const StringTable table(NSDictionary{{"", "empty"}, {lone, "lone"}, {zero, "zero"}});
    EXPECT_EQ(table.find("")->text, "empty");
    EXPECT_EQ(table.find(lone)->text, "lone");
    EXPECT_EQ(table.find(zero)->text, "zero");
    EXPECT_EQ(table.find("a"), nullptr);
}

} // namespace
} // namespace qk::internal
