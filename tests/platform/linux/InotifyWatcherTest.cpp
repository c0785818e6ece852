// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/InotifyWatching.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qk::tests {
namespace {

using InotifyWatcherTest = InotifyWatching;

TEST_F(InotifyWatcherTest, WithoutAnInstanceNothingIsWatched) {
    kernel_->hasInstances = false;
    platform::InotifyWatcher watcher(
        loop_, [](auto, auto) {}, kernel_);
    EXPECT_FALSE(watcher.start({path()}));
}

TEST_F(InotifyWatcherTest, WhatIsInANewFolderAlreadyIsToldOnce) {
    watch();
    makeFolder("a/b/c");
    write("a/b/c/file");
    serve();
    EXPECT_EQ(told("a"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/c"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/c/file"), kCreated);
    EXPECT_TRUE(isQuiet());
    for (const auto& [item, times] : creations_) {
        EXPECT_EQ(times, 1) << item;
    }
}

TEST_F(InotifyWatcherTest, WhatComesBetweenTheWatchAndTheListingIsToldOnce) {
    watch();
    kernel_->whenWatched = [this](const std::string& watched) {
        if (watched == path("a")) {
            write("a/file");
            makeFolder("a/b");
        }
    };
    makeFolder("a");
    serve();
    EXPECT_EQ(creations_.at(path("a/file")), 1);
    EXPECT_EQ(creations_.at(path("a/b")), 1);
    write("a/b/inside");
    remove("a/file");
    write("a/file");
    serve();
    EXPECT_EQ(creations_.at(path("a/b/inside")), 1);
    EXPECT_EQ(creations_.at(path("a/file")), 2);
}

TEST_F(InotifyWatcherTest, NoFileIsMissedInFoldersMadeWhileWatching) {
    watch();
    constexpr int kFolders = 400;
    for (int number = 0; number < kFolders; ++number) {
        const std::string name = std::to_string(number % 10) + "/" + std::to_string(number);
        makeFolder(name);
        write(name + "/file");
        if (number % 7 == 0) {
            loop_->drain();
        }
    }
    serve();
    for (int number = 0; number < kFolders; ++number) {
        const std::string name = std::to_string(number % 10) + "/" + std::to_string(number) + "/file";
        EXPECT_EQ(creations_[path(name)], 1) << name;
    }
    EXPECT_EQ(watcher_->folderCount(), 411U);
}

TEST_F(InotifyWatcherTest, OfATreeThatIsMovedInOnlyTheTopIsTold) {
    makeFolder("../outside/b");
    watch();
    move("../outside", "a");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_TRUE(isQuiet());
    write("a/b/file");
    serve();
    EXPECT_EQ(told("a/b/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, ATreeThatIsMovedOutIsNotWatched) {
    makeFolder("a/b");
    watch();
    move("a", "../outside");
    write("../outside/b/early");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_EQ(kernel_->removals, 2);
    write("../outside/b/late");
    serve();
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(watcher_->folderCount(), 1U);
}

TEST_F(InotifyWatcherTest, AMoveMayBeReadInTwoParts) {
    makeFolder("a/below");
    watch();
    kernel_->readAtMost = sizeof(inotify_event) + 16; // one with a short name
    move("a", "b");
    EXPECT_TRUE(loop_->drain());
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_TRUE(isQuiet());
    watcher_->windowEnds();
    write("b/below/file");
    serve();
    EXPECT_EQ(told("b"), kRenamed | kIsDir);
    EXPECT_EQ(told("b/below/file") & kCreated, kCreated);
    EXPECT_EQ(kernel_->removals, 0);
}

TEST_F(InotifyWatcherTest, AFolderThatBecomesReadableIsWatched) {
    makeFolder("a/below");
    kernel_->unreadable = path("a");
    watch();
    write("a/early");
    serve();
    EXPECT_TRUE(isQuiet());
    kernel_->unreadable.clear();
    std::filesystem::permissions(path("a"), std::filesystem::perms::owner_all);
    serve();
    EXPECT_EQ(told("a") & kIsDir, kIsDir);
    EXPECT_TRUE(isQuiet());
    write("a/file");
    write("a/below/file");
    serve();
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
    EXPECT_EQ(told("a/below/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AFolderThatReplacesAnotherIsWatched) {
    makeFolder("a/inside");
    makeFolder("b");
    watch();
    move("a", "b");
    serve();
    EXPECT_EQ(told("b"), kRenamed | kIsDir);
    write("b/inside/file");
    serve();
    EXPECT_EQ(told("b/inside/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AFolderThatIsMadeAndRenamedAtOnceIsWatchedAsIsTheNextOfItsName) {
    watch();
    makeFolder("a");
    move("a", "b");
    makeFolder("a");
    serve();
    static_cast<void>(told("a"));
    static_cast<void>(told("b"));
    write("a/file");
    write("b/file");
    serve();
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
    EXPECT_EQ(told("b/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AFolderThatIsRemovedAndMadeAgainIsWatched) {
    makeFolder("a");
    watch();
    remove("a");
    makeFolder("a");
    write("a/file");
    serve();
    EXPECT_EQ(told("a"), kRemoved | kCreated | kIsDir);
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
    remove("a/file");
    serve();
    EXPECT_EQ(told("a/file"), kRemoved);
}

TEST_F(InotifyWatcherTest, LinksAreNotFollowed) {
    makeFolder("../outside");
    watch();
    std::filesystem::create_directory_symlink(path("../outside"), path("link"));
    serve();
    EXPECT_EQ(told("link"), kCreated);
    write("link/file");
    serve();
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyWatcherTest, ARootThatIsMovedAwayIsWaitedFor) {
    makeFolder("a");
    watch({"a"});
    move("a", "b");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    write("b/file");
    serve();
    EXPECT_TRUE(isQuiet());
    move("b", "a");
    serve();
    EXPECT_EQ(told("a"), kRenamed | kIsDir);
    EXPECT_TRUE(isQuiet());
    write("a/file2");
    serve();
    EXPECT_EQ(told("a/file2") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, ARootWhoseFoldersAboveGoAndComeIsWatched) {
    makeFolder("a/b/c");
    watch({"a/b/c"});
    remove("a");
    serve();
    EXPECT_EQ(told("a/b/c"), kRemoved | kIsDir);
    makeFolder("a");
    serve();
    EXPECT_TRUE(isQuiet());
    makeFolder("a/b/c");
    write("a/b/c/file");
    serve();
    EXPECT_EQ(told("a/b/c"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/c/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AFolderAboveARootMayGoWhileTheRootIsLookedFor) {
    makeFolder("a/b");
    kernel_->whenWatched = [this](const std::string& watched) {
        if (watched == path("a/b")) {
            remove("a/b");
        }
    };
    watch({"a/b/c/d"});
    kernel_->whenWatched = [](const std::string&) {};
    serve();
    makeFolder("a/b/c/d");
    write("a/b/c/d/file");
    serve();
    EXPECT_EQ(told("a/b/c/d"), kCreated | kIsDir);
    EXPECT_EQ(told("a/b/c/d/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, ARootThatSomebodyIsStillInIsMissedWhenItIsRemoved) {
    makeFolder("a");
    watch({"a"});
    const platform::UniqueFD held(::open(path("a").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_TRUE(held);
    remove("a");
    makeFolder("a");
    serve();
    EXPECT_EQ(told("a"), kRemoved | kCreated | kIsDir);
    write("a/file");
    serve();
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AFileAsRootMayBecomeAFolder) {
    write("a");
    watch({"a"});
    remove("a");
    makeFolder("a");
    write("a/file");
    serve();
    EXPECT_EQ(told("a"), kRemoved | kCreated | kIsDir);
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
}

TEST_F(InotifyWatcherTest, AnAtomicSaveRenamesOverAFileThatIsRoot) {
    write("a");
    watch({"a"});
    write("a.new");
    move("a.new", "a");
    serve();
    EXPECT_EQ(told("a"), kRenamed);
    write("a");
    serve();
    EXPECT_EQ(told("a"), kModified);
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyWatcherTest, ALongListingIsDoneInSteps) {
    watch({""}, {.entriesAtOnce = 1});
    makeFolder("a/b/c/d");
    int passes = 0;
    while (loop_->drain()) {
        ++passes;
    }
    EXPECT_GE(passes, 4);
    EXPECT_EQ(told("a/b/c/d"), kCreated | kIsDir);
}

TEST_F(InotifyWatcherTest, ATreeThatIsGoneBeforeItIsListedIsNoMatter) {
    watch();
    makeFolder("a/b");
    remove("a");
    serve();
    EXPECT_EQ(told("a"), kCreated | kRemoved | kIsDir);
    EXPECT_EQ(watcher_->folderCount(), 1U);
}

TEST_F(InotifyWatcherTest, ItsEndGivesItsDescriptorsBack) {
    const auto count = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    static_cast<void>(loop_->scheduleTimer(0, false, [] {})); // the loop has its timer's
    const auto before = count();
    watch();
    EXPECT_EQ(count(), before + 1);
    makeFolder("a");
    watcher_.reset();
    EXPECT_EQ(count(), before);
    EXPECT_TRUE(comesToRest(*loop_));
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyWatcherTest, AForkedChildThatEndsItLeavesTheParentsAlone) {
    makeFolder("a");
    watch();
    const pid_t child = ::fork();
    if (child == 0) {
        watcher_.reset();
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    write("a/file");
    serve();
    EXPECT_EQ(told("a/file") & kCreated, kCreated);
}

} // namespace
} // namespace qk::tests
