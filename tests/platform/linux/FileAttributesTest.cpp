// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileAttributes.h"

#include "QKFoundation/files/internal/FileNames.h"
#include "QKFoundation/platform/linux/LinuxServices.h"
#include "QKFoundation/platform/services/FileAttributeKeys.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;

/// A file on a file system that keeps attributes; skipped where the temporary folder's keeps none.
class FileAttributesOfLinux : public testing::Test {
protected:
    void SetUp() override {
        if (!set("user.probe", "x") || ::removexattr(file.c_str(), "user.probe") != 0) {
            GTEST_SKIP() << "the temporary folder's file system keeps no attributes";
        }
    }
    [[nodiscard]] bool set(const char* name, std::string_view value) const {
        return ::setxattr(file.c_str(), name, value.data(), value.size(), 0) == 0;
    }
    [[nodiscard]] std::string get(const char* name) const {
        std::string value(256, '\0');
        const ssize_t length = ::getxattr(file.c_str(), name, value.data(), value.size());
        return length < 0 ? "(none)" : value.substr(0, static_cast<std::size_t>(length));
    }
    [[nodiscard]] NSDictionary attached() const {
        const auto all = fileattributes::read(file);
        const auto* found = all.value().get<NSDictionary>(NSFileExtendedAttributes);
        return found != nullptr ? *found : NSDictionary();
    }
    [[nodiscard]] NSDate creationDate() const {
        return *fileattributes::read(file).value().get<NSDate>(NSFileCreationDate);
    }

    tests::TemporaryFolder folder;
    std::string file = folder.write("file", "content");
};

TEST_F(FileAttributesOfLinux, NamesStandWithoutTheKernelsNameSpace) {
    ASSERT_TRUE(set("user.one", "1"));
    EXPECT_EQ(attached(), (NSDictionary{{"one", NSData("1")}}));
    EXPECT_EQ(fileattributes::extendedAttribute(file, "one", nullptr, 0), 1U);
    EXPECT_EQ(fileattributes::extendedAttribute(file, "user.one", nullptr, 0), std::nullopt);
    ASSERT_TRUE(fileattributes::write(file, {{NSFileExtendedAttributes, NSDictionary{{"user.x", NSData("2")}}}}));
    EXPECT_EQ(get("user.user.x"), "2");
    EXPECT_EQ(get("user.one"), "(none)");
}

TEST_F(FileAttributesOfLinux, OtherNameSpacesAreLeftAlone) {
    if (!set("trusted.qk", "secret")) {
        GTEST_SKIP() << "not root";
    }
    EXPECT_EQ(attached(), NSDictionary());
    ASSERT_TRUE(fileattributes::write(file, {{NSFileExtendedAttributes, NSDictionary()}}));
    EXPECT_EQ(get("trusted.qk"), "secret");
}

TEST_F(FileAttributesOfLinux, CreationDateThatWasSetIsNoExtendedAttribute) {
    ASSERT_TRUE(fileattributes::write(file, {{NSFileCreationDate, NSDate::dateWithTimeIntervalSince1970(443779200)},
                                             {NSFileExtendedAttributes, NSDictionary{{"one", NSData("1")}}}}));
    EXPECT_EQ(get("user.qk.creation-date"), "443779200");
    EXPECT_EQ(attached(), (NSDictionary{{"one", NSData("1")}}));
    ASSERT_TRUE(fileattributes::write(file, {{NSFileExtendedAttributes, NSDictionary()}}));
    EXPECT_EQ(creationDate().timeIntervalSince1970(), 443779200) << "replacing the others does not take it away";
}

TEST_F(FileAttributesOfLinux, DateThatIsNoNumberCountsAsNotSet) {
    const auto before = fileattributes::read(file);
    for (const char* text : {"", "soon", "1 ", "nan", "inf", "1e999", "0x10"}) {
        ASSERT_TRUE(set("user.qk.creation-date", text));
        EXPECT_EQ(fileattributes::read(file), before) << text;
    }
}

TEST_F(FileAttributesOfLinux, MomentThatIsNoneIsNotSet) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(fileattributes::write(file, {{NSFileCreationDate, NSDate::dateWithTimeIntervalSince1970(nan)}}));
    EXPECT_EQ(get("user.qk.creation-date"), "(none)");
}

TEST_F(FileAttributesOfLinux, ValuesOfAnotherKindAreLeftOut) {
    EXPECT_TRUE(fileattributes::write(file, {{NSFileCreationDate, "yesterday"},
                                             {"NSFileSize", 5},
                                             {NSFileExtendedAttributes, NSDictionary{{"a", "text"}}}}));
    EXPECT_EQ(attached(), NSDictionary());
}

TEST_F(FileAttributesOfLinux, ValueThatDoesNotFitIsAFailureAndLeavesTheRest) {
    const std::string large(70'000, 'x'); // the kernel takes 65536
    EXPECT_FALSE(fileattributes::write(
        file, {{NSFileExtendedAttributes, NSDictionary{{"large", NSData(large)}, {"small", NSData("s")}}}}));
    EXPECT_EQ(attached(), (NSDictionary{{"small", NSData("s")}}));
}

TEST_F(FileAttributesOfLinux, NamesThatAreNotUTF8AreKept) {
    ASSERT_TRUE(set("user.caf\xE9", "1"));
    EXPECT_EQ(attached(), (NSDictionary{{NSString(u"caf\xDCE9"sv), NSData("1")}}));
    ASSERT_TRUE(fileattributes::write(
        file, {{NSFileExtendedAttributes, NSDictionary{{NSString(u"caf\xDCE9"sv), NSData("2")}}}}));
    EXPECT_EQ(get("user.caf\xE9"), "2");
}

TEST_F(FileAttributesOfLinux, LinkIsAskedItselfButItsTargetForOneAttribute) {
    ASSERT_TRUE(set("user.one", "1"));
    std::filesystem::create_symlink("file", folder.path("link"));
    const auto ofLink = fileattributes::read(folder.path("link"));
    EXPECT_EQ(ofLink.value().objectForKey(NSFileExtendedAttributes), nullptr);
    EXPECT_FALSE(
        fileattributes::write(folder.path("link"), {{NSFileCreationDate, NSDate::dateWithTimeIntervalSince1970(1)}}));
    EXPECT_EQ(fileattributes::extendedAttribute(folder.path("link"), "one", nullptr, 0), 1U);
    std::filesystem::create_symlink("nowhere", folder.path("broken"));
    EXPECT_TRUE(fileattributes::read(folder.path("broken")).has_value());
    EXPECT_EQ(fileattributes::extendedAttribute(folder.path("broken"), "one", nullptr, 0), std::nullopt);
}

TEST_F(FileAttributesOfLinux, ProgressOfARealFileIsMarkedAndCleared) {
    const Services services = makeLinuxServices();
    const NSString path = NSString::fromUTF8Lossy(file);
    const NSURL url = NSURL::fileURLWithPath(path).value();
    internal::showProgress(services, 0.25, url);
    EXPECT_EQ(get("user.com.apple.progress.fractionCompleted"), "(none)") << "it had no attributes at all";
    EXPECT_EQ(get("user.qk.creation-date"), "443779200");
    ASSERT_TRUE(set("user.other", "kept"));
    internal::showProgress(services, 0.25, url);
    EXPECT_EQ(get("user.com.apple.progress.fractionCompleted"), "0.250000");
    EXPECT_EQ(internal::extendedAttributeForName(services, "com.apple.progress.fractionCompleted", path), "0.250000");
    internal::showProgress(services, 1, url);
    EXPECT_EQ(get("user.com.apple.progress.fractionCompleted"), "(none)");
    EXPECT_EQ(get("user.other"), "kept");
    EXPECT_GT(creationDate().timeIntervalSince1970(), 1'700'000'000);
}

// The files of the kernel are there everywhere, and keep no attributes of users.
TEST(FileAttributesOfProc, FileSystemWithoutAttributesHasNoneAndIsNoError) {
    const std::string file = "/proc/self/comm";
    const auto attributes = fileattributes::read(file);
    ASSERT_TRUE(attributes.has_value());
    EXPECT_EQ(attributes->objectForKey(NSFileExtendedAttributes), nullptr);
    EXPECT_EQ(fileattributes::extendedAttribute(file, "one", nullptr, 0), std::nullopt);
    EXPECT_FALSE(fileattributes::write(file, {{NSFileCreationDate, NSDate::dateWithTimeIntervalSince1970(1)}}));
    EXPECT_TRUE(fileattributes::write(file, {{NSFileExtendedAttributes, NSDictionary()}})) << "there are none already";
}

} // namespace
} // namespace qk::platform
