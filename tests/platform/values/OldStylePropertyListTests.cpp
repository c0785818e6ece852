// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/OldStylePropertyList.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::internal {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::optional<Value> text(std::u16string_view units) {
    return Value(NSString(units));
}

std::string repeated(std::string_view part, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += part;
    }
    return result;
}

TEST(OldStylePropertyList, NoBytesAreNothing) {
    EXPECT_EQ(oldStylePropertyList(""), std::nullopt);
}

TEST(OldStylePropertyList, BlanksAndCommentsAreAnEmptyDictionary) {
    for (const std::string_view bytes : {" "sv, "\n\t\r\f\v"sv, "// a"sv, "/* a \n b */ // c\n\u2028\u2029"sv, "/**/"sv,
                                         "\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "/* not closed"sv}) {
        EXPECT_EQ(oldStylePropertyList(bytes), Value(NSDictionary())) << bytes;
    }
}

TEST(OldStylePropertyList, EntriesNeedNoBraces) {
    const Value expected(NSDictionary{{"key", "text"}, {"other", "word"}});
    EXPECT_EQ(oldStylePropertyList("\"key\" = \"text\";\n'other'=word;"), expected);
    EXPECT_EQ(oldStylePropertyList("/* a */ key /* b */ = // c\n text /* d */ ; other = word; // e"), expected);
    EXPECT_EQ(oldStylePropertyList("{ key = text; other = word; }\n"), expected);
    EXPECT_EQ(oldStylePropertyList("{}"), Value(NSDictionary()));
}

TEST(OldStylePropertyList, KeyAloneIsItsOwnText) {
    EXPECT_EQ(oldStylePropertyList("key; \"Other key\" ; a = b;"),
              Value(NSDictionary{{"key", "key"}, {"Other key", "Other key"}, {"a", "b"}}));
    EXPECT_EQ(oldStylePropertyList("{ key; }"), Value(NSDictionary{{"key", "key"}}));
}

TEST(OldStylePropertyList, MissingSemicolonRefusesTheWholeFile) {
    for (const char* bytes : {"a = b", "a = b; c = d", "a = b c = d;", "a; b", "{ a = b }", "{ a }", "a = b; c"}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, LastOfTheSameKeysCounts) {
    EXPECT_EQ(oldStylePropertyList("a = 1; b = 2; a = 3;"), Value(NSDictionary{{"a", "3"}, {"b", "2"}}));
}

TEST(OldStylePropertyList, WordsNeedNoQuotes) {
    EXPECT_EQ(oldStylePropertyList("word"), Value("word"));
    EXPECT_EQ(oldStylePropertyList(" http://a.b-c/d_e$F:9 "), Value("http://a.b-c/d_e$F:9"));
    for (const char* bytes : {"a b", "ä", "a+b", "a,b", "=", ";", "}", ")", ">", "a = ;", "= b;", "*", "\\"}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, QuotesAreDoubleOrSingle) {
    EXPECT_EQ(oldStylePropertyList("\"it's // no /* comment */; 😀\n\""), Value("it's // no /* comment */; 😀\n"));
    EXPECT_EQ(oldStylePropertyList("'say \"a\"'"), Value("say \"a\""));
    EXPECT_EQ(oldStylePropertyList("\"\""), Value(""));
    for (const char* bytes : {"\"a", "'a\"", "\"a\\", "\"a\\\"", "\"", "\"a\" \"b\""}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, EscapesStandForCharacters) {
    EXPECT_EQ(oldStylePropertyList(R"("\a\b\f\n\r\t\v\"\\\'")"), text(u"\a\b\f\n\r\t\v\"\\'"));
    EXPECT_EQ(oldStylePropertyList("\"a\\\nb\""), text(u"a\nb"));
    EXPECT_EQ(oldStylePropertyList(R"("x\qy\u00e9\ä\😀")"), text(u"xqyu00e9ä😀")) << "others stand for themselves";
    EXPECT_EQ(oldStylePropertyList(R"('\'')"), text(u"'"));
}

TEST(OldStylePropertyList, OctalEscapesAreOfTheNextStepLatinCode) {
    EXPECT_EQ(oldStylePropertyList(R"("\101\60\1012\7\0")"), text(u"A0A2\a\0"sv));
    EXPECT_EQ(oldStylePropertyList(R"("\200\201\235\237\240\252\256\321\341\351\373\375\376\377")"),
              text(u"\u00A0Àµ÷©“ﬁ±ÆØßÿ\uFFFD\uFFFD"));
    EXPECT_EQ(oldStylePropertyList(R"("\501\8")"), text(u"A8")) << "eight bits; 8 is no octal digit";
}

TEST(OldStylePropertyList, UnitEscapesHaveUpToFourDigits) {
    EXPECT_EQ(oldStylePropertyList(R"("\U00e9\U00E9\U00410\U41\Ux")"), text(u"ééA0AUx"));
    EXPECT_EQ(oldStylePropertyList(R"("\Ud83d\Ude00")"), text(u"😀"));
    const char16_t lone[] = {u'a', 0xD83D, u'b'};
    EXPECT_EQ(oldStylePropertyList(R"("a\Ud83db")"), text({lone, 3})) << "\\Ud83d takes four digits, then b";
}

TEST(OldStylePropertyList, ArraysNest) {
    EXPECT_EQ(oldStylePropertyList("()"), Value(NSArray()));
    EXPECT_EQ(oldStylePropertyList("(a, b)"), Value(NSArray{"a", "b"}));
    EXPECT_EQ(oldStylePropertyList("( a , ( 'b' , {c = (d);} ) , /* x */ )"),
              Value(NSArray{"a", NSArray{"b", NSDictionary{{"c", NSArray{"d"}}}}}));
    for (const char* bytes : {"(", "(a", "(a b)", "(,a)", "(a,,b)", "(a;)", "(a) b", "(a))"}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, DataIsHexadecimal) {
    EXPECT_EQ(oldStylePropertyList("<>"), Value(NSData()));
    EXPECT_EQ(oldStylePropertyList("a = <0fBD 77\n00>;"), Value(NSDictionary{{"a", NSData("\x0F\xBD\x77\0"sv)}}));
    for (const char* bytes : {"<", "<0", "<0>", "<0 1>", "<0g>", "<01", "<plist>", "<?xml version=\"1.0\"?>"}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, OnlyOneValueStandsAlone) {
    for (const char* bytes : {"{} {}", "{} a", "() = b;", "<00> = b;", "a = b; {}", "a = b; }", "(a) = b;"}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(OldStylePropertyList, MarksTellTheEncoding) {
    const Value expected(NSDictionary{{"a", "é"}});
    EXPECT_EQ(oldStylePropertyList("a='é';"), expected);
    EXPECT_EQ(oldStylePropertyList("\xEF\xBB\xBF"
                                   "a='é';"),
              expected);
    const std::u16string units = u"a='é';";
    const std::u32string characters = U"a='é';";
    std::string little16;
    std::string big16;
    for (const char16_t unit : units) {
        little16 += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big16 += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    std::string little32;
    std::string big32;
    for (const char32_t character : characters) {
        little32 += {static_cast<char>(character), 0, 0, 0};
        big32 += {0, 0, 0, static_cast<char>(character)};
    }
    EXPECT_EQ(oldStylePropertyList("\xFF\xFE" + little16), expected);
    EXPECT_EQ(oldStylePropertyList("\xFE\xFF" + big16), expected);
    EXPECT_EQ(oldStylePropertyList(little16), expected) << "a zero among the first two bytes";
    EXPECT_EQ(oldStylePropertyList(big16), expected);
    EXPECT_EQ(oldStylePropertyList("\xFF\xFE\0\0"s + little32), expected);
    EXPECT_EQ(oldStylePropertyList("\0\0\xFE\xFF"s + big32), expected);
}

TEST(OldStylePropertyList, MalformedEncodingsAreRefused) {
    for (const std::string_view bytes :
         {"a = 'caf\xE9';"sv,
          "\xFF\xFE"
          "a"sv,
          "\xFF\xFE\x3D\xD8"sv, "\xFF\xFE\0\0a\0\0"sv, "\xFF\xFE\0\0\0\xD8\0\0"sv, "\0"sv}) {
        EXPECT_EQ(oldStylePropertyList(bytes), std::nullopt);
    }
}

TEST(OldStylePropertyList, DepthIsLimited) {
    constexpr std::size_t deepest = kDeepestOldStylePropertyList;
    EXPECT_TRUE(oldStylePropertyList(repeated("(", deepest) + repeated(")", deepest)).has_value());
    EXPECT_EQ(oldStylePropertyList(repeated("(", deepest + 2) + repeated(")", deepest + 2)), std::nullopt);
    EXPECT_EQ(oldStylePropertyList(repeated("(", 1'000'000)), std::nullopt);
    EXPECT_EQ(oldStylePropertyList(repeated("{a=", 1'000'000)), std::nullopt);
}

TEST(OldStylePropertyList, LargeTablesAreReadWhole) {
    std::string table;
    for (int index = 0; index < 5000; ++index) {
        table += "/* what it is */\n\"Key " + std::to_string(index) + "\" = \"Text \\\"" + std::to_string(index) +
                 "\\\"\";\n";
    }
    const std::optional<Value> list = oldStylePropertyList(table);
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->as<NSDictionary>()->count(), 5000U);
    EXPECT_EQ(*list->as<NSDictionary>()->objectForKey("Key 4711"), Value("Text \"4711\""));
}

} // namespace
} // namespace qk::internal
