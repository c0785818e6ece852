// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/RememberedFile.h"

#include "QKFoundation/platform/linux/Nanoseconds.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;

constexpr std::int64_t kSecond = 1'000'000'000;

struct Reading {
    std::string text;
    int number = 0;
};

Reading count(std::string_view bytes) {
    static int readings = 0;
    return {std::string(bytes), ++readings};
}

// Every change was long ago.
std::int64_t farAhead() {
    return std::numeric_limits<std::int64_t>::max();
}

TEST(RememberedFile, NothingForWhatIsNotThereOrTooLong) {
    const TemporaryFolder folder;
    EXPECT_EQ(RememberedFile<Reading>(folder.path("missing"), 10, count, farAhead).read(), nullptr);
    EXPECT_EQ(RememberedFile<Reading>(folder.write("long", "12345"), 4, count, farAhead).read(), nullptr);
}

TEST(RememberedFile, IsReadOnceWhileItStaysAsItIs) {
    const TemporaryFolder folder;
    RememberedFile<Reading> file(folder.write("file", "one"), 10, count, farAhead);
    const auto first = file.read();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->text, "one");
    EXPECT_EQ(file.read()->number, first->number);
}

TEST(RememberedFile, ChangeIsRead) {
    const TemporaryFolder folder;
    RememberedFile<Reading> file(folder.write("file", "one"), 10, count, farAhead);
    EXPECT_EQ(file.read()->text, "one");
    folder.write("file", "longer");
    EXPECT_EQ(file.read()->text, "longer");
}

TEST(RememberedFile, AnotherFileInItsPlaceIsRead) {
    const TemporaryFolder folder;
    RememberedFile<Reading> file(folder.write("file", "one"), 10, count, farAhead);
    EXPECT_EQ(file.read()->text, "one");
    std::filesystem::rename(folder.write("other", "two"), folder.path("file"));
    EXPECT_EQ(file.read()->text, "two");
}

TEST(RememberedFile, WhatIsGoneIsForgottenAndWhatComesBackIsRead) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "one");
    RememberedFile<Reading> file(path, 10, count, farAhead);
    EXPECT_EQ(file.read()->text, "one");
    std::filesystem::remove(path);
    EXPECT_EQ(file.read(), nullptr);
    folder.write("file", "two");
    EXPECT_EQ(file.read()->text, "two");
}

TEST(RememberedFile, WhatChangedJustNowIsReadAgain) {
    const TemporaryFolder folder;
    RememberedFile<Reading> file(folder.write("file", "one"), 10, count);
    const int before = file.read()->number;
    // As long as before, and perhaps at the same time.
    folder.write("file", "two");
    EXPECT_EQ(file.read()->text, "two");
    EXPECT_GT(file.read()->number, before + 1);
}

TEST(RememberedFile, ThreadsReadItAtTheSameTime) {
    const TemporaryFolder folder;
    RememberedFile<Reading> file(
        folder.write("file", "one"), 10,
        [](std::string_view bytes) {
            return Reading{std::string(bytes), 0};
        },
        farAhead);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&file] {
            for (int round = 0; round < 200; ++round) {
                const auto reading = file.read();
                EXPECT_TRUE(reading != nullptr && (reading->text == "one" || reading->text == "another"));
            }
        });
    }
    std::filesystem::rename(folder.write("other", "another"), folder.path("file"));
    threads.clear();
    EXPECT_EQ(file.read()->text, "another");
}

TEST(FileIdentity, IsSettledSomeSecondsAfterTheLatestChange) {
    FileIdentity identity;
    identity.modified = 100 * kSecond;
    identity.changed = 200 * kSecond;
    EXPECT_FALSE(identity.isSettled(100 * kSecond));
    EXPECT_FALSE(identity.isSettled(202 * kSecond));
    EXPECT_TRUE(identity.isSettled(203 * kSecond));
    identity.modified = 300 * kSecond; // set by hand, to the future
    EXPECT_FALSE(identity.isSettled(250 * kSecond));
}

// As touch(1) may set them, where the file system has room for them.
TEST(FileIdentity, DatesBeyondAllNumbersAreFarOff) {
    constexpr std::int64_t kIn2400 = 13'569'465'600;
    struct stat status {};
    status.st_mtim.tv_sec = kIn2400;
    EXPECT_FALSE(FileIdentity::of(status).isSettled(kIn2400));
    status.st_mtim.tv_sec = -kIn2400;
    EXPECT_TRUE(FileIdentity::of(status).isSettled(kIn2400));
}

TEST(Nanoseconds, AreTheNearestThatThereAre) {
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(nanoseconds(0, 0), 0);
    EXPECT_EQ(nanoseconds(1, 5), kSecond + 5);
    EXPECT_EQ(nanoseconds(-1, 5), -kSecond + 5);
    EXPECT_EQ(nanoseconds(Limits::max() / kSecond, 0), Limits::max() / kSecond * kSecond);
    EXPECT_EQ(nanoseconds(Limits::max() / kSecond, kSecond - 1), Limits::max());
    EXPECT_EQ(nanoseconds(Limits::max(), 0), Limits::max());
    EXPECT_EQ(nanoseconds(Limits::min(), 0), Limits::min());
}

TEST(FileIdentity, NothingForWhatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_EQ(FileIdentity::at(folder.path("missing")), std::nullopt);
    const std::string path = folder.write("file", "one");
    EXPECT_EQ(FileIdentity::at(path), FileIdentity::at(path));
    EXPECT_NE(FileIdentity::at(path), FileIdentity::at(folder.write("other", "one")));
}

} // namespace
} // namespace qk::platform
