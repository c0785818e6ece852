// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/FileAttributeKeys.h"

#include "tests/contracts/Contract.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>

#include <array>
#include <string_view>

namespace qk::tests {
namespace {

using platform::NSFileCreationDate;
using platform::NSFileExtendedAttributes;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

NSDictionary extended(const NSDictionary& attributes) {
    return NSDictionary{{NSFileExtendedAttributes, attributes}};
}

/// Standard folders, names and attributes.
class FileFactsContract : public Contract {
protected:
    FileFactsContract() { subject().makeFile(file_); }

    /// The extended attributes of the file; empty when there is no entry of them.
    [[nodiscard]] NSDictionary attached() const {
        const auto attributes = files().attributesOfItemAtPath(file_);
        const auto* found = attributes.value().get<NSDictionary>(NSFileExtendedAttributes);
        EXPECT_TRUE(found == nullptr || !found->isEmpty()) << "no entry rather than an empty one";
        return found != nullptr ? *found : NSDictionary();
    }
    /// False on a file system that keeps none; nothing can be told about them there.
    [[nodiscard]] bool keepsAttributes() { return files().setAttributes(extended({{"probe", NSData("x")}}), file_); }
    [[nodiscard]] platform::FileManager& files() const { return *machine_.fileManager; }
    [[nodiscard]] const NSString& file() const { return file_; }

private:
    NSString file_ = subject().emptyFolder() + "/file";
    platform::Services machine_ = subject().described();
};
INSTANTIATE_TEST_SUITE_P(Of, FileFactsContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(FileFactsContract, WhatIsNotThereHasNoAttributes) {
    const NSString missing = subject().emptyFolder() + "/missing";
    EXPECT_EQ(files().attributesOfItemAtPath(missing), std::nullopt);
    EXPECT_EQ(files().attributesOfItemAtPath(""), std::nullopt);
    EXPECT_FALSE(files().setAttributes(extended({{"a", NSData("x")}}), missing));
    EXPECT_EQ(files().getxattr(missing, "a", nullptr, 0), std::nullopt);
    EXPECT_EQ(files().getxattr(file(), "missing", nullptr, 0), std::nullopt);
}

TEST_P(FileFactsContract, FreshFileHasNoExtendedAttributes) {
    EXPECT_EQ(attached(), NSDictionary());
}

TEST_P(FileFactsContract, ExtendedAttributesAreThoseThatWereSetAndNoOthers) {
    if (!keepsAttributes()) {
        GTEST_SKIP() << "the file system keeps no attributes";
    }
    const NSDictionary two{{"one", NSData("1")}, {"empty", NSData()}};
    EXPECT_TRUE(files().setAttributes(extended(two), file()));
    EXPECT_EQ(attached(), two);
    EXPECT_TRUE(files().setAttributes(extended({{"one", NSData("changed")}}), file()));
    EXPECT_EQ(attached(), (NSDictionary{{"one", NSData("changed")}}));
    EXPECT_TRUE(files().setAttributes(NSDictionary(), file()));
    EXPECT_EQ(attached(), (NSDictionary{{"one", NSData("changed")}}));
    EXPECT_TRUE(files().setAttributes(extended({}), file()));
    EXPECT_EQ(attached(), NSDictionary());
}

TEST_P(FileFactsContract, CreationDateIsThatWhichWasSet) {
    if (!keepsAttributes()) {
        GTEST_SKIP() << "the file system keeps no attributes";
    }
    ASSERT_TRUE(files().setAttributes(extended({}), file()));
    for (const double seconds : {443779200.0, 1700000000.123456, -1.5, 0.0}) {
        const NSDate date = NSDate::dateWithTimeIntervalSince1970(seconds);
        EXPECT_TRUE(files().setAttributes({{NSFileCreationDate, date}}, file()));
        EXPECT_EQ(files().attributesOfItemAtPath(file()), (NSDictionary{{NSFileCreationDate, date}}));
    }
}

TEST_P(FileFactsContract, AttributeIsReadIntoTheRoomThatThereIs) {
    if (!keepsAttributes()) {
        GTEST_SKIP() << "the file system keeps no attributes";
    }
    ASSERT_TRUE(files().setAttributes(extended({{"name", NSData("value")}, {"empty", NSData()}}), file()));
    std::array<char, 8> room{};
    EXPECT_EQ(files().getxattr(file(), "name", nullptr, 0), 5U);
    EXPECT_EQ(files().getxattr(file(), "name", room.data(), 4), std::nullopt);
    EXPECT_EQ(files().getxattr(file(), "name", room.data(), 0), std::nullopt);
    EXPECT_EQ(files().getxattr(file(), "name", room.data(), room.size()), 5U);
    EXPECT_EQ(std::string_view(room.data()), "value");
    EXPECT_EQ(files().getxattr(file(), "empty", nullptr, 0), 0U);
    EXPECT_EQ(files().getxattr(file(), "empty", room.data(), room.size()), 0U);
}

TEST_P(FileFactsContract, NameIsTheLastPartOfThePath) {
    EXPECT_EQ(files().displayNameAtPath("/nowhere/Helper.app"), "Helper.app");
    EXPECT_EQ(files().displayNameAtPath("/nowhere/Helper.app/"), "Helper.app");
}

TEST_P(FileFactsContract, FoldersAreAbsoluteWithoutATrailingSlash) {
    std::vector<NSString> paths = {files().homeDirectory(), files().temporaryDirectory()};
    for (const auto directory : {NSCachesDirectory, NSApplicationSupportDirectory, NSDownloadsDirectory}) {
        for (const auto domain : {NSUserDomainMask, NSSystemDomainMask}) {
            const auto listed = files().searchPaths(directory, domain);
            paths.insert(paths.end(), listed.begin(), listed.end());
        }
    }
    for (const NSString& path : paths) {
        EXPECT_TRUE(path.isAbsolutePath()) << path.utf8Lossy();
        EXPECT_TRUE(path == "/" || !path.hasSuffix("/")) << path.utf8Lossy();
    }
}

TEST_P(FileFactsContract, FoldersOfAnUnknownKindAreNotListed) {
    EXPECT_TRUE(files().searchPaths(static_cast<NSSearchPathDirectory>(12345), NSUserDomainMask).empty());
    EXPECT_TRUE(files().searchPaths(NSCachesDirectory, static_cast<NSSearchPathDomainMask>(4)).empty());
}

} // namespace
} // namespace qk::tests
