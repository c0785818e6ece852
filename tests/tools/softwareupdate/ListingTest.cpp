// SPDX-License-Identifier: Apache-2.0
#include "tools/softwareupdate/Listing.h"

#include "QKFoundation/system_info/QKOSUpdateParser.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace qk::softwareupdate {
namespace {

std::optional<NSArray> parsed(const std::string& text) {
    const auto parser = QKOSUpdateParser::initWithString(Value(NSString::fromUTF8Lossy(text)));
    return parser->startParsing() ? parser->parsedObjects() : std::nullopt;
}

TEST(Listing, NoUpdatesIsSaidSo) {
    EXPECT_EQ(listing({}), "No new software available.\n");
    EXPECT_EQ(parsed(listing({})), NSArray());
}

TEST(Listing, UpdateTakesTwoLines) {
    EXPECT_EQ(
        listing({{"example-tool", "2.1", 20'971'520, true}}),
        "Updates for this system:\n   * example-tool-2.1\n\texample-tool (2.1), 20480K [recommended] [restart]\n");
}

TEST(Listing, SizeIsRoundedUp) {
    EXPECT_NE(listing({{"a", "1", 0, false}}).find("(1), 0K ["), std::string::npos);
    EXPECT_NE(listing({{"a", "1", 1, false}}).find("(1), 1K ["), std::string::npos);
    EXPECT_NE(listing({{"a", "1", 1024, false}}).find("(1), 1K ["), std::string::npos);
    EXPECT_NE(listing({{"a", "1", 1025, false}}).find("(1), 2K ["), std::string::npos);
    EXPECT_NE(listing({{"a", "1", UINT64_MAX, false}}).find("(1), 18014398509481984K ["), std::string::npos);
}

TEST(Listing, HyphensOfAVersionDoNotBreakIt) {
    const std::optional<NSArray> objects =
        parsed(listing({{"login", "1:4.13+dfsg1-1+deb12u2", 616084, false}, {"lib-a", "1-2-3", std::nullopt, true}}));
    ASSERT_TRUE(objects.has_value());
    EXPECT_EQ(*objects, (NSArray{NSDictionary{{"name", "login"},
                                              {"version", "1:4.13+dfsg1\u20111+deb12u2"},
                                              {"description", "login"},
                                              {"size", "602K"},
                                              {"restart", false},
                                              {"recommended", true}},
                                 NSDictionary{{"name", "lib-a"},
                                              {"version", "1\u20112\u20113"},
                                              {"description", "lib-a"},
                                              {"size", ""},
                                              {"restart", true},
                                              {"recommended", true}}}));
}

TEST(Listing, WordsThatWouldTearTheListingAreSkipped) {
    for (const std::string_view word : {"", " ", "a b", "a\tb", "a\nb", "a,b", "a(b", "a)b", "\x7F", "\x01"}) {
        EXPECT_FALSE(isListable(word)) << word;
        EXPECT_EQ(listing({{std::string(word), "1", 1, false}, {"a", std::string(word), 1, false}}), listing({}));
    }
    EXPECT_TRUE(isListable("1:2.36-9+deb12u13~rc1^git_x"));
}

RC_GTEST_PROP(Listing, EveryListableUpdateIsParsedBackExactly, ()) {
    const auto word =
        rc::gen::suchThat(rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::element<char>(
                              'a', 'Z', '0', '9', '.', '+', '-', '~', ':', '_', '*', '[', ']', '^', '@'))),
                          isListable);
    const auto names = *rc::gen::container<std::vector<std::string>>(word);
    PendingUpdates updates;
    for (const std::string& name : names) {
        updates.push_back(
            {name, *word, *rc::gen::arbitrary<bool>() ? std::optional<std::uint64_t>(5) : std::nullopt, false});
    }
    const std::optional<NSArray> objects = parsed(listing(updates));
    RC_ASSERT(objects.has_value());
    RC_ASSERT(objects->count() == updates.size());
    for (std::size_t index = 0; index < updates.size(); ++index) {
        const auto* object = (*objects)[index].as<NSDictionary>();
        RC_ASSERT(object != nullptr);
        RC_ASSERT(*object->get<NSString>("name") == NSString::fromUTF8Lossy(updates[index].name));
        const NSString version = object->get<NSString>("version")->stringByReplacingOccurrencesOfString("\u2011", "-");
        RC_ASSERT(version == NSString::fromUTF8Lossy(updates[index].version));
        RC_ASSERT(*object->get<NSString>("size") == (updates[index].size.has_value() ? NSString("1K") : NSString()));
    }
}

} // namespace
} // namespace qk::softwareupdate
