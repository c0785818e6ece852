// SPDX-License-Identifier: Apache-2.0
// The helpers over the formats and the cryptography that a build with libraries for them has.
#include "QKFoundation/foundation/NSArray+plist.h"
#include "QKFoundation/foundation/NSData+Hash.h"
#include "QKFoundation/foundation/NSDictionary+PropertyList.h"
#include "QKFoundation/foundation/NSMutableDictionary+PropertyList.h"
#include "QKFoundation/foundation/NSString+OSStatus.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace qk {
namespace {

using platform::NSPropertyListFormat;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

constexpr auto kImmutable = platform::NSPropertyListMutabilityOptions::Immutable;

struct Codecs : testing::Test {
    Machine machine;
    ScopedMachine installed{machine};

    [[nodiscard]] NSData binary(const Value& value) const {
        return machine.services()
            ->propertyLists->dataWithPropertyList(value, NSPropertyListFormat::Binary_v1_0)
            .value();
    }
};

NSString list(std::string_view content) {
    return text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + std::string(content) +
                "</plist>");
}

TEST_F(Codecs, EmptyArrayComesBack) {
    const auto written = NSArray_plist::plistRepresentation({});
    ASSERT_TRUE(written.has_value());
    EXPECT_TRUE(written->hasPrefix("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(*written), NSArray());
}

TEST_F(Codecs, ArraysComeBackWithTheirKinds) {
    const NSArray array{"text <&> \u00E9",
                        "CR\rCRLF\r\nLF\n",
                        "",
                        0,
                        std::numeric_limits<std::int64_t>::min(),
                        std::numeric_limits<std::uint64_t>::max(),
                        true,
                        false,
                        1.5,
                        NSData(std::string_view("\0\x01\xFF", 3)),
                        NSDate::dateWithTimeIntervalSince1970(1479269100),
                        NSArray{NSArray{}, NSDictionary{}},
                        NSDictionary{{"key", "value"}, {"", 1}}};
    const auto read = NSArray_plist::arrayForPlistRepresentation(NSArray_plist::plistRepresentation(array).value());
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(*read, array);
    EXPECT_FALSE((*read)[3].as<NSNumber>()->isBoolean());
    EXPECT_TRUE((*read)[6].as<NSNumber>()->isBoolean());
    EXPECT_TRUE((*read)[8].as<NSNumber>()->isFloating());
    EXPECT_EQ((*read)[5].as<NSNumber>()->kind(), NSNumber::Kind::UnsignedInteger);
}

TEST_F(Codecs, ArrayThatNoListCanHoldIsNotWritten) {
    EXPECT_EQ(NSArray_plist::plistRepresentation({NSNull{}}), std::nullopt);
    EXPECT_EQ(NSArray_plist::plistRepresentation({NSString(u"\xD800")}), std::nullopt);
    EXPECT_EQ(NSArray_plist::plistRepresentation({NSArray{NSURL::URLWithString("http://h/").value()}}), std::nullopt);
}

TEST_F(Codecs, TextThatHoldsNoArrayIsNoArray) {
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(""), std::nullopt);
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(list("<dict/>")), std::nullopt);
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(list("<string>a</string>")), std::nullopt);
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(list("<array>")), std::nullopt);
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(list("<array/>")), NSArray());
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation("<plist version=\"1.0\"><array/>"), std::nullopt);
}

TEST_F(Codecs, AnyFormatIsRead) {
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation("(a, \"b c\")"), (NSArray{"a", "b c"}));
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation("{a = b;}"), std::nullopt);
    for (const auto format :
         {NSPropertyListFormat::OpenStep, NSPropertyListFormat::XML_v1_0, NSPropertyListFormat::Binary_v1_0}) {
        EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithData(binary(NSDictionary{{"a", 1}}), format, kImmutable),
                  Value(NSDictionary{{"a", 1}}));
        EXPECT_EQ(NSMutableDictionary_PropertyList::dictionaryWithData(NSData("{a = b;}"), format, kImmutable),
                  Value(NSDictionary{{"a", "b"}}));
    }
}

TEST_F(Codecs, LoneSurrogatesAreReadAsQuestionMarks) {
    const NSString lone = "<plist version=\"1.0\"><array><string>" + NSString(u"a\xD800") + "</string></array></plist>";
    EXPECT_EQ(NSArray_plist::arrayForPlistRepresentation(lone), NSArray{"a?"});
}

TEST_F(Codecs, WhatTheDataHoldIsReturnedWhateverItIs) {
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithData(NSData(list("<string>a</string>").utf8Lossy()),
                                                            NSPropertyListFormat::XML_v1_0, kImmutable),
              Value("a"));
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithData(NSData(), NSPropertyListFormat::XML_v1_0, kImmutable),
              std::nullopt);
    EXPECT_EQ(
        NSDictionary_PropertyList::dictionaryWithData(NSData("<plist"), NSPropertyListFormat::XML_v1_0, kImmutable),
        std::nullopt);
}

TEST_F(Codecs, FilesAreRead) {
    const NSDictionary dictionary{{"a", NSArray{1, true, "x"}}};
    machine.fileManager.addFile("/list", binary(dictionary));
    machine.fileManager.addFile("/broken", NSData("<plist"));
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithPropertyListAtPath("/missing"), std::nullopt);
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithPropertyListAtPath("/broken"), std::nullopt);
    EXPECT_EQ(NSDictionary_PropertyList::dictionaryWithPropertyListAtPath("/list"), Value(dictionary));
    EXPECT_EQ(NSMutableDictionary_PropertyList::dictionaryWithPropertyListAtPath("/list"), Value(dictionary));
}

TEST_F(Codecs, DigestOfKnownTexts) {
    EXPECT_EQ(NSData_Hash::sha1(NSData()), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(NSData_Hash::sha1(NSData("abc")), "a9993e364706816aba3e25717850c26c9cd0d89d");
    EXPECT_EQ(NSData_Hash::sha1(NSData(std::string(1'000'000, 'a'))), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST_F(Codecs, DigestOfTheMessagesOfCodeSigning) {
    std::string lines;
    for (std::int32_t code = -67072; code <= -67000; ++code) {
        lines += NSString_OSStatus::stringWithOSStatus(code).utf8Lossy() + "\n";
    }
    EXPECT_EQ(NSData_Hash::sha1(NSData(lines)), "48ab3cb4bc09f0e283a51c4c0658023c943ea37f")
        << "published texts do not change:\n"
        << lines;
}

} // namespace
} // namespace qk
