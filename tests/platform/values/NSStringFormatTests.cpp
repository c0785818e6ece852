// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringFormat.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qk {
namespace {

using Arguments = std::vector<std::optional<Value>>;

NSString format(const NSString& text, const Arguments& arguments = {}) {
    return stringWithFormat(text, arguments);
}

TEST(NSStringFormat, NothingIsShownAsNull) {
    EXPECT_EQ(format("<%@ %1$@>", {std::nullopt}), "<(null) (null)>");
}

TEST(NSStringFormat, TheNullMarkerIsNotNothing) {
    EXPECT_EQ(format("%@", {Value(NSNull{})}), "<null>");
}

TEST(NSStringFormat, EmptyFormatIsEmpty) {
    EXPECT_EQ(format(""), "");
    EXPECT_EQ(format("", {Value("left out")}), "");
}

TEST(NSStringFormat, TextWithoutDirectivesIsKept) {
    EXPECT_EQ(format("plain \u00E9 text"), "plain \u00E9 text");
}

TEST(NSStringFormat, PlainDirectivesTakeTheArgumentsInOrder) {
    EXPECT_EQ(format("%@ and %@", {Value("a"), Value(7)}), "a and 7");
}

TEST(NSStringFormat, PositionalDirectivesTakeTheArgumentOfTheirNumber) {
    EXPECT_EQ(format("%2$@ of %1$@", {Value("3"), Value("10")}), "10 of 3");
    EXPECT_EQ(format("%1$@%1$@", {Value("x")}), "xx");
    EXPECT_EQ(format("%10$@", Arguments(9, Value("a"))), "%10$@");
    Arguments ten(9, Value("a"));
    ten.emplace_back("j");
    EXPECT_EQ(format("%10$@", ten), "j");
}

TEST(NSStringFormat, PositionsDoNotMoveTheOrderOfPlainDirectives) {
    EXPECT_EQ(format("%2$@%@%1$@%@", {Value("a"), Value("b")}), "baab");
}

TEST(NSStringFormat, TwoPercentSignsAreOne) {
    EXPECT_EQ(format("100%%"), "100%");
    EXPECT_EQ(format("%%%1$@", {Value("a")}), "%a");
    EXPECT_EQ(format("%%1$@", {Value("a")}), "%1$@");
    EXPECT_EQ(format("%%@", {Value("a")}), "%@");
}

TEST(NSStringFormat, WhatIsNoDirectiveIsKept) {
    for (const char* const text : {"%", "100 %", "% d", "%d", "%s", "%1", "%1$", "%1$d", "%3%", "%12% left", "%$@",
                                   "%-1$@", "%0$@", "%01$@", "%99999999999999999999999999$@", "%\u00E9"}) {
        EXPECT_EQ(format(qk::text(text), {Value("argument")}), qk::text(text));
    }
    EXPECT_EQ(format("%d%@", {Value("a")}), "%da");
    EXPECT_EQ(format("%1%@", {Value("a")}), "%1%@") << "the placeholder's second sign begins nothing";
}

TEST(NSStringFormat, DirectiveWithoutArgumentIsKept) {
    EXPECT_EQ(format("%@ %@ %3$@", {Value("a")}), "a %@ %3$@");
    EXPECT_EQ(format("%@"), "%@");
}

TEST(NSStringFormat, ArgumentsThatNoDirectiveAsksForAreLeftOut) {
    EXPECT_EQ(format("%1$@", {Value("a"), Value("b")}), "a");
}

TEST(NSStringFormat, ArgumentsAreNotExpandedAgain) {
    EXPECT_EQ(format("%@ %2$@", {Value("%2$@"), Value("%%")}), "%2$@ %%");
}

TEST(NSStringFormat, CollectionsAreShownAsTheirDescription) {
    const Value array = NSArray{"a", 1};
    EXPECT_EQ(format("%@", {array}), array.description());
}

TEST(NSStringFormat, LoneSurrogatesAndZerosSurvive) {
    const NSString odd{std::u16string_view(u"\xD800\0%@\xDC00", 5)};
    EXPECT_EQ(format(odd, {Value("a")}), NSString(std::u16string_view(u"\xD800\0a\xDC00", 4)));
}

TEST(NSStringFormat, TimeGoesWithTheLength) {
    // A number that is read again from each of its digits, or a text that is copied for each directive, takes minutes.
    std::u16string digits = u"%";
    digits.append(1'000'000, u'1');
    EXPECT_EQ(format(NSString(digits)), NSString(digits));
    std::u16string signs(1'000'001, u'%');
    EXPECT_EQ(format(NSString(signs)).length(), 500'001U);
    std::u16string directives;
    std::u16string placeholders;
    for (int count = 0; count < 300'000; ++count) {
        directives += u"%1$@";
        placeholders += u"%1%";
    }
    EXPECT_EQ(format(NSString(directives), {Value("ab")}).length(), 600'000U);
    EXPECT_EQ(format(NSString(placeholders), {Value("ab")}), NSString(placeholders));
}

} // namespace
} // namespace qk
