// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include "tests/platform/linux/PropertyListTexts.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using tests::binaryList;
using tests::document;

std::optional<Value> fromXML(const std::string& content) {
    return propertyList(document(content));
}

TEST(PropertyList, WhatIsNoneIsNothing) {
    for (const std::string_view bytes :
         {""sv, "\0"sv, "bplist00"sv, "bplist00 and then some text that is no trailer"sv, "plain"sv, "<plist"sv,
          "<plist><dict><key>a</key><true/>"sv, "<html></html>"sv}) {
        EXPECT_EQ(propertyList(bytes), std::nullopt) << bytes;
    }
}

TEST(PropertyList, XMLKeepsTheKindsOfItsValues) {
    const std::optional<Value> list = propertyList(document(
        "<dict><key>text</key><string>Grüße &amp; &lt;more&gt;</string><key>yes</key><true/><key>no</key><false/>"
        "<key>small</key><integer>-5</integer><key>large</key><integer>18446744073709551615</integer>"
        "<key>least</key><integer>-9223372036854775808</integer><key>real</key><real>1.5</real>"
        "<key>date</key><date>2016-11-16T04:05:00Z</date><key>data</key><data>AAEC</data>"
        "<key>list</key><array><integer>1</integer><string></string><array/></array><key>empty</key><dict/></dict>"));
    const NSDictionary expected{{"text", "Grüße & <more>"},
                                {"yes", true},
                                {"no", false},
                                {"small", -5},
                                {"large", UINT64_MAX},
                                {"least", INT64_MIN},
                                {"real", 1.5},
                                {"date", NSDate::dateWithTimeIntervalSince1970(1479269100)},
                                {"data", NSData("\0\1\2"sv)},
                                {"list", NSArray{1, NSString(), NSArray()}},
                                {"empty", NSDictionary()}};
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(*list, Value(expected));
    const auto* dictionary = list->as<NSDictionary>();
    EXPECT_TRUE(dictionary->get<NSNumber>("yes")->isBoolean());
    EXPECT_TRUE(dictionary->get<NSNumber>("real")->isFloating());
    EXPECT_EQ(dictionary->get<NSNumber>("large")->kind(), NSNumber::Kind::UnsignedInteger);
    EXPECT_EQ(dictionary->get<NSNumber>("least")->kind(), NSNumber::Kind::Integer);
}

TEST(PropertyList, BinaryIsReadToo) {
    const std::optional<Value> list = propertyList(binaryList({"\xD2\x01\x02\x03\x04",
                                                               "\x51"
                                                               "a",
                                                               "\x51"
                                                               "b",
                                                               "\x10\x07", "\xA2\x03\x05", "\x09"}));
    EXPECT_EQ(list, Value(NSDictionary{{"a", 7}, {"b", NSArray{7, true}}}));
}

TEST(PropertyList, TextsKeepEveryCharacter) {
    EXPECT_EQ(fromXML("<string>  a\r\nb\rc\td \x01 </string>"), Value("  a\r\nb\rc\td \x01 "));
    EXPECT_EQ(fromXML("<string> </string>"), Value(" "));
    EXPECT_EQ(fromXML("<string></string>"), Value(""));
    EXPECT_EQ(fromXML("<string/>"), Value(""));
    EXPECT_EQ(fromXML("<string>&lt;&gt;&amp;&quot;&apos;&amp;lt;&#65;&#xe9;&#13;&#x1F600;&#x10FFFF;</string>"),
              Value("<>&\"'&lt;Aé\r😀\U0010FFFF"));
    EXPECT_EQ(fromXML("<string>a<![CDATA[<b>&amp;]]> c<!-- d -->e</string>"), Value("a<b>&amp; ce"));
    EXPECT_EQ(fromXML("<string>\uFEFF]]>\uFFFF</string>"), Value("\uFEFF]]>\uFFFF"));
}

TEST(PropertyList, KeysAreTexts) {
    EXPECT_EQ(fromXML("<dict><key/><true/></dict>"), Value(NSDictionary{{"", true}}));
    EXPECT_EQ(fromXML("<dict><key></key><true/></dict>"), Value(NSDictionary{{"", true}}));
    EXPECT_EQ(fromXML("<dict><key> a&amp;<![CDATA[<]]></key><true/></dict>"), Value(NSDictionary{{" a&<", true}}));
}

TEST(PropertyList, LastOfTheSameKeysCounts) {
    EXPECT_EQ(fromXML("<dict><key>a</key><true/><key>b</key><true/><key>a</key><string>x</string></dict>"),
              Value(NSDictionary{{"a", "x"}, {"b", true}}));
    EXPECT_EQ(propertyList(binaryList({"\xD2\x01\x01\x02\x03",
                                       "\x51"
                                       "a",
                                       "\x08", "\x09"})),
              Value(NSDictionary{{"a", true}}));
}

TEST(PropertyList, IntegersAreDecimalOrHexadecimal) {
    const auto integer = [](const std::string& text) { return fromXML("<integer>" + text + "</integer>"); };
    EXPECT_EQ(integer(" \r\n\t7 "), Value(7));
    EXPECT_EQ(integer("+7"), Value(7));
    EXPECT_EQ(integer("0x1F"), Value(31));
    EXPECT_EQ(integer("-0X1f"), Value(-31));
    EXPECT_EQ(integer("010"), Value(10)) << "never octal";
    EXPECT_EQ(integer("-0099"), Value(-99));
    EXPECT_EQ(integer("000"), Value(0));
    EXPECT_EQ(integer("0000000000000000000000000018446744073709551615"), Value(UINT64_MAX));
    EXPECT_EQ(integer("9223372036854775808"), Value(std::uint64_t{1} << 63U));
    EXPECT_EQ(integer("-9223372036854775808"), Value(INT64_MIN));
    for (const char* text :
         {"", " ", "+", "x", "1 2", "1.5", "- 7", "0x", "18446744073709551616", "-9223372036854775809", "1<!-- -->2"}) {
        EXPECT_EQ(integer(text), std::nullopt) << text;
    }
    EXPECT_EQ(fromXML("<integer/>"), std::nullopt);
}

TEST(PropertyList, LeadingZerosAndEmptyKeysStandAmongOthers) {
    EXPECT_EQ(fromXML("<array><string>01</string><integer>01</integer><dict><key/><integer> -02 "
                      "</integer></dict><integer>3</integer></array>"),
              Value(NSArray{"01", 1, NSDictionary{{"", -2}}, 3}));
}

TEST(PropertyList, RealNumbersHaveAPointInEveryLocale) {
    const auto real = [](const std::string& text) { return fromXML("<real>" + text + "</real>"); };
    EXPECT_EQ(real("1.5"), Value(1.5));
    EXPECT_EQ(real(" -1e3\n"), Value(-1000.0));
    EXPECT_EQ(real(".5"), Value(0.5));
    EXPECT_EQ(real("5e-324"), Value(5e-324));
    EXPECT_EQ(real("+infinity"), Value(HUGE_VAL));
    EXPECT_EQ(real("-inf"), Value(-HUGE_VAL));
    EXPECT_EQ(real("nan"), Value(NAN));
    EXPECT_TRUE(real("1")->as<NSNumber>()->isFloating());
    for (const char* text : {"", "x", ".", "1,5", "1e", "0x10", "1 2", "nano"}) {
        EXPECT_EQ(real(text), std::nullopt) << text;
    }
    EXPECT_EQ(fromXML("<real/>"), std::nullopt);
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {
        EXPECT_EQ(real("1.5"), Value(1.5));
        std::setlocale(LC_ALL, previous.c_str());
    }
}

TEST(PropertyList, DatesOfAllYearsAreExact) {
    const auto date = [](const std::string& text) { return fromXML("<date>" + text + "</date>"); };
    const auto moment = [](double seconds) { return Value(NSDate::dateWithTimeIntervalSince1970(seconds)); };
    EXPECT_EQ(date("2016-11-16T04:05:00Z"), moment(1479269100));
    EXPECT_EQ(date(" 2000-12-31T23:59:59Z\n"), moment(978307199));
    EXPECT_EQ(date("1969-12-31T23:59:59Z"), moment(-1));
    EXPECT_EQ(date("4001-01-01T00:00:00Z"), moment(64092211200));
    EXPECT_EQ(date("0001-01-01T00:00:00Z"), moment(-62135596800));
    EXPECT_EQ(date("9999-12-31T23:59:59Z"), moment(253402300799));
    EXPECT_EQ(fromXML("<array><date>4001-01-01T00:00:00Z</date><date>2001-01-01T00:00:01Z</date></array>"),
              Value(NSArray{moment(64092211200), moment(978307201)}));
    for (const char* text : {"", "2016-11-16", "2016-11-16T04:05:00", "2016-02-30T00:00:00Z", "2016-13-01T00:00:00Z",
                             "2016-11-16T24:00:00Z", "2016-11-16T23:60:00Z", "2016-11-16T23:59:60Z",
                             "2016-11-16 04:05:00Z", "-016-11-16T04:05:00Z"}) {
        EXPECT_EQ(date(text), std::nullopt) << text;
    }
}

TEST(PropertyList, DataIsBase64WithSpacesAnywhere) {
    const auto data = [](const std::string& text) { return fromXML("<data>" + text + "</data>"); };
    EXPECT_EQ(data(""), Value(NSData()));
    EXPECT_EQ(fromXML("<data/>"), Value(NSData()));
    EXPECT_EQ(data("\n\tAA\n\tEC\n"), Value(NSData("\0\1\2"sv)));
    EXPECT_EQ(data("AAE="), Value(NSData("\0\1"sv)));
    EXPECT_EQ(data("A A = ="), Value(NSData("\0"sv)));
    EXPECT_EQ(data("+/+/"), Value(NSData("\xFB\xFF\xBF"sv)));
    for (const char* text : {"A", "AA", "AAE", "A===", "AA=A", "AA==AAEC", "A-EC", "AAEC="}) {
        EXPECT_EQ(data(text), std::nullopt) << text;
    }
}

TEST(PropertyList, BinaryNumbersKeepTheirKinds) {
    const auto list = [](const std::string& object) { return propertyList(binaryList({object})); };
    EXPECT_EQ(list("\x10\xFF"), Value(255)) << "the short ones have no sign";
    EXPECT_EQ(list("\x11\xFF\xFE"), Value(65534));
    EXPECT_EQ(list("\x12\xFF\xFF\xFF\xFE"), Value(4294967294));
    EXPECT_EQ(list("\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"), Value(-2));
    EXPECT_EQ(list("\x14"s + std::string(8, '\0') + std::string(8, '\xFF')), Value(UINT64_MAX));
    EXPECT_EQ(list("\x14"s + std::string(16, '\xFF')), std::nullopt);
    EXPECT_EQ(list("\x22\x3F\xC0\0\0"s), Value(1.5));
    EXPECT_EQ(list("\x23\x3F\xF8\0\0\0\0\0\0"s), Value(1.5));
    EXPECT_TRUE(list("\x22\x3F\x80\0\0"s)->as<NSNumber>()->isFloating());
    EXPECT_TRUE(list("\x09")->as<NSNumber>()->isBoolean());
}

TEST(PropertyList, BinaryDatesKeepTheirFraction) {
    EXPECT_EQ(propertyList(binaryList({"\x33\xC0\x16\0\0\0\0\0\0"s})),
              Value(NSDate::dateWithTimeIntervalSince1970(978307194.5)));
    EXPECT_EQ(
        propertyList(binaryList({"\xA2\x01\x02", "\x33\x42\x2D\x63\xC3\x7F\0\0\0"s, "\x33\xBF\xF0\0\0\0\0\0\0"s})),
        Value(NSArray{NSDate::dateWithTimeIntervalSince1970(64092211200),
                      NSDate::dateWithTimeIntervalSince1970(978307199)}));
}

TEST(PropertyList, BinaryTextsAreASCIIOrUTF16) {
    const auto list = [](const std::string& object) { return propertyList(binaryList({object})); };
    EXPECT_EQ(list("P"), Value(""));
    EXPECT_EQ(list("Ta\r\n\x01"), Value("a\r\n\x01"));
    EXPECT_EQ(list("_\x10\x10"s + std::string(16, 'x')), Value("xxxxxxxxxxxxxxxx"));
    EXPECT_EQ(list("e\0\xE9\xD8\x3D\xDE\0\xFE\xFF\xFF\xFF"s), Value("é😀\uFEFF\uFFFF"));
    EXPECT_EQ(list("C\0\1\2"s), Value(NSData("\0\1\2"sv)));
    for (const std::string& object :
         {"Q\xE9"s, "Qa\0"s.substr(0, 1), "Q\0"s, "a\0\0"s, "a\xD8\x00"s, "b\xDC\0\xD8\0"s, "b\xD8\0\0a"s}) {
        EXPECT_EQ(list(object), std::nullopt);
    }
}

} // namespace
} // namespace qk::platform
