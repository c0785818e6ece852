// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyList.h"

#include "QKFoundation/platform/linux/PropertyListGuard.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string document(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n" +
           content + "\n</plist>\n";
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

// A binary list of `objects` in this order, all offsets and references of one byte.
std::string binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto table = static_cast<char>(bytes.size());
    bytes += offsets;
    bytes += std::string(6, '\0') + "\x01\x01";
    bytes += std::string(7, '\0') + static_cast<char>(objects.size());
    bytes += std::string(8, '\0');
    bytes += std::string(7, '\0') + table;
    return bytes;
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
    const std::optional<Value> list = propertyList(binary({"\xD2\x01\x02\x03\x04",
                                                           "\x51"
                                                           "a",
                                                           "\x51"
                                                           "b",
                                                           "\x10\x07", "\xA2\x03\x05", "\x09"}));
    EXPECT_EQ(list, Value(NSDictionary{{"a", 7}, {"b", NSArray{7, true}}}));
}

TEST(PropertyListGuard, DepthIsLimited) {
    EXPECT_TRUE(isTameXMLPropertyList(document(repeated("<array>", 500) + repeated("</array>", 500))));
    EXPECT_FALSE(isTameXMLPropertyList(document(repeated("<array>", 600) + repeated("</array>", 600))));
    EXPECT_FALSE(isTameXMLPropertyList(repeated("<array>", 600)));
    EXPECT_EQ(propertyList("<plist version=\"1.0\">" + repeated("<array>", 1'000'000)), std::nullopt);
}

TEST(PropertyListGuard, ManyContainersSideBySideAreFine) {
    const std::string wide =
        document("<array>" + repeated("<dict><key>a</key><array></array></dict>\n", 5000) + "</array>");
    EXPECT_TRUE(isTameXMLPropertyList(wide));
    const std::optional<Value> list = propertyList(wide);
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->as<NSArray>()->count(), 5000U);
}

TEST(PropertyListGuard, DepthThatIsHiddenIsNotTrusted) {
    EXPECT_FALSE(isTameXMLPropertyList(document(repeated("<array><!--</array>-->", 600))));
    EXPECT_FALSE(isTameXMLPropertyList(document(repeated("<array><string a=\"</array>\"/>", 600))));
    EXPECT_FALSE(isTameXMLPropertyList(document(repeated("<array><string><![CDATA[</array>]]></string>", 600))));
    EXPECT_FALSE(isTameXMLPropertyList("<!-- <plist> -->" + repeated("<array x=\"</array>\">", 600)));
}

TEST(PropertyListGuard, BinaryCyclesAreRefused) {
    EXPECT_FALSE(isTameBinaryPropertyList(binary({"\xA1"
                                                  "\0"s})));
    EXPECT_EQ(propertyList(binary({"\xA1"
                                   "\0"s})),
              std::nullopt);
}

TEST(PropertyListGuard, BinaryThatUnfoldsWithoutEndIsRefused) {
    std::vector<std::string> levels;
    for (char level = 1; level < 40; ++level) {
        levels.push_back(std::string("\xA2") + level + level);
    }
    levels.emplace_back("\x09");
    EXPECT_FALSE(isTameBinaryPropertyList(binary(levels)));
    levels.erase(levels.begin(), levels.begin() + 30);
    EXPECT_FALSE(isTameBinaryPropertyList(binary(levels))) << "references beyond the end";
}

TEST(PropertyListGuard, BinaryThatPointsOutsideIsRefused) {
    EXPECT_FALSE(isTameBinaryPropertyList(binary({"\xA1\x01"})));
    EXPECT_FALSE(isTameBinaryPropertyList(binary({"\xAF\x10\xFF\x00"s})));
    EXPECT_FALSE(isTameBinaryPropertyList(binary({"\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"})));
    EXPECT_FALSE(isTameBinaryPropertyList(binary({"\xAF"})));
    EXPECT_TRUE(isTameBinaryPropertyList(binary({"\xA1\x01", "\x09"})));
}

} // namespace
} // namespace qk::platform
