// SPDX-License-Identifier: Apache-2.0
// Folders that are moved before anybody could look at them. The events wait until all of it has happened.
#include "tests/platform/linux/InotifyWatching.h"

#include <chrono>
#include <cstdint>

namespace qk::tests {
namespace {

using InotifyMovesTest = InotifyWatching;

TEST_F(InotifyMovesTest, WhatIsInANewFolderThatIsMovedAtOnceIsToldWhereItIs) {
    watch();
    makeFolder("a/b");
    write("a/b/file");
    move("a", "c");
    serve();
    EXPECT_EQ(told("c"), kRenamed | kIsDir);
    EXPECT_EQ(told("c/b"), kCreated | kIsDir);
    EXPECT_EQ(told("c/b/file"), kCreated);
    write("c/b/later");
    serve();
    EXPECT_NE(told("c/b/later") & kCreated, 0U);
}

TEST_F(InotifyMovesTest, FolderMadeInOneThatIsMovedAtOnceIsWatchedWhereItIs) {
    makeFolder("a/deep");
    watch();
    makeFolder("a/deep/b");
    write("a/deep/b/file");
    move("a", "c");
    serve();
    EXPECT_NE(told("c/deep/b/file") & kCreated, 0U);
    write("c/deep/b/later");
    serve();
    EXPECT_NE(told("c/deep/b/later") & kCreated, 0U);
    EXPECT_EQ(watcher_->folderCount(), 4U);
}

TEST_F(InotifyMovesTest, FolderThatIsMovedBeforeItIsListedIsListedWhereItIs) {
    watch();
    kernel_->whenWatched = [this](const std::string& watched) {
        if (watched == path("a")) {
            move("a", "c");
        }
    };
    makeFolder("a/b");
    write("a/file");
    write("a/b/file");
    serve();
    EXPECT_NE(told("c/file") & kCreated, 0U);
    EXPECT_NE(told("c/b/file") & kCreated, 0U);
}

TEST_F(InotifyMovesTest, NewFolderThatMovesOutAndBackIsWatched) {
    watch();
    makeFolder("a");
    write("a/file");
    move("a", "../outside");
    move("../outside", "c");
    serve();
    EXPECT_NE(told("c/file") & kCreated, 0U);
    write("c/later");
    serve();
    EXPECT_NE(told("c/later") & kCreated, 0U);
}

// Files are dated in steps of some milliseconds; these are made in a later one than `moved` was moved in.
class MovedInTest : public InotifyWatching {
protected:
    void writeLater(const std::string& name, const std::string& moved) const {
        const std::int64_t since = platform::datesOf(path(moved)).changed;
        do {
            std::filesystem::remove(path(name));
            write(name);
        } while (platform::datesOf(path(name)).created <= since);
    }
};

TEST_F(MovedInTest, WhatIsMadeBeforeItIsWatchedIsTold) {
    makeFolder("../outside/b/c");
    write("../outside/old");
    write("../outside/b/old");
    write("../outside/b/written");
    write("other");
    watch();
    move("../outside", "a");
    writeLater("a/b/new", "a");
    makeFolder("a/b/made/below");
    write("a/b/made/below/file");
    write("a/b/written");
    move("other", "a/b/other");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_EQ(told("a/b/new") & kCreated, kCreated);
    EXPECT_EQ(told("a/b/made"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/made/below"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/made/below/file"), kCreated);
    EXPECT_EQ(told("a/b/written"), kModified);
    EXPECT_NE(told("a/b/other"), 0U);
    EXPECT_EQ(told("other"), kRenamed);
    EXPECT_TRUE(isQuiet()); // old, b/old, b and b/c were there
}

TEST_F(MovedInTest, WhatIsMadeInTheTopBeforeItIsWatchedIsTold) {
    makeFolder("../outside");
    write("../outside/old");
    watch();
    move("../outside", "a");
    writeLater("a/new", "a");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_EQ(told("a/new") & kCreated, kCreated);
    EXPECT_EQ(creations_[path("a/new")], 1);
    EXPECT_TRUE(isQuiet());
}

TEST_F(MovedInTest, WhatIsMadeBetweenItsWatchAndItsListingIsToldOnce) {
    makeFolder("../outside/b");
    watch();
    kernel_->whenWatched = [this](const std::string& watched) {
        if (watched == path("a")) {
            writeLater("a/b/file", "a");
        } else if (watched == path("a/b")) {
            write("a/b/file2");
        }
    };
    move("../outside", "a");
    serve();
    EXPECT_EQ(told("a/b/file") & kCreated, kCreated);
    EXPECT_EQ(told("a/b/file2") & kCreated, kCreated);
    EXPECT_EQ(creations_[path("a/b/file")], 1);
    EXPECT_EQ(creations_[path("a/b/file2")], 1);
}

// Whatever dates it had, and however long nothing else has happened.
TEST_F(MovedInTest, WhatWasMadeJustBeforeIsNotTold) {
    watch();
    makeFolder("../outside/b");
    write("../outside/file");
    write("../outside/b/file");
    write("../outside/b/late");
    std::filesystem::last_write_time(path("../outside/b/late"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    std::filesystem::last_write_time(path(), {});
    move("../outside", "a");
    serve();
    static_cast<void>(told());
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_TRUE(isQuiet());
}

TEST_F(MovedInTest, OfARootThatIsMovedInWhatIsMadeAtOnceIsTold) {
    makeFolder("../outside");
    write("../outside/old");
    watch({"a"});
    move("../outside", "a");
    writeLater("a/new", "a");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_EQ(told("a/new") & kCreated, kCreated);
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyMovesTest, WhatHappensDeepInAFolderThatIsBackIsTold) {
    makeFolder("a/b/c");
    watch();
    move("a", "../outside");
    move("../outside", "d");
    write("d/b/c/file");
    serve();
    EXPECT_NE(told("d/b/c/file") & kCreated, 0U);
    move("d", "../outside");
    move("../outside/b", "e");
    write("e/c/file");
    write("e/c/other");
    serve();
    EXPECT_NE(told("e/c/file") & kModified, 0U);
    EXPECT_NE(told("e/c/other") & kCreated, 0U);
    EXPECT_EQ(watcher_->folderCount(), 3U);
}

} // namespace
} // namespace qk::tests
