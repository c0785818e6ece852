// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListWriting.h"

#include "QKFoundation/platform/linux/PropertyList.h"

#include "tests/platform/linux/PropertyListTexts.h"
#include "tests/platform/values/ProbeObject.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;

constexpr auto kXML = NSPropertyListFormat::XML_v1_0;
constexpr auto kBinary = NSPropertyListFormat::Binary_v1_0;

std::string xml(const Value& value) {
    const std::optional<NSData> data = dataOfPropertyList(value, kXML);
    return data.has_value() ? std::string(data->view()) : "nothing";
}

std::optional<Value> readBack(const Value& value, NSPropertyListFormat format) {
    const std::optional<NSData> data = dataOfPropertyList(value, format);
    return data.has_value() ? propertyList(data->view()) : std::nullopt;
}

NSDate date(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

TEST(PropertyListWriting, WhatNoListCanHoldIsNothing) {
    const NSString lone(u"a\xD83D"sv);
    const Value unwritable[] = {NSNull(),
                                *NSURL::URLWithString("file:///tmp"),
                                std::make_shared<ProbeObject>(1),
                                lone,
                                NSString(u"a\0b"sv),
                                date(NAN),
                                date(HUGE_VAL),
                                NSArray{1, NSNull()},
                                NSDictionary{{"a", NSArray{NSNull()}}},
                                NSDictionary{{lone, 1}},
                                NSDictionary{{NSString(u"a\0"sv), 1}}};
    for (const Value& value : unwritable) {
        EXPECT_EQ(dataOfPropertyList(value, kXML), std::nullopt) << value.description().utf8Lossy();
        EXPECT_EQ(dataOfPropertyList(value, kBinary), std::nullopt) << value.description().utf8Lossy();
    }
}

TEST(PropertyListWriting, OlderTextFormIsOnlyRead) {
    EXPECT_EQ(dataOfPropertyList("a", NSPropertyListFormat::OpenStep), std::nullopt);
    EXPECT_EQ(dataOfPropertyList("a", static_cast<NSPropertyListFormat>(0)), std::nullopt);
}

TEST(PropertyListWriting, XMLIsLaidOutByLevel) {
    const NSDictionary value{
        {"b", NSArray{1, NSArray(), NSDictionary()}}, {"a", "<&>\"'"}, {"c", NSData("\0\1\2"sv)}, {"d&", true}};
    EXPECT_EQ(xml(value), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                          "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                          "<plist version=\"1.0\">\n"
                          "<dict>\n"
                          "\t<key>a</key>\n"
                          "\t<string>&lt;&amp;&gt;\"'</string>\n"
                          "\t<key>b</key>\n"
                          "\t<array>\n"
                          "\t\t<integer>1</integer>\n"
                          "\t\t<array/>\n"
                          "\t\t<dict/>\n"
                          "\t</array>\n"
                          "\t<key>c</key>\n"
                          "\t<data>\n"
                          "\tAAEC\n"
                          "\t</data>\n"
                          "\t<key>d&amp;</key>\n"
                          "\t<true/>\n"
                          "</dict>\n"
                          "</plist>\n");
}

TEST(PropertyListWriting, XMLScalarsAreThoseOfThePlatform) {
    const auto line = [](const Value& value) {
        const std::string whole = xml(value);
        const std::size_t begin = whole.find("<plist version=\"1.0\">\n") + 22;
        return whole.substr(begin, whole.find("\n</plist>") - begin);
    };
    EXPECT_EQ(line(""), "<string></string>");
    EXPECT_EQ(line(false), "<false/>");
    EXPECT_EQ(line(-5), "<integer>-5</integer>");
    EXPECT_EQ(line(std::numeric_limits<std::int64_t>::min()), "<integer>-9223372036854775808</integer>");
    EXPECT_EQ(line(std::numeric_limits<std::uint64_t>::max()), "<integer>18446744073709551615</integer>");
    EXPECT_EQ(line(0.1), "<real>0.10000000000000001</real>");
    EXPECT_EQ(line(0.0), "<real>0.0</real>");
    EXPECT_EQ(line(NAN), "<real>nan</real>");
    EXPECT_EQ(line(HUGE_VAL), "<real>+infinity</real>");
    EXPECT_EQ(line(-HUGE_VAL), "<real>-infinity</real>");
    EXPECT_EQ(line(date(1479269100.75)), "<date>2016-11-16T04:05:00Z</date>");
    EXPECT_EQ(line(date(-0.5)), "<date>1969-12-31T23:59:59Z</date>") << "rounded down";
    EXPECT_EQ(line(date(64092211200)), "<date>4001-01-01T00:00:00Z</date>");
    EXPECT_EQ(line(date(-62135596800)), "<date>0001-01-01T00:00:00Z</date>");
    EXPECT_EQ(line(date(-30610224001)), "<date>0999-12-31T23:59:59Z</date>");
    EXPECT_EQ(line(NSArray{date(-62135596800), date(0), "<date>1"}),
              "<array>\n\t<date>0001-01-01T00:00:00Z</date>\n\t<date>1970-01-01T00:00:00Z</date>\n"
              "\t<string>&lt;date&gt;1</string>\n</array>");
    EXPECT_EQ(xml(date(-62167219201)), "nothing") << "before the year 0";
    EXPECT_EQ(xml(date(253402300800)), "nothing") << "five digits of a year";
}

TEST(PropertyListWriting, RootMayBeAnything) {
    for (const auto format : {kXML, kBinary}) {
        for (const Value& value : {Value("text"), Value(7), Value(true), Value(NSData("a"sv)), Value(NSArray()),
                                   Value(NSDictionary()), Value(date(0))}) {
            EXPECT_EQ(readBack(value, format), value);
        }
    }
}

TEST(PropertyListWriting, TextsKeepEveryCharacter) {
    for (const auto format : {kXML, kBinary}) {
        for (const Value& value :
             {Value("a\r\nb\rc\nd\t "), Value("  "), Value("\x01\x7F"), Value("&amp;&#13;]]><!--"), Value("Grüße 😀"),
              Value("\uFEFF\uFFFE\uFFFF"), Value("e\u0301"), Value(NSString(std::u16string(70000, u'x')))}) {
            EXPECT_EQ(readBack(value, format), value);
            const NSArray inside{value, NSDictionary{{*value.as<NSString>(), value}}};
            EXPECT_EQ(readBack(inside, format), Value(inside));
        }
    }
}

TEST(PropertyListWriting, NumbersKeepTheirKinds) {
    const NSArray numbers{true,
                          1,
                          1.0,
                          false,
                          0,
                          0.0,
                          -1,
                          std::numeric_limits<std::uint64_t>::max(),
                          std::uint64_t{1} << 63U,
                          std::numeric_limits<std::int64_t>::max(),
                          std::numeric_limits<std::int64_t>::min(),
                          0.1,
                          1e300,
                          5e-324,
                          NAN,
                          HUGE_VAL,
                          -HUGE_VAL,
                          255,
                          256,
                          65536,
                          std::int64_t{1} << 32U};
    for (const auto format : {kXML, kBinary}) {
        const std::optional<Value> list = readBack(numbers, format);
        ASSERT_EQ(list, Value(numbers));
        for (std::size_t index = 0; index < numbers.count(); ++index) {
            EXPECT_EQ((*list->as<NSArray>())[index].as<NSNumber>()->kind(), numbers[index].as<NSNumber>()->kind())
                << index;
        }
    }
}

TEST(PropertyListWriting, BinaryKeepsTheFractionOfDates) {
    const NSArray dates{date(978307200), date(978307200.25),    date(978307194.5),
                        date(-0.5),      date(64092211200.125), date(-62135596800)};
    EXPECT_EQ(readBack(dates, kBinary), Value(dates));
}

TEST(PropertyListWriting, DataOfAnyLengthIsKept) {
    for (std::size_t length : {0U, 1U, 2U, 3U, 14U, 15U, 50U, 51U, 52U, 255U, 256U, 70000U}) {
        const NSData data(std::string(length, '\xA5'));
        for (const auto format : {kXML, kBinary}) {
            EXPECT_EQ(readBack(NSDictionary{{"a", data}, {"b", NSArray{data}}}, format),
                      Value(NSDictionary{{"a", data}, {"b", NSArray{data}}}));
        }
    }
}

TEST(PropertyListWriting, ManyElementsAreKept) {
    std::vector<Value> values;
    std::vector<NSDictionary::Entry> entries;
    for (int index = 0; index < 70000; ++index) {
        values.emplace_back(index);
        if (index < 2000) {
            entries.emplace_back(NSString("Key ") + NSString::fromInteger(index), index);
        }
    }
    const NSDictionary value{{"array", NSArray(values)}, {"dictionary", NSDictionary(entries)}};
    for (const auto format : {kXML, kBinary}) {
        EXPECT_EQ(readBack(value, format), Value(value));
    }
}

TEST(PropertyListWriting, DepthIsThatOfReading) {
    NSArray nested;
    for (int level = 1; level < 512; ++level) {
        nested = NSArray{Value(nested)}; // not NSArray{nested}, which compilers read differently
    }
    for (const auto format : {kXML, kBinary}) {
        EXPECT_EQ(readBack(nested, format), Value(nested));
        EXPECT_EQ(dataOfPropertyList(NSArray{Value(nested)}, format), std::nullopt);
        EXPECT_EQ(dataOfPropertyList(NSDictionary{{"a", nested}}, format), std::nullopt);
    }
}

TEST(PropertyListWriting, NumbersHaveAPointInEveryLocale) {
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
        GTEST_SKIP() << "no locale with a comma";
    }
    const std::string written = xml(1.5);
    std::setlocale(LC_ALL, previous.c_str());
    EXPECT_NE(written.find("<real>1.5</real>"), std::string::npos);
}

} // namespace
} // namespace qk::platform
