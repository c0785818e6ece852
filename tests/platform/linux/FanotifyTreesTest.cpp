// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FanotifyTrees.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/fanotify.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using parse::FanotifyEvent;
using parse::FileIdentity;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint64_t kRemovedFolder = FAN_DELETE | FAN_ONDIR;
constexpr std::uint64_t kMovedFolder = FAN_MOVED_TO | FAN_ONDIR;

FileIdentity identity(std::string_view handle) {
    return {true, 5, 1, handle};
}

class FanotifyTreesTest : public testing::Test {
protected:
    void take(const std::vector<FanotifyEvent>& events) {
        isWhole_ = trees_.take(events, [this](std::string path, std::uint64_t mask) {
            told_.emplace_back(path, mask);
        }) && isWhole_;
    }

    std::map<std::string, std::string, std::less<>> folders_; // path by handle
    int questions_ = 0;
    bool isWhole_ = true;
    std::vector<std::pair<std::string, std::uint64_t>> told_;
    FanotifyTrees trees_{{"/t/a", "/t/file"}, [this](const FileIdentity& folder) -> std::optional<std::string> {
                             ++questions_;
                             const auto found = folders_.find(folder.handle);
                             return found != folders_.end() ? std::optional(found->second) : std::nullopt;
                         }};
};

TEST_F(FanotifyTreesTest, AnEventWithoutAFolderIsNothing) {
    take({});
    take({{FAN_CREATE, {}, "x", {}}});
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(FanotifyTreesTest, OnlyWhatIsInTheTreesIsTold) {
    folders_ = {{"a", "/t/a"}, {"t", "/t"}, {"b", "/t/a/b"}, {"ab", "/t/ab"}, {"far", "/far"}, {"out", ""}};
    for (const char* folder : {"a", "t", "b", "ab", "far", "out"}) {
        for (const char* name : {"x", "file", "a"}) {
            take({{FAN_CREATE, identity(folder), name, {}}});
        }
    }
    EXPECT_THAT(told_,
                ElementsAre(Pair("/t/a/x", FAN_CREATE), Pair("/t/a/file", FAN_CREATE), Pair("/t/a/a", FAN_CREATE),
                            Pair("/t/file", FAN_CREATE), Pair("/t/a", FAN_CREATE), Pair("/t/a/b/x", FAN_CREATE),
                            Pair("/t/a/b/file", FAN_CREATE), Pair("/t/a/b/a", FAN_CREATE)));
    EXPECT_EQ(questions_, 6); // each folder once
}

TEST_F(FanotifyTreesTest, ADotIsTheFolderItself) {
    folders_ = {{"a", "/t/a"}};
    take({{FAN_ATTRIB | FAN_ONDIR, identity("a"), ".", {}}});
    EXPECT_THAT(told_, ElementsAre(Pair("/t/a", FAN_ATTRIB | FAN_ONDIR)));
}

TEST_F(FanotifyTreesTest, ARenamedFolderIsAskedForAgain) {
    folders_ = {{"a", "/t/a"}, {"b", "/t/a/b"}};
    take({{FAN_CREATE, identity("b"), "x", {}}});
    folders_["b"] = "/t/a/c";
    take({{FAN_CREATE, identity("b"), "y", {}}, {kMovedFolder, identity("a"), "c", identity("b")}});
    EXPECT_THAT(told_,
                ElementsAre(Pair("/t/a/b/x", FAN_CREATE), Pair("/t/a/c/y", FAN_CREATE), Pair("/t/a/c", kMovedFolder)));
}

TEST_F(FanotifyTreesTest, WhatWasInAFolderThatIsGoneIsToldOnceItIsKnownWhereThatWas) {
    folders_ = {{"a", "/t/a"}};
    take({{FAN_DELETE, identity("c"), "x", identity("x")}});
    take({{kRemovedFolder, identity("b"), "c", identity("c")}});
    EXPECT_THAT(told_, IsEmpty());
    take({{kRemovedFolder, identity("a"), "b", identity("b")}});
    EXPECT_THAT(told_, ElementsAre(Pair("/t/a/b", kRemovedFolder), Pair("/t/a/b/c", kRemovedFolder),
                                   Pair("/t/a/b/c/x", FAN_DELETE)));
}

TEST_F(FanotifyTreesTest, ADeepTreeThatIsGoneNeedsNoDeepStack) {
    folders_ = {{"0", "/t/a"}};
    constexpr int kDepth = 2000;
    std::vector<std::string> names;
    for (int depth = 0; depth <= kDepth; ++depth) {
        names.push_back(std::to_string(depth));
    }
    for (int depth = kDepth; depth > 0; --depth) {
        take({{kRemovedFolder, identity(names[static_cast<std::size_t>(depth) - 1]), "d",
               identity(names[static_cast<std::size_t>(depth)])}});
    }
    EXPECT_EQ(told_.size(), static_cast<std::size_t>(kDepth));
}

TEST_F(FanotifyTreesTest, WhatNobodyToldOfIsForgotten) {
    take({{FAN_DELETE, identity("b"), "x", {}}});
    trees_.forgetWaiting();
    folders_ = {{"a", "/t/a"}};
    take({{kRemovedFolder, identity("a"), "b", identity("b")}});
    EXPECT_THAT(told_, ElementsAre(Pair("/t/a/b", kRemovedFolder)));
}

TEST_F(FanotifyTreesTest, NothingWaitsForFoldersOutOfReach) {
    folders_ = {{"out", ""}};
    take({{FAN_DELETE, identity("c"), "x", identity("x")}, {kRemovedFolder, identity("b"), "c", identity("c")}});
    EXPECT_EQ(trees_.waitingEvents(), 2U);
    take({{kRemovedFolder, identity("out"), "b", identity("b")}});
    EXPECT_EQ(trees_.waitingEvents(), 0U);
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(FanotifyTreesTest, MoreEventsThanCanWaitAreSaidToBeMissing) {
    constexpr std::size_t kMany = 300'000;
    const std::vector<FanotifyEvent> events(kMany, {FAN_DELETE, identity("b"), "x", {}});
    take({events.begin(), events.begin() + 1000});
    EXPECT_TRUE(isWhole_);
    take(events);
    EXPECT_FALSE(isWhole_);
    EXPECT_LT(trees_.waitingEvents(), kMany);
    isWhole_ = true;
    take({{FAN_DELETE, identity("b"), "x", {}}});
    EXPECT_TRUE(isWhole_);
}

TEST_F(FanotifyTreesTest, MoreFoldersThanAreKeptAreAskedForAgain) {
    constexpr int kMany = 20'000;
    for (int number = 0; number < kMany; ++number) {
        const std::string name = std::to_string(number);
        folders_[name] = "/far/" + name;
        take({{FAN_CREATE, identity(name), "x", {}}});
    }
    EXPECT_LT(trees_.knownFolders(), 17'000U);
    EXPECT_THAT(told_, IsEmpty());
}

} // namespace
} // namespace qk::platform
