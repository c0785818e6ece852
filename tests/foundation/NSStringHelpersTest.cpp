// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Binary.h"
#include "QKFoundation/foundation/NSString+ByteCount.h"
#include "QKFoundation/foundation/NSString+Newlines.h"
#include "QKFoundation/foundation/NSString+OSStatus.h"
#include "QKFoundation/foundation/NSString+Versionnumber.h"
#include "QKFoundation/platform/objects/NSException.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace qk {
namespace {

using namespace NSString_Binary;
using namespace NSString_ByteCount;
using namespace NSString_Newlines;
using namespace NSString_OSStatus;
using namespace NSString_Versionnumber;

TEST(NSStringVersionnumber, EmptyVersionHasAMajorNumberOnly) {
    EXPECT_EQ(majorVersion(""), 0);
    EXPECT_THROW(static_cast<void>(minorVersion("")), NSRangeException);
    EXPECT_EQ(buildNumber(""), 0);
}

TEST(NSStringVersionnumber, NumbersAreTakenInOrder) {
    EXPECT_EQ(majorVersion("10.12.6"), 10);
    EXPECT_EQ(minorVersion("10.12.6"), 12);
    EXPECT_EQ(buildNumber("10.12.6"), 6);
    EXPECT_EQ(majorVersion("1.2.3"), 1);
    EXPECT_EQ(minorVersion("1.2.3"), 2);
    EXPECT_EQ(buildNumber("1.2.3"), 3);
    EXPECT_EQ(buildNumber("1.2.3.4"), 3);
}

TEST(NSStringVersionnumber, MinorVersionOfASingleNumberFails) {
    EXPECT_EQ(majorVersion("10"), 10);
    EXPECT_THROW(static_cast<void>(minorVersion("10")), NSRangeException);
    EXPECT_EQ(minorVersion("10."), 0);
}

TEST(NSStringVersionnumber, BuildNumberOfTwoNumbersFailsAndOfOneIsZero) {
    EXPECT_EQ(buildNumber("10"), 0);
    EXPECT_THROW(static_cast<void>(buildNumber("1.2")), NSRangeException);
    EXPECT_THROW(static_cast<void>(buildNumber("10.12")), NSRangeException);
    EXPECT_EQ(buildNumber("10.12."), 0);
}

TEST(NSStringVersionnumber, NumbersAreReadAsThePlatformReadsThem) {
    EXPECT_EQ(majorVersion(" -5x.7"), -5);
    EXPECT_EQ(minorVersion("x.12beta"), 12);
    EXPECT_EQ(majorVersion("x"), 0);
    EXPECT_EQ(buildNumber("..99999999999999999999"), std::numeric_limits<std::int64_t>::max());
}

TEST(NSStringNewlines, EmptyStaysEmpty) {
    EXPECT_EQ(stringByReplacingWindowsNewlinesWithUnixNewlines(""), "");
    EXPECT_EQ(stringByReplacingUnixNewlinesWithWindowsNewLines(""), "");
    EXPECT_EQ(stringByAppendingNullCharacter("").units(), std::u16string_view(u"\0", 1));
}

TEST(NSStringNewlines, WindowsNewlinesBecomeUnixNewlines) {
    EXPECT_EQ(stringByReplacingWindowsNewlinesWithUnixNewlines("a\r\nb\nc\rd\r\n"), "a\nb\nc\rd\n");
    EXPECT_EQ(stringByReplacingWindowsNewlinesWithUnixNewlines("\r\r\n"), "\r\n") << "one pass";
}

TEST(NSStringNewlines, UnixNewlinesBecomeWindowsNewlinesAndPairsAreNotDoubled) {
    EXPECT_EQ(stringByReplacingUnixNewlinesWithWindowsNewLines("a\r\nb\nc"), "a\r\nb\r\nc");
    EXPECT_EQ(stringByReplacingUnixNewlinesWithWindowsNewLines("\r\r\n"), "\r\r\n");
    EXPECT_EQ(stringByReplacingUnixNewlinesWithWindowsNewLines("a\rb"), "a\rb");
    EXPECT_EQ(stringByReplacingUnixNewlinesWithWindowsNewLines("\n\n"), "\r\n\r\n");
}

TEST(NSStringNewlines, NullCharacterIsAppended) {
    EXPECT_EQ(stringByAppendingNullCharacter("ab").units(), std::u16string_view(u"ab\0", 3));
    EXPECT_EQ(stringByAppendingNullCharacter(stringByAppendingNullCharacter("a")).length(), 3U);
}

TEST(NSStringBinary, All64BitsInGroupsOfEight) {
    EXPECT_EQ(binaryStringWithInteger(0), "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000");
    EXPECT_EQ(binaryStringWithInteger(5), "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000101");
    EXPECT_EQ(binaryStringWithInteger(std::numeric_limits<std::uint64_t>::max()),
              "11111111 11111111 11111111 11111111 11111111 11111111 11111111 11111111");
    EXPECT_EQ(binaryStringWithInteger(std::uint64_t{1} << 63U),
              "10000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000");
    EXPECT_EQ(binaryStringWithInteger(5).length(), 71U);
}

TEST(NSStringByteCount, CountsInUnitsOf1024) {
    EXPECT_EQ(stringWithByteCount(0), "Zero KB");
    EXPECT_EQ(stringWithByteCount(1023), "1,023 bytes");
    EXPECT_EQ(stringWithByteCount(1024), "1 KB");
    EXPECT_EQ(stringWithByteCount(12345678), "11.8 MB");
}

TEST(NSStringOSStatus, CodesWithoutTextGiveTheDefaultMessage) {
    EXPECT_EQ(stringWithOSStatus(0), "Error 0 while validating app bundle signature.");
    EXPECT_EQ(stringWithOSStatus(-67038), "Error -67038 while validating app bundle signature.");
    EXPECT_EQ(stringWithOSStatus(-67073), "Error -67073 while validating app bundle signature.");
    EXPECT_EQ(stringWithOSStatus(-66999), "Error -66999 while validating app bundle signature.");
    EXPECT_EQ(stringWithOSStatus(std::numeric_limits<std::int32_t>::min()),
              "Error -2147483648 while validating app bundle signature.");
    EXPECT_EQ(stringWithOSStatus(std::numeric_limits<std::int32_t>::max()),
              "Error 2147483647 while validating app bundle signature.");
}

TEST(NSStringOSStatus, CodesOfCodeSigningSayWhatTheyMean) {
    EXPECT_EQ(stringWithOSStatus(-67072), "Unimplemented code signing feature.");
    EXPECT_EQ(stringWithOSStatus(-67071), "Invalid API object reference.");
    EXPECT_EQ(stringWithOSStatus(-67062), "Code object is not signed at all.");
    EXPECT_EQ(stringWithOSStatus(-67061), "Invalid signature (code or signature have been modified).");
    EXPECT_EQ(stringWithOSStatus(-67050), "Code failed to satisfy specified code requirement(s).");
    EXPECT_EQ(stringWithOSStatus(-67039),
              "Host protocol violation - the given guest is not a guest of the given host.");
    EXPECT_EQ(stringWithOSStatus(-67037), "Operation inapplicable or not supported for this type of code.");
    EXPECT_EQ(stringWithOSStatus(-67018), "errSecCSVetoed");
    EXPECT_EQ(stringWithOSStatus(-67000), "Signature digest algorithm(s) specified are not supported.");
}

TEST(NSStringOSStatus, EveryCodeHasATextOfItsOwn) {
    std::set<NSString> texts;
    for (std::int32_t code = -67072; code <= -67000; ++code) {
        texts.insert(stringWithOSStatus(code));
    }
    EXPECT_EQ(texts.size(), 73U);
}

} // namespace
} // namespace qk
