// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSURL+QueryParsing.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qk::NSURL_QueryParsing;

namespace qk {
namespace {

NSURL url(std::string_view query) {
    return NSURL::URLWithString(text("http://host/path" + std::string(query))).value();
}

std::optional<NSString> find(std::string_view query, const NSString& name) {
    return stringForQueryParameter(url(query), name);
}

TEST(NSURLQueryParsing, NoQueryHasNoParameters) {
    EXPECT_EQ(find("", "a"), std::nullopt);
    EXPECT_EQ(find("?", "a"), std::nullopt);
    EXPECT_EQ(find("#a=1", "a"), std::nullopt) << "the fragment is no query";
    EXPECT_EQ(numberForQueryParameter(url(""), "a"), std::nullopt);
}

TEST(NSURLQueryParsing, LastMatchWinsWhateverItsLetterCase) {
    EXPECT_EQ(find("?a=1&A=2&b", "a"), "2");
    EXPECT_EQ(find("?a=1&A=2&b", "A"), "2");
}

TEST(NSURLQueryParsing, PartsThatAreNoPairsAreSkipped) {
    EXPECT_EQ(find("?a=1&A=2&b", "b"), std::nullopt);
    EXPECT_EQ(find("?x=1=2", "x"), std::nullopt);
    EXPECT_EQ(find("?x==", "x"), std::nullopt);
    EXPECT_EQ(find("?x=1&x=2=3&x", "x"), "1") << "a skipped part takes nothing back";
    EXPECT_EQ(find("?&&x=1&", "x"), "1");
}

TEST(NSURLQueryParsing, EmptyNamesAndValuesCount) {
    EXPECT_EQ(find("?a=", "a"), "");
    EXPECT_EQ(find("?=v", ""), "v");
    EXPECT_EQ(find("?a=1&a=", "a"), "");
}

TEST(NSURLQueryParsing, EscapesAreRemovedAfterTheCut) {
    EXPECT_EQ(find("?a=1%3D2%26b%3D3&c%3Dd=4", "a"), "1=2&b=3");
    EXPECT_EQ(find("?a=1%3D2%26b%3D3&c%3Dd=4", "c=d"), "4");
    EXPECT_EQ(find("?%61=x", "a"), "x");
    EXPECT_EQ(find("?%61=x", "%61"), std::nullopt) << "the name asked for has no escapes";
    EXPECT_EQ(find("?a=%2541", "a"), "%41") << "once";
    EXPECT_EQ(find("?a=%F0%9F%98%80", "a"), NSString(u"\U0001F600"));
}

TEST(NSURLQueryParsing, OtherMarksMeanThemselves) {
    EXPECT_EQ(find("?a=1+2;b=3?", "a"), std::nullopt) << "two signs";
    EXPECT_EQ(find("?a=1+2;b?c", "a"), "1+2;b?c");
    EXPECT_EQ(find("?a=1#a=2", "a"), "1");
}

TEST(NSURLQueryParsing, NamesMatchWithoutRegardToCaseBeyondASCII) {
    EXPECT_EQ(find("?%C3%84=1", NSString(u"\u00E4")), "1");
    EXPECT_EQ(find("?%CE%A9=1", NSString(u"\u03C9")), "1");
    EXPECT_EQ(find("?%D0%AF=1", NSString(u"\u044F")), "1");
    EXPECT_EQ(find("?%F0%90%90%80=1", NSString(u"\U00010428")), "1");
    EXPECT_EQ(find("?ss=1", NSString(u"\u00DF")), std::nullopt);
    EXPECT_EQ(find("?e=1", NSString(u"e\u0301")), std::nullopt);
}

TEST(NSURLQueryParsing, ValueThatCannotBeDecodedIsNothingAndStillWins) {
    EXPECT_EQ(find("?a=1&a=%FF", "a"), std::nullopt);
    EXPECT_EQ(find("?a=%FF&a=1", "a"), "1");
}

TEST(NSURLQueryParsing, NameThatCannotBeDecodedMatchesNothing) {
    EXPECT_EQ(find("?a=1&%FF=2", "a"), "1");
    EXPECT_EQ(find("?%FF=2", NSString(u"\u00FF")), std::nullopt);
    EXPECT_EQ(find("?%FF=2", ""), std::nullopt);
}

TEST(NSURLQueryParsing, NumbersAreReadFromTheValue) {
    EXPECT_EQ(numberForQueryParameter(url("?n=12"), "n"), NSNumber(12));
    EXPECT_EQ(numberForQueryParameter(url("?n=-12x"), "n"), NSNumber(-12));
    EXPECT_EQ(numberForQueryParameter(url("?n=%20%2B7"), "n"), NSNumber(7));
    EXPECT_EQ(numberForQueryParameter(url("?n=99999999999999999999"), "n"),
              NSNumber(std::numeric_limits<std::int64_t>::max()));
}

TEST(NSURLQueryParsing, ValueWithoutDigitsIsTheNumberZero) {
    EXPECT_EQ(numberForQueryParameter(url("?n="), "n"), NSNumber(0));
    EXPECT_EQ(numberForQueryParameter(url("?n=abc"), "n"), NSNumber(0));
    EXPECT_EQ(numberForQueryParameter(url("?n"), "n"), std::nullopt);
    EXPECT_EQ(numberForQueryParameter(url("?n=%FF"), "n"), std::nullopt);
}

} // namespace
} // namespace qk
