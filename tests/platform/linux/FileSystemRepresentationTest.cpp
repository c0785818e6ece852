// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;

TEST(FileSystemRepresentation, EmptyStringIsEmpty) {
    EXPECT_EQ(fileSystemRepresentation(NSString()), "");
    EXPECT_EQ(stringWithFileSystemRepresentation(""), NSString());
}

TEST(FileSystemRepresentation, CharactersAreUTF8) {
    EXPECT_EQ(fileSystemRepresentation("/tmp/Grüße/漢字/😀"), "/tmp/Grüße/漢字/😀");
    EXPECT_EQ(stringWithFileSystemRepresentation("/tmp/Grüße/漢字/😀"), "/tmp/Grüße/漢字/😀");
}

TEST(FileSystemRepresentation, ZeroHasNone) {
    EXPECT_EQ(fileSystemRepresentation(NSString(u"a\0b"sv)), std::nullopt);
}

TEST(FileSystemRepresentation, LoneSurrogateStandsForAByteOrForNothing) {
    EXPECT_EQ(fileSystemRepresentation(NSString(u"a\xDCFF"sv)), "a\xFF");
    EXPECT_EQ(fileSystemRepresentation(NSString(u"\xDC80"sv)), "\x80");
    EXPECT_EQ(fileSystemRepresentation(NSString(u"\xDC7F"sv)), std::nullopt);
    EXPECT_EQ(fileSystemRepresentation(NSString(u"\xDD00"sv)), std::nullopt);
    EXPECT_EQ(fileSystemRepresentation(NSString(u"\xD83D"sv)), std::nullopt);
    EXPECT_EQ(fileSystemRepresentation(NSString(u"\xD83D\xD83D\xDE00"sv)), std::nullopt);
}

TEST(FileSystemRepresentation, EachMalformedByteIsALoneSurrogate) {
    EXPECT_EQ(stringWithFileSystemRepresentation("caf\xE9"), NSString(u"caf\xDCE9"sv));
    EXPECT_EQ(stringWithFileSystemRepresentation("\xE2\x82x"), NSString(u"\xDCE2\xDC82x"sv));
    EXPECT_EQ(stringWithFileSystemRepresentation("\xED\xA0\x80"), NSString(u"\xDCED\xDCA0\xDC80"sv)) << "a surrogate";
    EXPECT_EQ(stringWithFileSystemRepresentation("\xC0\xAF"), NSString(u"\xDCC0\xDCAF"sv)) << "too long a form";
    EXPECT_EQ(stringWithFileSystemRepresentation("\xF4\x90\x80\x80"), NSString(u"\xDCF4\xDC90\xDC80\xDC80"sv));
    EXPECT_EQ(stringWithFileSystemRepresentation("😀\xFF\xF0\x9F"), NSString(u"😀\xDCFF\xDCF0\xDC9F"sv));
}

RC_GTEST_PROP(FileSystemRepresentation, BytesSurviveTheWayThere, ()) {
    const auto bytes = *rc::gen::container<std::string>(
        rc::gen::oneOf(rc::gen::inRange<char>(1, 127), rc::gen::inRange<char>(-128, 0),
                       rc::gen::element<char>('\xE2', '\x82', '\xAC', '\xF0', '\x9F', '\x98', '\x80', '\xED', '\xA0')));
    RC_ASSERT(fileSystemRepresentation(stringWithFileSystemRepresentation(bytes)) == bytes);
}

} // namespace
} // namespace qk::platform
