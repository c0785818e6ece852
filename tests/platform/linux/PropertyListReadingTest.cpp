// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListReading.h"

#include "QKFoundation/platform/linux/PropertyList.h"

#include "tests/platform/linux/PropertyListTexts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using tests::binaryList;
using tests::document;
using tests::repeated;

bool isXMLList(std::string_view bytes) {
    return xmlPropertyList(bytes).has_value();
}

bool isBinaryList(std::string_view bytes) {
    return binaryPropertyList(bytes).has_value();
}

TEST(XMLPropertyList, WhatIsNoneIsNothing) {
    for (const std::string_view bytes :
         {""sv, " "sv, "x"sv, "<"sv, "<plist"sv, "<plist>"sv, "<plist/>"sv, "<plist></plist>"sv, "<plist> x</plist>"sv,
          "<plist><true/>"sv, "<plist><true/></plist"sv, "<array/>"sv, "<html></html>"sv, "<?xml"sv, "<!--"sv,
          "<!DOCTYPE plist"sv, "<plistx><true/></plist>"sv}) {
        EXPECT_FALSE(isXMLList(bytes)) << bytes;
    }
}

TEST(XMLPropertyList, PrologueAndEndMayBePlainOrFull) {
    for (const std::string_view bytes :
         {"<plist><true/></plist>"sv, " <plist version='1.0'>\n<true/> </plist> \n"sv,
          "<?xml version=\"1.0\"?><plist><true/></plist>"sv,
          "<!-- a --><!DOCTYPE plist SYSTEM \"x\"><!-- b --><plist><!-- c --><true/><!-- d --></plist><!-- e --> "sv,
          "<plist ><true /></plist\t>"sv, "<plist><true></true></plist>"sv}) {
        EXPECT_TRUE(isXMLList(bytes)) << bytes;
        EXPECT_EQ(propertyList(bytes), Value(true)) << bytes;
        EXPECT_EQ(propertyList("\xEF\xBB\xBF"s.append(bytes)), Value(true)) << bytes;
    }
}

TEST(XMLPropertyList, NothingElseIsThere) {
    for (const std::string_view bytes :
         {"<plist><true/></plist>x"sv, "<plist><true/></plist><plist><true/></plist>"sv,
          "<plist><true/><true/></plist>"sv, "x<plist><true/></plist>"sv, "<plist>x<true/></plist>"sv,
          "<plist><plist><true/></plist></plist>"sv, "<plist><true/></plist>\0"sv, "<plist><?a b?><true/></plist>"sv,
          "<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><true/></plist>"sv, "<plist <true/></plist>"sv,
          "<!-- a <plist><true/></plist>"sv}) {
        EXPECT_FALSE(isXMLList(bytes)) << bytes;
    }
}

TEST(XMLPropertyList, TagsAreKnownBalancedAndBare) {
    for (const char* content : {"<set/>",
                                "<True/>",
                                "<true>",
                                "</true>",
                                "<true>x</true>",
                                "<string>a",
                                "<string>a</key>",
                                "<array><true/>",
                                "<array></dict>",
                                "<array></array></array>",
                                "<string a='b'>x</string>",
                                "<array a=\"</array>\"/>",
                                "<string><b/></string>",
                                "<string><![CDATA[x</string>",
                                "<string><!-- x</string>",
                                "<string><!x></string>",
                                "<integer><![CDATA[1]]></integer>",
                                "< true/>",
                                "<true / >",
                                "<//true>",
                                "<key>a</key>"}) {
        EXPECT_FALSE(isXMLList(document(content))) << content;
    }
}

TEST(XMLPropertyList, DictionariesHavePairs) {
    EXPECT_TRUE(isXMLList(document("<dict> <!-- a --> <key>a</key> <!-- b --> <true/> </dict>")));
    for (const char* content :
         {"<dict><true/></dict>", "<dict><key>a</key></dict>", "<dict><key>a</key><key>b</key></dict>",
          "<dict><key>a</key><true/><true/></dict>", "<array><key>a</key></array>", "<dict>x</dict>",
          "<dict><key>a</key><dict><key>b</key></dict></dict>"}) {
        EXPECT_FALSE(isXMLList(document(content))) << content;
    }
}

TEST(XMLPropertyList, ReferencesAreCharacters) {
    for (const char* text : {"&", "&amp", "&x;", "&AMP;", "&#;", "&#x;", "&#0;", "&#xD800;", "&#xDFFF;", "&#x110000;",
                             "&#-1;", "&#1a;", "&#x0000000041;", "& amp;"}) {
        EXPECT_FALSE(isXMLList(document("<string>"s + text + "</string>"))) << text;
        EXPECT_FALSE(isXMLList(document("<dict><key>"s + text + "</key><true/></dict>"))) << text;
    }
}

TEST(XMLPropertyList, TextIsUTF8) {
    EXPECT_TRUE(isXMLList(document("<string>\xC3\xA9</string>")));
    EXPECT_FALSE(isXMLList(document("<string>\xE9</string>")));
    EXPECT_FALSE(isXMLList(document("<string>\xED\xA0\x80</string>")));
    EXPECT_FALSE(isXMLList(document("<string>a\0b</string>"s)));
}

TEST(XMLPropertyList, DepthIsLimited) {
    EXPECT_TRUE(isXMLList(document(repeated("<array>", 512) + repeated("</array>", 512))));
    EXPECT_TRUE(propertyList(document(repeated("<array>", 512) + repeated("</array>", 512))).has_value());
    EXPECT_FALSE(isXMLList(document(repeated("<array>", 513) + repeated("</array>", 513))));
    EXPECT_FALSE(isXMLList(document(repeated("<dict><key>a</key>", 600) + "<true/>" + repeated("</dict>", 600))));
    EXPECT_EQ(propertyList("<plist version=\"1.0\">" + repeated("<array>", 1'000'000)), std::nullopt);
}

TEST(XMLPropertyList, ManyContainersSideBySideAreFine) {
    const std::optional<Value> list =
        propertyList(document("<array>" + repeated("<dict><key>a</key><array></array></dict>\n", 5000) + "</array>"));
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->as<NSArray>()->count(), 5000U);
}

TEST(BinaryPropertyList, WhatIsNoneIsNothing) {
    for (const std::string_view bytes : {""sv, "bplist00"sv, "bplist00 and then some text that is no trailer"sv}) {
        EXPECT_FALSE(isBinaryList(bytes)) << bytes;
    }
    const std::string whole = binaryList({"\x09"});
    EXPECT_TRUE(isBinaryList(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(isBinaryList(whole.substr(0, length))) << length;
    }
    EXPECT_FALSE(isBinaryList("bplist01" + whole.substr(8)));
}

TEST(BinaryPropertyList, CyclesAreRefused) {
    EXPECT_FALSE(isBinaryList(binaryList({"\xA1\0"s})));
    EXPECT_FALSE(isBinaryList(binaryList({"\xA1\x01", "\xD1\x02\0"s, "Qa"})));
    EXPECT_EQ(propertyList(binaryList({"\xA1\0"s})), std::nullopt);
}

TEST(BinaryPropertyList, UnfoldingIsLimited) {
    std::vector<std::string> levels;
    for (char level = 1; level < 40; ++level) {
        levels.push_back(std::string("\xA2") + level + level);
    }
    levels.emplace_back("\x09");
    EXPECT_FALSE(isBinaryList(binaryList(levels)));
    levels.erase(levels.begin(), levels.begin() + 30);
    EXPECT_FALSE(isBinaryList(binaryList(levels))) << "references beyond the end";
}

TEST(BinaryPropertyList, OverlappingPartsAreLimitedOnTheWayDown) {
    // Each level has the same megabyte and the next level, so what they hold together is known at the very end.
    static constexpr std::size_t kLevels = 500;
    std::string bytes = "bplist00";
    std::vector<std::size_t> offsets;
    const auto two = [](std::size_t number) {
        return std::string{static_cast<char>(number >> 8U), static_cast<char>(number)};
    };
    for (std::size_t level = 0; level < kLevels; ++level) {
        offsets.push_back(bytes.size());
        bytes += "\xA2" + two(kLevels + level) + two(level + 1 < kLevels ? level + 1 : kLevels);
    }
    for (std::size_t level = 0; level < kLevels; ++level) {
        offsets.push_back(bytes.size());
        bytes += "\x4F\x12\x00\x10\x00\x00"s;
    }
    bytes.append(std::size_t{1} << 20U, 'x');
    const std::size_t table = bytes.size();
    for (const std::size_t offset : offsets) {
        bytes += two(offset);
    }
    bytes += std::string(6, '\0') + "\x02\x02" + std::string(6, '\0') + two(offsets.size()) + std::string(8, '\0') +
             std::string(5, '\0') + static_cast<char>(table >> 16U) + two(table & 0xFFFFU);
    EXPECT_FALSE(isBinaryList(bytes));
}

TEST(BinaryPropertyList, SharedPartsAreReadWhereverTheyAreNamed) {
    EXPECT_EQ(propertyList(binaryList({"\xA3\x01\x01\x02", "\xA1\x02", "\x10\x07"})),
              Value(NSArray{NSArray{7}, NSArray{7}, 7}));
}

TEST(BinaryPropertyList, DepthIsThatOfTheLongestWay) {
    // Each level names the next one twice, so most ways go through what is known already.
    std::vector<std::string> levels;
    for (char level = 1; level <= 20; ++level) {
        levels.push_back(std::string("\xA1") + level);
    }
    levels.emplace_back("\x09");
    EXPECT_TRUE(isBinaryList(binaryList(levels)));
}

TEST(BinaryPropertyList, WhatPointsOutsideIsRefused) {
    for (const std::string& object :
         {"\xA1\x01"s, "\xAF\x10\xFF\x00"s, "\xAF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\xAF"s, "\xAF\x20"s,
          "\x5F\x10\x40 x"s, "\x4F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\x6A"s, "\x11\x01"s, "\x33\x01"s,
          "\x23\x01"s, "\xDF\x13\x80\0\0\0\0\0\0\0"s}) {
        EXPECT_FALSE(isBinaryList(binaryList({object})));
    }
    EXPECT_TRUE(isBinaryList(binaryList({"\xA1\x01", "\x09"})));
}

TEST(BinaryPropertyList, KindsThatNoPropertyListHasAreRefused) {
    for (const std::string& object : {"\0"s, "\x0F"s, "\x15"s + std::string(32, '\0'), "\x21\0\0"s, "\x32\0\0\0\0"s,
                                      "\x71\x61"s, "\x80\x01"s, "\xB1\x01"s, "\xC1\x01"s, "\xE0"s}) {
        EXPECT_FALSE(isBinaryList(binaryList({object, "\x09"})));
    }
}

TEST(BinaryPropertyList, KeysAreTexts) {
    EXPECT_TRUE(isBinaryList(binaryList({"\xD1\x01\x02", "Qa", "\x09"})));
    EXPECT_TRUE(isBinaryList(binaryList({"\xD1\x01\x02", "a\0\xE9"s, "\x09"})));
    EXPECT_FALSE(isBinaryList(binaryList({"\xD1\x02\x01", "Qa", "\x09"})));
    EXPECT_FALSE(isBinaryList(binaryList({"\xD1\x01\x02", "Q\0"s, "\x09"})));
    EXPECT_FALSE(isBinaryList(binaryList({"\xD1\x01\x02", "Ca\0b"s, "\x09"})));
    EXPECT_FALSE(isBinaryList(binaryList({"\xD1\x01\x02", "\xA0", "\x09"})));
}

} // namespace
} // namespace qk::platform
