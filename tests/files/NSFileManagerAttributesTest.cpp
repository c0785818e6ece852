// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ExtendedAttributes.h"
#include "QKFoundation/files/NSFileManager+FileProgress.h"
#include "QKFoundation/files/internal/FileNames.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/services/FileAttributeKeys.h"

#include "tests/files/ForwardingFileManager.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

namespace qk {
namespace {

using namespace std::string_view_literals;
using NSFileManager_ExtendedAttributes::extendedAttributeForName;
using NSFileManager_FileProgress::showProgress;
using platform::NSFileCreationDate;
using platform::NSFileExtendedAttributes;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

constexpr char kProgress[] = "com.apple.progress.fractionCompleted";
constexpr char kFile[] = "/file";

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

class FileAttributes : public testing::Test {
protected:
    FileAttributes() {
        machine.clock.setNow(at(1'700'000'000));
        machine.fileManager.addFile(kFile);
        machine.fileManager.setCreationDate(kFile, at(1));
    }
    void attach(const NSString& name, const NSData& value) {
        machine.fileManager.setExtendedAttribute(kFile, name, value);
    }
    void show(double progress) { showProgress(*manager, progress, NSURL::fileURLWithPath(kFile).value()); }
    [[nodiscard]] NSDictionary attributes() const { return machine.fileManager.attributesOfItemAtPath(kFile).value(); }
    [[nodiscard]] NSDate creationDate() const { return *attributes().get<NSDate>(NSFileCreationDate); }
    [[nodiscard]] std::optional<NSString> text(const NSString& name) const {
        return extendedAttributeForName(*manager, name, kFile);
    }

    Machine machine;
    ScopedMachine installed{machine};
    std::shared_ptr<NSFileManager> manager = NSFileManager::init();
};

using FileProgress = FileAttributes;

TEST_F(FileProgress, MissingFileStaysMissing) {
    showProgress(*manager, 0.5, NSURL::fileURLWithPath("/missing").value());
    EXPECT_EQ(machine.fileManager.attributesOfItemAtPath("/missing"), std::nullopt);
    showProgress(*manager, 0.5, NSURL::URLWithString("mailto:x").value());
}

TEST_F(FileProgress, FileWithoutExtendedAttributesGetsTheDateAlone) {
    show(0.25);
    EXPECT_EQ(attributes(), (NSDictionary{{NSFileCreationDate, at(443'779'200)}}));
    EXPECT_EQ(creationDate().description(), "1984-01-24 08:00:00 +0000");
    show(1);
    EXPECT_EQ(attributes(), (NSDictionary{{NSFileCreationDate, at(1'700'000'000)}}));
}

TEST_F(FileProgress, MarkStandsBesideTheOtherAttributes) {
    attach("other", NSData("kept"));
    show(0.25);
    EXPECT_EQ(attributes(), (NSDictionary{{NSFileCreationDate, at(443'779'200)},
                                          {NSFileExtendedAttributes,
                                           NSDictionary{{kProgress, NSData("0.250000")}, {"other", NSData("kept")}}}}));
}

TEST_F(FileProgress, CompletionClearsTheMarkAndSetsThePresentMoment) {
    attach("other", NSData("kept"));
    show(0.25);
    show(1);
    EXPECT_EQ(creationDate(), at(1'700'000'000)) << "not the file's real creation date";
    EXPECT_EQ(*attributes().get<NSDictionary>(NSFileExtendedAttributes), (NSDictionary{{"other", NSData("kept")}}));
}

TEST_F(FileProgress, FileWhoseLastAttributeWasTheMarkIsWithoutAttributesAgain) {
    attach(kProgress, NSData("0.100000"));
    show(1);
    EXPECT_EQ(attributes().objectForKey(NSFileExtendedAttributes), nullptr);
    show(0.5);
    EXPECT_EQ(attributes().objectForKey(NSFileExtendedAttributes), nullptr) << "only the date changes";
}

TEST_F(FileProgress, OnlyAFractionWithinEpsilonOfOneIsComplete) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double progress;
        const char* mark; // null: complete
    } rows[] = {
        {1.0, nullptr},
        {1 - std::ldexp(1.0, -53), nullptr},
        {1 - std::ldexp(1.0, -52), "1.000000"},
        {1 + std::ldexp(1.0, -52), "1.000000"},
        {0.9999999, "1.000000"},
        {0, "0.000000"},
        {-0.5, "-0.500000"},
        {17, "17.000000"},
        {1e300, nullptr},
        {infinity, "inf"},
        {-infinity, "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {-std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& row : rows) {
        attach("other", NSData("kept"));
        show(row.progress);
        const NSDictionary extended = *attributes().get<NSDictionary>(NSFileExtendedAttributes);
        const auto* mark = extended.get<NSData>(kProgress);
        if (row.progress == 1e300) {
            ASSERT_NE(mark, nullptr);
            EXPECT_EQ(mark->length(), 308U) << "301 digits, a point and six decimals";
        } else if (row.mark == nullptr) {
            EXPECT_EQ(mark, nullptr) << row.progress;
        } else {
            ASSERT_NE(mark, nullptr) << row.progress;
            EXPECT_EQ(*mark, NSData(row.mark));
        }
        EXPECT_EQ(creationDate(), at(mark == nullptr ? 1'700'000'000 : 443'779'200));
    }
}

TEST_F(FileProgress, FileSystemThatKeepsNoAttributesIsNoError) {
    attach("other", NSData("kept"));
    machine.fileManager.refuseAttributes();
    show(0.5);
    EXPECT_EQ(attributes(), (NSDictionary{{NSFileCreationDate, at(1)}}));
}

TEST_F(FileProgress, OnlyTheTwoAttributesAreWritten) {
    class Recording final : public tests::ForwardingFileManager {
    public:
        using ForwardingFileManager::ForwardingFileManager;
        [[nodiscard]] std::optional<NSDictionary> attributesOfItemAtPath(const NSString& path) const override {
            NSMutableDictionary all(ForwardingFileManager::attributesOfItemAtPath(path).value());
            all.setObject(at(2), "NSFileModificationDate");
            return all.copy();
        }
        bool setAttributes(const NSDictionary& attributes, const NSString& path) override {
            written = attributes.allKeys();
            return ForwardingFileManager::setAttributes(attributes, path);
        }
        std::vector<NSString> written;
    };
    attach("other", NSData("kept"));
    platform::Services services = *machine.services();
    const auto files = std::make_shared<Recording>(services.fileManager);
    services.fileManager = files;
    internal::showProgress(services, 0.5, NSURL::fileURLWithPath(kFile).value());
    EXPECT_EQ(files->written, (std::vector<NSString>{NSFileCreationDate, NSFileExtendedAttributes}));
}

using ExtendedAttributes = FileAttributes;

TEST_F(ExtendedAttributes, WhatIsNotThereIsNothing) {
    EXPECT_EQ(text("missing"), std::nullopt);
    EXPECT_EQ(extendedAttributeForName(*manager, "a", "/missing"), std::nullopt);
}

TEST_F(ExtendedAttributes, EmptyNameOrPathIsNothing) {
    attach("", NSData("x"));
    EXPECT_EQ(text(""), std::nullopt);
    EXPECT_EQ(extendedAttributeForName(*manager, "a", ""), std::nullopt);
}

TEST_F(ExtendedAttributes, NoBytesAreNothingAndNotTheEmptyText) {
    attach("empty", NSData());
    EXPECT_EQ(text("empty"), std::nullopt);
}

TEST_F(ExtendedAttributes, BytesAreReadAsUTF8) {
    attach("name", NSData("gr\u00fc\u00df dich"));
    EXPECT_EQ(text("name"), "gr\u00fc\u00df dich");
    attach("name", NSData("\xFF"sv));
    EXPECT_EQ(text("name"), std::nullopt);
}

TEST_F(ExtendedAttributes, ZeroBytesStayInTheText) {
    attach("name", NSData("a\0b"sv));
    EXPECT_EQ(text("name"), NSString(u"a\0b"sv));
}

TEST_F(ExtendedAttributes, FileSystemThatKeepsNoAttributesHasNone) {
    attach("name", NSData("x"));
    machine.fileManager.refuseAttributes();
    EXPECT_EQ(text("name"), std::nullopt);
}

TEST_F(ExtendedAttributes, WhatChangesBetweenTheTwoReadsIsShownWithZeroBytes) {
    class Changing final : public tests::ForwardingFileManager {
    public:
        using ForwardingFileManager::ForwardingFileManager;
        [[nodiscard]] std::optional<std::size_t> getxattr(const NSString& /*path*/, const NSString& name, void* value,
                                                          std::size_t size) const override {
            if (value == nullptr) {
                return 3;
            }
            EXPECT_EQ(size, 3U);
            if (name == "gone") {
                return std::nullopt;
            }
            std::ranges::copy("a"sv, static_cast<char*>(value));
            return 1;
        }
    };
    platform::Services services = *machine.services();
    services.fileManager = std::make_shared<Changing>(services.fileManager);
    EXPECT_EQ(internal::extendedAttributeForName(services, "shorter", kFile), NSString(u"a\0\0"sv));
    EXPECT_EQ(internal::extendedAttributeForName(services, "gone", kFile), NSString(u"\0\0\0"sv));
}

} // namespace
} // namespace qk
