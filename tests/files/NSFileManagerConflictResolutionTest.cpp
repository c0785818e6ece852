// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ConflictResolution.h"
#include "QKFoundation/files/internal/FileNames.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <string_view>

namespace qk {
namespace {

using namespace std::string_view_literals;
using NSFileManager_ConflictResolution::availableFileURLWithName;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

/// A manager that finds what the machine has not got.
class Seeing final : public NSFileManager {
public:
    [[nodiscard]] bool fileExistsAtPath(const NSString& path) const override {
        asked.push_back(path);
        return true;
    }
    mutable std::vector<NSString> asked;
};

class ConflictResolution : public testing::Test {
protected:
    ConflictResolution() { machine.fileManager.addDirectory("/in box"); }

    [[nodiscard]] NSString pathOf(const NSString& name, const NSString& extension) const {
        return availableFileURLWithName(*manager, name, extension, folder).value().path().value();
    }

    Machine machine;
    ScopedMachine installed{machine};
    std::shared_ptr<NSFileManager> manager = NSFileManager::init();
    NSURL folder = NSURL::fileURLWithPath("/in box", true).value();
};

TEST_F(ConflictResolution, FreeNameIsTakenWithoutANumber) {
    EXPECT_EQ(pathOf("report", "txt"), "/in box/report.txt");
    EXPECT_EQ(pathOf("report", ""), "/in box/report");
    EXPECT_EQ(availableFileURLWithName(*manager, "report", "txt", folder)->absoluteString(),
              "file:///in%20box/report.txt");
}

TEST_F(ConflictResolution, NumberStandsBeforeTheExtensionAndBeginsWithTwo) {
    machine.fileManager.addFile("/in box/report.txt");
    EXPECT_EQ(pathOf("report", "txt"), "/in box/report 2.txt");
    machine.fileManager.addFile("/in box/report 2.txt");
    EXPECT_EQ(pathOf("report", "txt"), "/in box/report 3.txt");
    machine.fileManager.addFile("/in box/report 4.txt");
    EXPECT_EQ(pathOf("report", "txt"), "/in box/report 3.txt");
}

TEST_F(ConflictResolution, WithoutAnExtensionEachNumberedNameIsLookedForItself) {
    machine.fileManager.addFile("/in box/report");
    machine.fileManager.addFile("/in box/report 2");
    EXPECT_EQ(pathOf("report", ""), "/in box/report 3");
}

TEST_F(ConflictResolution, NumberInTheNameIsAPartOfIt) {
    machine.fileManager.addFile("/in box/report 2.txt");
    EXPECT_EQ(pathOf("report 2", "txt"), "/in box/report 2 2.txt");
}

TEST_F(ConflictResolution, NumbersGoOnBeyondOneDigit) {
    machine.fileManager.addFile("/in box/a.b");
    for (int number = 2; number < 120; ++number) {
        machine.fileManager.addFile("/in box/a " + NSString::fromInteger(number) + ".b");
    }
    EXPECT_EQ(pathOf("a", "b"), "/in box/a 120.b");
}

TEST_F(ConflictResolution, FolderInTheWayCountsAsWell) {
    machine.fileManager.addDirectory("/in box/report.txt");
    EXPECT_EQ(pathOf("report", "txt"), "/in box/report 2.txt");
}

TEST_F(ConflictResolution, NamesMayHoldWhatAURLEscapes) {
    machine.fileManager.addFile("/in box/100% #1?; \u00e4.tar.gz");
    EXPECT_EQ(pathOf("100% #1?; \u00e4.tar", "gz"), "/in box/100% #1?; \u00e4.tar 2.gz");
}

TEST_F(ConflictResolution, NameIsNotChecked) {
    machine.fileManager.addFile("/in box/sub/a.t");
    EXPECT_EQ(pathOf("sub/a", "t"), "/in box/sub/a 2.t");
    EXPECT_EQ(pathOf("../a", "t"), "/in box/../a.t");
}

TEST_F(ConflictResolution, FirstNameIsAskedOfTheReceiverAndTheOthersOfTheDefaultManager) {
    const Seeing receiver;
    EXPECT_EQ(availableFileURLWithName(receiver, "report", "txt", folder)->path(), "/in box/report 2.txt");
    EXPECT_EQ(receiver.asked, std::vector<NSString>{"/in box/report.txt"});
}

TEST_F(ConflictResolution, FolderWithoutAPathIsReturnedAsItIs) {
    const NSURL mail = NSURL::URLWithString("mailto:anna@example.org").value();
    EXPECT_EQ(availableFileURLWithName(*manager, "report", "txt", mail), mail);
}

TEST_F(ConflictResolution, NameThatNoURLHoldsHasNoAnswer) {
    EXPECT_EQ(availableFileURLWithName(*manager, NSString(u"\xD800"sv), "txt", folder), std::nullopt);
    EXPECT_EQ(availableFileURLWithName(*manager, "report", NSString(u"\xD800"sv), folder), std::nullopt);
}

TEST(URLByAppending, JoinsWithOneSlashBeforeQueryAndFragment) {
    const struct {
        NSString url;
        NSString joined;
    } rows[] = {
        {"file:///", "file:///a%20b.c"},     {"file:///x", "file:///x/a%20b.c"},
        {"file:///x/", "file:///x/a%20b.c"}, {"http://h/x?q#f", "http://h/x/a%20b.c?q#f"},
        {"http://h", "http://h/a%20b.c"},    {"mailto:x", "mailto:x"},
    };
    for (const auto& row : rows) {
        const NSURL url = NSURL::URLWithString(row.url).value();
        const auto named = internal::URLByAppendingPathComponent(url, "a b");
        EXPECT_EQ(internal::URLByAppendingPathExtension(named.value(), "c")->absoluteString(), row.joined);
    }
}

TEST(URLByAppending, WithoutANameThereIsNothingToExtend) {
    const NSURL root = NSURL::fileURLWithPath("/", true).value();
    EXPECT_EQ(internal::URLByAppendingPathExtension(root, "c"), root);
}

} // namespace
} // namespace qk
