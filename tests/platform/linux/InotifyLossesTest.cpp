// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/DescriptorLimit.h"
#include "tests/platform/linux/InotifyWatching.h"

/// When the kernel has no room: for events, or for watches.
namespace qk::tests {
namespace {

using InotifyLossesTest = InotifyWatching;
using Limits = platform::InotifyWatcher::Limits;

TEST_F(InotifyLossesTest, OfAQuietTreeOnlyTheRootIsTold) {
    makeFolder("a/b");
    watch();
    write("x");
    remove("x");
    loseEvents();
    EXPECT_EQ(told(), kMustScan | kKernelDropped | kIsDir);
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyLossesTest, WhatHasChangedIsFound) {
    makeFolder("stays");
    makeFolder("goes/below");
    write("goes/below/file");
    write("stays/old");
    write("stays/gone");
    write("stays/renamed");
    watch();
    makeFolder("new/below");
    write("new/below/file");
    remove("goes");
    write("stays/old");
    write("stays/new");
    remove("stays/gone");
    move("stays/renamed", "stays/renamed2");
    loseEvents();
    EXPECT_EQ(told(), kMustScan | kKernelDropped | kIsDir);
    EXPECT_EQ(told("new"), kCreated | kIsDir);
    EXPECT_EQ(told("new/below"), kCreated | kIsDir);
    EXPECT_EQ(told("new/below/file"), kCreated);
    EXPECT_EQ(told("goes"), kRemoved | kIsDir);
    EXPECT_EQ(told("goes/below"), kRemoved | kIsDir);
    EXPECT_EQ(told("goes/below/file"), kRemoved);
    EXPECT_EQ(told("stays/old") & kModified, kModified);
    EXPECT_EQ(told("stays/new"), kCreated);
    EXPECT_EQ(told("stays/gone"), kRemoved);
    EXPECT_EQ(told("stays/renamed"), kRemoved);
    EXPECT_EQ(told("stays/renamed2"), kCreated);
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyLossesTest, WatchingGoesOnInEveryFolder) {
    makeFolder("stays");
    makeFolder("replaced/below");
    makeFolder("moved/below");
    watch();
    remove("replaced");
    makeFolder("replaced/below");
    move("moved", "stays/moved");
    makeFolder("new");
    loseEvents();
    told_.clear();
    for (const char* name : {"stays/1", "replaced/2", "replaced/below/3", "stays/moved/below/4", "new/5", "6"}) {
        write(name);
        serve();
        EXPECT_EQ(told(name) & kCreated, kCreated) << name;
    }
    EXPECT_TRUE(isQuiet());
}

TEST_F(InotifyLossesTest, ARootThatIsGoneIsFoundGoneAndWaitedFor) {
    makeFolder("a");
    write("file");
    watch({"a", "file", "missing"});
    remove("a");
    makeFolder("missing");
    write("missing/inside");
    loseEvents();
    EXPECT_EQ(told("a") & kRemoved, kRemoved);
    EXPECT_EQ(told("missing/inside"), kCreated);
    static_cast<void>(told("file"));
    static_cast<void>(told("missing"));
    EXPECT_TRUE(isQuiet());
    makeFolder("a/b");
    serve();
    EXPECT_EQ(told("a/b"), kCreated | kIsDir);
}

TEST_F(InotifyLossesTest, AFolderWithMoreNamesThanAreKeptIsToldToBeLookedThrough) {
    makeFolder("a");
    for (int number = 0; number < 100; ++number) {
        write("a/" + std::to_string(number));
    }
    watch({""}, {.keptNames = 200});
    remove("a/7");
    write("a/new");
    loseEvents();
    EXPECT_EQ(told("a"), kMustScan | kUserDropped | kIsDir);
    EXPECT_EQ(told("a/new") & kCreated, kCreated); // by its dates
}

TEST_F(InotifyLossesTest, LossesDuringTheSearchBeginItAnew) {
    for (const char* name : {"a", "b", "c", "d"}) {
        makeFolder(name);
    }
    watch({""}, {.entriesAtOnce = 1});
    write("a/1");
    kernel_->losesEvents = true;
    loop_->drain();
    write("a/2");
    write("d/2");
    kernel_->losesEvents = true;
    loop_->drain();
    serve();
    for (const char* name : {"a/1", "a/2", "d/2"}) {
        EXPECT_EQ(told(name) & kCreated, kCreated) << name;
    }
}

TEST_F(InotifyLossesTest, AFolderWithoutAWatchIsToldOnceAndLookedAtFromThenOn) {
    makeFolder("a/b/c");
    write("a/old");
    kernel_->watchesLeft = 2; // the folder above and the root
    watch({""}, {.pollSeconds = 0.001});
    EXPECT_EQ(told("a"), kMustScan | kIsDir);
    EXPECT_TRUE(isQuiet());
    const auto isTold = [&](const std::string& name, Flags flag) {
        return runUntil(*loop_, [&] { return (told_[path(name)] & flag) != 0; });
    };
    write("a/b/c/new");
    EXPECT_TRUE(isTold("a/b/c/new", kCreated));
    write("a/old");
    EXPECT_TRUE(isTold("a/old", kModified));
    makeFolder("a/more/below");
    EXPECT_TRUE(isTold("a/more/below", kCreated));
    remove("a/b");
    EXPECT_TRUE(isTold("a/b", kRemoved));
    EXPECT_TRUE(isTold("a/b/c/new", kRemoved));
    EXPECT_EQ(told("a/more") & kMustScan, 0U);
}

TEST_F(InotifyLossesTest, AFolderGetsItsWatchWhenThereAreSomeAgain) {
    makeFolder("a/b");
    kernel_->watchesLeft = 2;
    watch({""}, {.pollSeconds = 0.001});
    bool isWatched = false;
    kernel_->whenWatched = [&](const std::string& watched) { isWatched = isWatched || watched == path("a/b"); };
    kernel_->watchesLeft = 1000;
    EXPECT_TRUE(runUntil(*loop_, [&] { return isWatched; }));
    serve();
    told_.clear();
    write("a/b/file");
    serve();
    EXPECT_EQ(told("a/b/file") & kCreated, kCreated);
}

TEST_F(InotifyLossesTest, AFolderThatCannotBeListedForWantOfDescriptorsIsListedLater) {
    static_cast<void>(loop_->scheduleTimer(0, false, [] {})); // the loop has its timer's
    watch({""}, {.pollSeconds = 0.001});
    {
        const DescriptorLimit none;
        makeFolder("a/b");
        EXPECT_TRUE(loop_->drain());
        EXPECT_EQ(told("a") & kMustScan, kMustScan);
    }
    EXPECT_TRUE(runUntil(*loop_, [&] { return (told_[path("a/b")] & kCreated) != 0; }));
    told_.clear();
    write("a/b/file");
    EXPECT_TRUE(runUntil(*loop_, [&] { return (told_[path("a/b/file")] & kCreated) != 0; }));
}

TEST_F(InotifyLossesTest, ARootWithoutAWatchIsLookedAt) {
    makeFolder("a");
    kernel_->watchesLeft = 0;
    watch({"a"}, {.pollSeconds = 0.001});
    EXPECT_EQ(told("a"), kMustScan | kIsDir);
    write("a/file");
    EXPECT_TRUE(runUntil(*loop_, [&] { return (told_[path("a/file")] & kCreated) != 0; }));
}

} // namespace
} // namespace qk::tests
