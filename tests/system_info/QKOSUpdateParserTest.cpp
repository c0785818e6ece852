// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKOSUpdateParser.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qk {
namespace {

NSString text(std::u16string_view units) {
    return NSString(units);
}

NSDictionary update(const NSString& name, const NSString& version, const NSString& description, const NSString& size,
                    bool restart = false, bool recommended = false) {
    return {{"name", name}, {"version", version}, {"description", description},
            {"size", size}, {"restart", restart}, {"recommended", recommended}};
}

NSDictionary secondLine(const NSString& description, const NSString& version, const NSString& size,
                        bool restart = false, bool recommended = false) {
    return {{"version", version},
            {"description", description},
            {"size", size},
            {"restart", restart},
            {"recommended", recommended}};
}

// What parsing a listing gives: the answer and the updates.
struct Parsed {
    bool answer = false;
    std::optional<NSArray> objects;
};
Parsed parse(const std::optional<Value>& listing) {
    const auto parser = QKOSUpdateParser::initWithString(listing);
    const bool answer = parser->startParsing();
    return {answer, parser->parsedObjects()};
}
std::vector<NSDictionary> updatesOf(std::u16string_view listing) {
    std::vector<NSDictionary> updates;
    const Parsed parsed = parse(text(listing));
    EXPECT_EQ(parsed.answer, parsed.objects.has_value() && !parsed.objects->isEmpty());
    for (const Value& object : parsed.objects.value_or(NSArray())) {
        updates.push_back(*object.as<NSDictionary>());
    }
    return updates;
}

// The size that an entry of the newer form gets from what stands behind its comma.
NSString sizeOf(std::u16string_view tail) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    const auto parsed = parser->parseNewStyleSecondLine(NSString(u"A (1), ") + text(tail));
    return *parsed->get<NSString>("size");
}

TEST(QKOSUpdateParser, WithoutATextFailsAndLeavesTheResultUnset) {
    for (const std::optional<Value>& listing :
         {std::optional<Value>(), std::optional<Value>(NSNull{}), std::optional<Value>(7), std::optional<Value>("")}) {
        const Parsed parsed = parse(listing);
        EXPECT_FALSE(parsed.answer);
        EXPECT_EQ(parsed.objects, std::nullopt);
    }
}

TEST(QKOSUpdateParser, WithoutATextLeavesThePreviousResult) {
    const auto parser = QKOSUpdateParser::initWithString(text(u"   * A-1\n\tA (1), 1K\n"));
    ASSERT_TRUE(parser->startParsing());
    parser->setParsingString(std::nullopt);
    EXPECT_FALSE(parser->startParsing());
    EXPECT_EQ(parser->parsedObjects()->count(), 1U);
}

TEST(QKOSUpdateParser, EveryLaterFailureEmptiesTheResult) {
    const auto parser = QKOSUpdateParser::initWithString(text(u"   * A-1\n\tA (1), 1K\n"));
    ASSERT_TRUE(parser->startParsing());
    const std::optional<NSArray> earlier = parser->parsedObjects();
    for (const char16_t* listing : {u"no marker", u"   * ", u"   * A-1\n\tA (2), 1K\n"}) {
        parser->setParsingString(text(listing));
        EXPECT_FALSE(parser->startParsing());
        EXPECT_EQ(parser->parsedObjects(), NSArray());
    }
    EXPECT_EQ(earlier->count(), 1U);
}

TEST(QKOSUpdateParser, ReadsTheFormWithOneComma) {
    EXPECT_EQ(updatesOf(u"Software Update found the following new or updated software:\n"
                        u"   * ExampleTool-2.1\n"
                        u"\tExample Tool (2.1), 20480K [recommended] [restart]\n"),
              std::vector{update("ExampleTool", "2.1", "Example Tool", "20480K", true, true)});
}

TEST(QKOSUpdateParser, ReadsTheFormWithTwoCommas) {
    EXPECT_EQ(updatesOf(u"   * ExampleTool-2.1\n\tExample Tool, 2.1, 20480K"),
              std::vector{update("ExampleTool", "2.1", "Example Tool", "20480K")});
}

TEST(QKOSUpdateParser, ReadsSeveralEntriesInOrder) {
    EXPECT_EQ(
        updatesOf(u"   * B-2\n\tB (2), 2K [restart]\n   * A-1\n\tA, 1, 1K [recommended]\n   - C-3\n\tC (3), 3K\n"),
        (std::vector{update("B", "2", "B", "2K", true), update("A", "1", "A", "1K", false, true),
                     update("C", "3", "C", "3K")}));
}

TEST(QKOSUpdateParser, AListingWithoutEntriesThatSpeaksOfNewSoftwareSucceeds) {
    for (const char16_t* listing : {u"No new software available.\n", u"new softwarez"}) {
        const Parsed parsed = parse(text(listing));
        EXPECT_TRUE(parsed.answer);
        EXPECT_EQ(parsed.objects, NSArray());
    }
}

TEST(QKOSUpdateParser, AnyOtherListingWithoutEntriesFails) {
    for (const char16_t* listing :
         {u"Cannot reach the server.\n", u"No New Software available.",
          u"found the following new or updated software:\n", u"   *\tA-1\n\tA (1), 1K", u"  * A-1\n\tA (1), 1K"}) {
        const Parsed parsed = parse(text(listing));
        EXPECT_FALSE(parsed.answer);
        EXPECT_EQ(parsed.objects, NSArray());
    }
}

TEST(QKOSUpdateParser, TheTalkOfNewSoftwareCountsOnlyWithoutAMarker) {
    EXPECT_FALSE(parse(text(u"No new software available.\n   * broken")).answer);
}

TEST(QKOSUpdateParser, SkipsAnEntryOfOneLine) {
    EXPECT_TRUE(updatesOf(u"   * A-1\n").empty());
    EXPECT_EQ(updatesOf(u"   * A-1\n   * B-2\n\tB (2), 2K"), std::vector{update("B", "2", "B", "2K")});
}

TEST(QKOSUpdateParser, TakesTheFirstTwoLinesOfAnEntry) {
    EXPECT_EQ(updatesOf(u"   * A-1\n\n\tA (1), 1K\nMore, and more, and more\nlast"),
              std::vector{update("A", "1", "A", "1K")});
}

TEST(QKOSUpdateParser, ALineOfOneBlankIsALine) {
    EXPECT_TRUE(updatesOf(u"   * A-1\n \n\tA (1), 1K").empty());
    EXPECT_TRUE(updatesOf(u"   * A-1\n\t\n\tA (1), 1K").empty());
}

TEST(QKOSUpdateParser, TrimsBlanksAndTabsButNoOtherEnds) {
    EXPECT_EQ(updatesOf(u"   * \t A-1 \t\n \t A (1), 1K \t "), std::vector{update("A", "1", "A", "1K")});
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA (1), 1K\r"), std::vector{update("A", "1", "A", "1K\r")});
    EXPECT_TRUE(updatesOf(u"   * A-1\r\n\tA (1), 1K\r\n").empty());
}

TEST(QKOSUpdateParser, ALabelSplitsAtItsLastHyphen) {
    EXPECT_EQ(updatesOf(u"   * An-Example-Tool-2.1\n\tExample (2.1), 1K"),
              std::vector{update("An-Example-Tool", "2.1", "Example", "1K")});
}

TEST(QKOSUpdateParser, VersionsAreComparedAsTexts) {
    EXPECT_TRUE(updatesOf(u"   * A-1.0\n\tA (1), 1K").empty());
    EXPECT_TRUE(updatesOf(u"   * A-2.1-16G29\n\tA (2.1), 1K").empty());
    EXPECT_TRUE(updatesOf(u"   * A - 1\n\tA (1), 1K").empty());
    EXPECT_EQ(updatesOf(u"   * A - 1\n\tA ( 1), 1K"), std::vector{update("A ", " 1", "A", "1K")});
}

TEST(QKOSUpdateParser, ALabelWithoutAHyphenIsSkipped) {
    EXPECT_TRUE(updatesOf(u"   * A\n\tA (1), 1K").empty());
}

TEST(QKOSUpdateParser, AMissingParenthesisEmptiesTheVersion) {
    EXPECT_TRUE(updatesOf(u"   * A-1\n\tA (1, 1K").empty());
    EXPECT_EQ(updatesOf(u"   * A-\n\tA (1, 1K"), std::vector{update("A", "", "A", "1K")});
}

TEST(QKOSUpdateParser, SecondLinesWithNoneOrThreeCommasAreSkipped) {
    EXPECT_TRUE(updatesOf(u"   * A-1\n\tA, 1, 1K, more").empty());
    EXPECT_TRUE(updatesOf(u"   * A-1\n\tA (1) 1K").empty());
    EXPECT_TRUE(updatesOf(u"   * A-1\n\tA, B, 1, 1,024K").empty());
}

TEST(QKOSUpdateParser, ACommaInTheSizeMakesTheOlderForm) {
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA (1), 1,024K"), std::vector{update("A", "1", "A (1)", "24K")});
    EXPECT_TRUE(updatesOf(u"   * A-2\n\tA (2), 1,024K").empty());
}

TEST(QKOSUpdateParser, MarkersCountAnywhereInTheText) {
    EXPECT_EQ(updatesOf(u"preamble   * A-1\n\tA (1), 1K"), std::vector{update("A", "1", "A", "1K")});
    EXPECT_EQ(updatesOf(u"      * A-1\n\tA (1), 1K"), std::vector{update("A", "1", "A", "1K")});
}

TEST(QKOSUpdateParser, ADescriptionThatHoldsAMarkerIsTornApart) {
    EXPECT_TRUE(updatesOf(u"   * A-1\n\tA   - B (1), 1K").empty());
}

TEST(QKOSUpdateParser, WhereTheMarkersOverlapTheStarWins) {
    EXPECT_EQ(updatesOf(u"   -   * A-1\n\tA (1), 1K"), std::vector{update("A", "1", "A", "1K")});
}

TEST(QKOSUpdateParser, FlagsStandAnywhereInTheTailInAnyOrder) {
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA (1), 1K [restart] [recommended]"),
              std::vector{update("A", "1", "A", "1K", true, true)});
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA (1), 1K [other] x [recommended]"),
              std::vector{update("A", "1", "A", "1K", false, true)});
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA (1), 1K [Restart]"), std::vector{update("A", "1", "A", "1K")});
    EXPECT_EQ(updatesOf(u"   * A-1\n\tA [restart] (1), 1K"), std::vector{update("A", "1", "A [restart]", "1K")});
}

TEST(QKOSUpdateParser, AnyBracketEndsTheSize) {
    EXPECT_EQ(sizeOf(u"20480K [other]"), "20480K");
    EXPECT_EQ(sizeOf(u"20480K [unclosed"), "20480K");
    EXPECT_EQ(sizeOf(u"20480K[restart]"), "20480"); // the unit before the bracket goes, whatever it is
    EXPECT_EQ(sizeOf(u"[restart]"), "");
    EXPECT_EQ(sizeOf(u" [restart]"), "");
    EXPECT_EQ(sizeOf(u""), "");
}

TEST(QKOSUpdateParser, AFlagThatTheSkippedUnitsEatIsNone) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    EXPECT_EQ(parser->parseNewStyleSecondLine(text(u"A (1),[restart]")), secondLine("A", "1", "restart]"));
}

TEST(QKOSUpdateParser, FirstLines) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    EXPECT_EQ(parser->parseFirstLine(std::nullopt), std::nullopt);
    EXPECT_EQ(parser->parseFirstLine(""), std::nullopt);
    EXPECT_EQ(parser->parseFirstLine("label"), std::nullopt);
    EXPECT_EQ(parser->parseFirstLine(text(u"label\u20111")), std::nullopt); // only the ASCII hyphen
    EXPECT_EQ(parser->parseFirstLine("-"), (NSDictionary{{"name", ""}, {"version", ""}}));
    EXPECT_EQ(parser->parseFirstLine("a-b-1"), (NSDictionary{{"name", "a-b"}, {"version", "1"}}));
    EXPECT_EQ(parser->parseFirstLine("A - 1"), (NSDictionary{{"name", "A "}, {"version", " 1"}}));
}

TEST(QKOSUpdateParser, NewStyleSecondLines) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    EXPECT_EQ(parser->parseNewStyleSecondLine(std::nullopt), std::nullopt);
    EXPECT_EQ(parser->parseNewStyleSecondLine(""), std::nullopt);
    const struct {
        const char16_t* line;
        NSDictionary parsed;
    } rows[] = {
        {u"no comma (1)", secondLine("", "", "")},       {u"A (x) (1), 1K", secondLine("A", "x", "1K")},
        {u"A(1), 1K", secondLine("", "", "1K")}, // the blank is required
        {u"A (1) more, 1K", secondLine("A", "1", "1K")}, {u"A, 1K (1)", secondLine("", "", "1K (1)")},
        {u"A (1, 1K)", secondLine("A", "", "1K)")},      {u" (1), 1K", secondLine("", "1", "1K")},
        {u"A (1),", secondLine("A", "1", "")},           {u"A (1),x", secondLine("A", "1", "")},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(parser->parseNewStyleSecondLine(text(row.line)), row.parsed) << text(row.line).utf8Lossy();
    }
}

TEST(QKOSUpdateParser, OldStyleSecondLines) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    EXPECT_EQ(parser->parseOldStyleSecondLine(std::nullopt), std::nullopt);
    EXPECT_EQ(parser->parseOldStyleSecondLine(""), std::nullopt);
    const struct {
        const char16_t* line;
        NSDictionary parsed;
    } rows[] = {
        {u"no comma", secondLine("", "", "")}, {u"A, 1, 1K [restart]", secondLine("A", "1", "1K", true)},
        {u"A,1,1K", secondLine("A", "", "K")}, // the unit behind a comma is skipped unseen
        {u"A,,1K", secondLine("A", "", "")},   // also when it is the other comma
        {u"A, 1", secondLine("A", "", "")},    {u"A (1), 1, 1K", secondLine("A (1)", "1", "1K")},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(parser->parseOldStyleSecondLine(text(row.line)), row.parsed) << text(row.line).utf8Lossy();
    }
}

TEST(QKOSUpdateParser, UnitsOutsideTheBasicPlaneMayBeCutInHalf) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    const auto parsed = parser->parseNewStyleSecondLine(text(u"A (1),\U0001F600K"));
    EXPECT_EQ(*parsed->get<NSString>("size"), NSString(std::u16string_view(u"\xDE00K", 2)));
}

TEST(QKOSUpdateParser, CountsOccurrencesWithoutOverlaps) {
    const auto parser = QKOSUpdateParser::initWithString(std::nullopt);
    EXPECT_EQ(parser->numberOfOccurencesOfString(std::nullopt, "a"), 0U);
    EXPECT_EQ(parser->numberOfOccurencesOfString("a", std::nullopt), 0U);
    EXPECT_EQ(parser->numberOfOccurencesOfString("", "a"), 0U);
    EXPECT_EQ(parser->numberOfOccurencesOfString("a", ""), 0U);
    EXPECT_EQ(parser->numberOfOccurencesOfString("aa", "aaa"), 1U);
    EXPECT_EQ(parser->numberOfOccurencesOfString("aa", "aaaa"), 2U);
    EXPECT_EQ(parser->numberOfOccurencesOfString(",", "a,b,,c"), 3U);
}

TEST(QKOSUpdateParser, KeepsTheTextAsItWasGiven) {
    const auto parser = QKOSUpdateParser::initWithString("listing");
    EXPECT_EQ(parser->parsingString(), Value("listing"));
}

TEST(QKOSUpdateParser, IsDescribedForLookUpByName) {
    const auto parser = QKOSUpdateParser::initWithString(text(u"   * A-1\n\tA (1), 1K"));
    EXPECT_EQ(parser->performSelector("startParsing"), Value(true));
    EXPECT_EQ(parser->valueForKey("parsedObjects"), Value(NSArray{update("A", "1", "A", "1K")}));
    EXPECT_TRUE(parser->description().hasPrefix("<QKOSUpdateParser: 0x"));
    EXPECT_THROW((void)parser->valueForKey("unknown"), NSUndefinedKeyException);
}

TEST(QKOSUpdateParser, HugeListingsTakeLinearTime) {
    std::u16string listing;
    for (int entry = 0; entry < 20'000; ++entry) {
        listing += u"   * A-1\n\tA (1), 1K [recommended]\n";
    }
    EXPECT_EQ(updatesOf(listing).size(), 20'000U);
}

} // namespace
} // namespace qk
