// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFSEvents.h"

#include "QKFoundation/platform/linux/FanotifyWatcher.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"
#include "QKFoundation/platform/memory/MemoryDispatch.h"

#include "tests/platform/linux/DescriptorLimit.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/linux/Waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace qk::tests {
namespace {

using namespace platform;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;

constexpr auto kCreated = kFSEventStreamEventFlagItemCreated;
constexpr auto kRemoved = kFSEventStreamEventFlagItemRemoved;
constexpr auto kRenamed = kFSEventStreamEventFlagItemRenamed;
constexpr auto kModified = kFSEventStreamEventFlagItemModified;
constexpr auto kMeta = kFSEventStreamEventFlagItemInodeMetaMod;
constexpr auto kIsFile = kFSEventStreamEventFlagItemIsFile;
constexpr auto kIsDir = kFSEventStreamEventFlagItemIsDir;
constexpr auto kIsLink = kFSEventStreamEventFlagItemIsSymlink;

/// What only real files do, through each of the kernel's means.
class LinuxFSEventsTest : public testing::TestWithParam<LinuxFSEvents::Means> {
protected:
    using Told = std::map<std::string, FSEventStreamEventFlags>;

    void SetUp() override {
        std::filesystem::create_directory(path("top"));
        if (GetParam() == LinuxFSEvents::Means::Fanotify && watchWithFanotify(loop_, {path("top")}, {}) == nullptr) {
            GTEST_SKIP() << "not allowed here";
        }
    }
    void TearDown() override {
        if (stream_ != nullptr) {
            stream_->release();
        }
    }
    void watch(const NSArray& paths) {
        stream_ = events_.streamCreate(tell, {0, this}, paths, kFSEventStreamEventIdSinceNow, 0.01, 0x11);
        ASSERT_NE(stream_, nullptr);
        stream_->scheduleWithRunLoop(loop_);
        ASSERT_TRUE(stream_->start());
    }
    void watch() { watch({NSString::fromUTF8(path("top")).value()}); }
    std::string path(const std::string& name) const {
        return std::filesystem::canonical(folder_.path()).string() + "/" + name;
    }
    void write(const std::string& name) const { std::ofstream(path(name), std::ios::app) << "content"; }
    void openAndClose(const std::string& name, int flags) const {
        const UniqueFD opened(::open(path(name).c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR));
        EXPECT_TRUE(opened);
    }

    /// What was told up to now, by the path below the folder of the test.
    Told told() {
        std::filesystem::create_directory(path("top/fence"));
        EXPECT_TRUE(runUntil(*loop_, [&] { return told_.contains("top/fence"); }));
        std::filesystem::remove(path("top/fence"));
        EXPECT_TRUE(runUntil(*loop_, [&] { return (told_["top/fence"] & kRemoved) != 0; }));
        told_.erase("top/fence");
        return std::exchange(told_, {});
    }

    TemporaryFolder folder_;
    LinuxFSEvents events_{GetParam()};
    std::shared_ptr<LinuxRunLoop> loop_ = LinuxRunLoop::make();
    FSEventStreamRef stream_ = nullptr;

private:
    static void tell(FSEventStreamRef /*stream*/, void* info, std::size_t numEvents, const NSArray& paths,
                     std::span<const FSEventStreamEventFlags> flags, std::span<const FSEventStreamEventId> /*ids*/) {
        auto& self = *static_cast<LinuxFSEventsTest*>(info);
        for (std::size_t index = 0; index < numEvents; ++index) {
            const std::string item = paths[index].as<NSString>()->utf8Lossy();
            self.told_[item.substr(self.path("").size())] |= flags[index];
        }
    }

    Told told_;
};
INSTANTIATE_TEST_SUITE_P(Of, LinuxFSEventsTest,
                         testing::Values(LinuxFSEvents::Means::Inotify, LinuxFSEvents::Means::Fanotify,
                                         LinuxFSEvents::Means::Any),
                         [](const auto& tested) {
                             switch (tested.param) {
                             case LinuxFSEvents::Means::Inotify: return "Inotify";
                             case LinuxFSEvents::Means::Fanotify: return "Fanotify";
                             default: return "Any";
                             }
                         });

TEST_P(LinuxFSEventsTest, OnlyARunLoopOfThisSystemStartsAStream) {
    FSEventStreamRef stream = events_.streamCreate([](auto...) {}, {}, {"/"}, kFSEventStreamEventIdSinceNow, 0, 0x11);
    memory::MemoryDispatch dispatch(std::make_shared<memory::MemoryClock>());
    stream->scheduleWithRunLoop(dispatch.mainRunLoop());
    EXPECT_FALSE(stream->start());
    stream->release();
}

TEST_P(LinuxFSEventsTest, ALinkIsTheFolderThatItLeadsTo) {
    std::filesystem::create_directory_symlink(path("top"), path("link"));
    watch({NSString::fromUTF8(path("link/")).value()});
    std::filesystem::create_directory(path("link/a"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/a", kCreated | kIsDir)));
}

TEST_P(LinuxFSEventsTest, LinksAndOtherItemsAreToldByWhatTheyAre) {
    watch();
    std::filesystem::create_symlink("nowhere", path("top/link"));
    ASSERT_EQ(::mkfifo(path("top/pipe").c_str(), 0600), 0);
    EXPECT_THAT(told(), ElementsAre(Pair("top/link", kCreated | kIsLink), Pair("top/pipe", kCreated)));
}

TEST_P(LinuxFSEventsTest, ClosingAFileThatWasNotWrittenIsNoChange) {
    write("top/file");
    const timespec longAgo{1000, 0};
    const std::array times{longAgo, longAgo};
    ASSERT_EQ(::utimensat(AT_FDCWD, path("top/file").c_str(), times.data(), 0), 0);
    watch();
    openAndClose("top/file", O_RDWR);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_P(LinuxFSEventsTest, AnEmptyFileIsCreatedOnly) {
    watch();
    openAndClose("top/file", O_WRONLY | O_CREAT);
    EXPECT_THAT(told(), ElementsAre(Pair("top/file", kCreated | kIsFile)));
}

TEST_P(LinuxFSEventsTest, WritingThroughAMappingIsToldWhenTheFileIsClosed) {
    write("top/file");
    watch();
    {
        const UniqueFD opened(::open(path("top/file").c_str(), O_RDWR | O_CLOEXEC));
        void* const mapped = ::mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_SHARED, opened.get(), 0);
        ASSERT_NE(mapped, MAP_FAILED);
        *static_cast<char*>(mapped) = 'x';
        ::msync(mapped, 1, MS_SYNC);
        ::munmap(mapped, 1);
    }
    EXPECT_THAT(told(), ElementsAre(Pair("top/file", kModified | kIsFile)));
}

TEST_P(LinuxFSEventsTest, AnAtomicSaveCreatesAndModifiesOnlyTheNewName) {
    write("top/file");
    watch();
    write("top/file.new");
    std::filesystem::rename(path("top/file.new"), path("top/file"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/file", kRenamed | kIsFile),
                                    Pair("top/file.new", kCreated | kModified | kRenamed | kIsFile)));
}

TEST_P(LinuxFSEventsTest, ChangedRightsAreTold) {
    write("top/file");
    std::filesystem::create_directory(path("top/folder"));
    watch();
    std::filesystem::permissions(path("top/file"), std::filesystem::perms::owner_read);
    std::filesystem::permissions(path("top/folder"), std::filesystem::perms::owner_all);
    EXPECT_THAT(told(), ElementsAre(Pair("top/file", kMeta | kIsFile), Pair("top/folder", kMeta | kIsDir)));
}

TEST_P(LinuxFSEventsTest, AHardLinkIsCreatedOnly) {
    write("top/file");
    watch();
    std::filesystem::create_hard_link(path("top/file"), path("top/link"));
    const Told told = this->told();
    EXPECT_THAT(told, Contains(Pair("top/link", kCreated | kIsFile)));
}

TEST_P(LinuxFSEventsTest, ATreeThatIsRemovedIsToldWithAllThatWasInIt) {
    std::filesystem::create_directories(path("top/a/b/c"));
    write("top/a/b/c/file");
    watch();
    std::filesystem::remove_all(path("top/a"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/a", kRemoved | kIsDir), Pair("top/a/b", kRemoved | kIsDir),
                                    Pair("top/a/b/c", kRemoved | kIsDir), Pair("top/a/b/c/file", kRemoved | kIsFile)));
}

TEST_P(LinuxFSEventsTest, NamesNeedNotBeText) {
    watch();
    std::filesystem::create_directory(path("top/\xFF"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/?", kCreated | kIsDir))); // a lone surrogate, shown as "?"
}

TEST_P(LinuxFSEventsTest, AFileSystemThatIsMountedInTheTreeIsWatched) {
    if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        GTEST_SKIP() << "no mount name space of our own";
    }
    std::filesystem::create_directories(path("top/mount"));
    ASSERT_EQ(::mount("none", path("top/mount").c_str(), "tmpfs", 0, "size=1m"), 0);
    write("top/mount/old");
    watch();
    std::filesystem::create_directory(path("top/mount/a"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/mount/a", kCreated | kIsDir)));
    // Nothing of ours keeps the file system from being unmounted.
    EXPECT_EQ(::umount2(path("top/mount").c_str(), UMOUNT_NOFOLLOW), 0);
    if (GetParam() == LinuxFSEvents::Means::Inotify) {
        EXPECT_THAT(told(),
                    ElementsAre(Pair("top/mount/a", kRemoved | kIsDir), Pair("top/mount/old", kRemoved | kIsFile)));
    }
    static_cast<void>(told());
    std::filesystem::create_directory(path("top/mount/b"));
    EXPECT_THAT(told(), ElementsAre(Pair("top/mount/b", kCreated | kIsDir)));
}

TEST(FanotifyWatcherTest, AfterALossWhatIsNewIsFoundByItsDates) {
    const TemporaryFolder folder;
    const std::string top = std::filesystem::canonical(folder.path()).string();
    std::filesystem::create_directories(top + "/a/b");
    std::map<std::string, FSEventStreamEventFlags> told;
    const auto loop = LinuxRunLoop::make();
    FanotifyWatcher watcher(loop, {top, top + "-missing"},
                            [&](const std::string& path, FSEventStreamEventFlags flags) { told[path] |= flags; });
    if (!watcher.start()) {
        GTEST_SKIP() << "not allowed here";
    }
    folder.write("a/b/file", "content");
    watcher.recover();
    EXPECT_TRUE(comesToRest(*loop));
    EXPECT_EQ(told[top] & 0xFFFF, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagKernelDropped);
    EXPECT_EQ(told[top + "/a/b/file"] & kCreated, kCreated);
    EXPECT_THAT(told, Contains(Key(top + "-missing")));
}

TEST(FanotifyWatcherTest, WithoutDescriptorsTheRootsAreToldToBeLookedThrough) {
    const TemporaryFolder folder;
    const std::string top = std::filesystem::canonical(folder.path()).string();
    std::map<std::string, FSEventStreamEventFlags> told;
    const auto loop = LinuxRunLoop::make();
    FanotifyWatcher watcher(loop, {top},
                            [&](const std::string& path, FSEventStreamEventFlags flags) { told[path] |= flags; });
    if (!watcher.start()) {
        GTEST_SKIP() << "not allowed here";
    }
    std::filesystem::create_directory(top + "/a");
    {
        const DescriptorLimit none;
        EXPECT_TRUE(comesToRest(*loop));
    }
    EXPECT_EQ(told[top] & 0xFFFF, kFSEventStreamEventFlagMustScanSubDirs | kFSEventStreamEventFlagKernelDropped);
    std::filesystem::create_directory(top + "/b");
    EXPECT_TRUE(comesToRest(*loop));
    EXPECT_EQ(told[top + "/b"] & kCreated, kCreated);
}

TEST(FanotifyWatcherTest, AViewOfTheKernelCannotBeWatched) {
    EXPECT_EQ(watchWithFanotify(LinuxRunLoop::make(), {"/proc/self"}, {}), nullptr);
}

} // namespace
} // namespace qk::tests
