// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/FSEventsWatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::tests {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr auto kCreated = kFSEventStreamEventFlagItemCreated;
constexpr auto kRemoved = kFSEventStreamEventFlagItemRemoved;
constexpr auto kRenamed = kFSEventStreamEventFlagItemRenamed;
constexpr auto kModified = kFSEventStreamEventFlagItemModified;
constexpr auto kIsFile = kFSEventStreamEventFlagItemIsFile;
constexpr auto kIsDir = kFSEventStreamEventFlagItemIsDir;

class FSEventsContract : public testing::TestWithParam<ChangingFilesAdapter> {
protected:
    void SetUp() override {
        if (files_ == nullptr) {
            GTEST_SKIP() << "not allowed here";
        }
    }
    std::unique_ptr<FSEventsWatch> watching(const std::vector<std::string>& paths) {
        auto watch = std::make_unique<FSEventsWatch>(*files_, pathsArray(paths));
        EXPECT_TRUE(watch->exists());
        EXPECT_TRUE(watch->stream().start());
        return watch;
    }
    std::unique_ptr<FSEventsWatch> watching() { return watching({files_->path()}); }
    std::string path(const std::string& name) { return files_->path(name); }

    const std::unique_ptr<ChangingFiles> files_ = GetParam().make();
};
INSTANTIATE_TEST_SUITE_P(Of, FSEventsContract, testing::ValuesIn(changingFilesAdapters()),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(FSEventsContract, WithoutAPathThereIsNoStream) {
    EXPECT_FALSE(FSEventsWatch(*files_, NSArray()).exists());
    EXPECT_FALSE(FSEventsWatch(*files_, NSArray{Value(1), Value("")}).exists());
    EXPECT_EQ(
        files_->events().streamCreate(nullptr, {}, pathsArray({path("")}), kFSEventStreamEventIdSinceNow, 0, 0x11),
        nullptr);
}

TEST_P(FSEventsContract, WithoutARunLoopNothingStarts) {
    const FSEventsWatch watch(*files_, pathsArray({path("")}));
    watch.stream().invalidate();
    EXPECT_FALSE(watch.stream().start());
}

TEST_P(FSEventsContract, WhatWasThereBeforeIsNotTold) {
    files_->makeFile("file");
    const auto watch = watching();
    EXPECT_THAT(watch->changes(), IsEmpty());
}

TEST_P(FSEventsContract, ANewFileIsTold) {
    const auto watch = watching();
    files_->makeFile("file");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("file"), kCreated | kModified | kIsFile)));
}

TEST_P(FSEventsContract, ANewFolderIsTold) {
    const auto watch = watching();
    files_->makeFolder("folder");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("folder"), kCreated | kIsDir)));
}

TEST_P(FSEventsContract, AWrittenFileIsTold) {
    files_->makeFile("file");
    const auto watch = watching();
    files_->write("file");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("file"), kModified | kIsFile)));
}

TEST_P(FSEventsContract, WhatIsRemovedIsTold) {
    files_->makeFile("file");
    files_->makeFolder("folder");
    const auto watch = watching();
    files_->removeFile("file");
    files_->removeFolder("folder");
    EXPECT_THAT(watch->changes(),
                ElementsAre(std::pair(path("file"), kRemoved | kIsFile), std::pair(path("folder"), kRemoved | kIsDir)));
}

TEST_P(FSEventsContract, OfARenamedItemBothPathsAreTold) {
    files_->makeFile("file");
    files_->makeFolder("folder");
    const auto watch = watching();
    files_->move("file", "file2", false);
    files_->move("folder", "folder2", true);
    EXPECT_THAT(watch->changes(),
                ElementsAre(std::pair(path("file"), kRenamed | kIsFile), std::pair(path("file2"), kRenamed | kIsFile),
                            std::pair(path("folder"), kRenamed | kIsDir),
                            std::pair(path("folder2"), kRenamed | kIsDir)));
}

TEST_P(FSEventsContract, OfWhatIsMovedInOrOutOnlyThePathInsideIsTold) {
    files_->makeFile("../in");
    files_->makeFile("out");
    const auto watch = watching();
    files_->move("../in", "in", false);
    files_->move("out", "../out", false);
    EXPECT_THAT(watch->changes(),
                ElementsAre(std::pair(path("in"), kRenamed | kIsFile), std::pair(path("out"), kRenamed | kIsFile)));
}

TEST_P(FSEventsContract, AFolderThatWasMovedIsStillWatched) {
    files_->makeFolder("a");
    files_->makeFolder("a/b");
    files_->makeFolder("c");
    const auto watch = watching();
    files_->move("a", "c/a2", true);
    static_cast<void>(watch->changes());
    files_->makeFile("c/a2/b/file");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("c/a2/b/file"), kCreated | kModified | kIsFile)));
}

TEST_P(FSEventsContract, FoldersAreWatchedHoweverDeep) {
    files_->makeFolder("a");
    files_->makeFolder("a/b");
    const auto watch = watching();
    files_->makeFolder("a/b/c");
    files_->makeFolder("a/b/c/d");
    files_->makeFile("a/b/c/d/file");
    EXPECT_THAT(watch->changes(),
                ElementsAre(std::pair(path("a/b/c"), kCreated | kIsDir), std::pair(path("a/b/c/d"), kCreated | kIsDir),
                            std::pair(path("a/b/c/d/file"), kCreated | kModified | kIsFile)));
}

TEST_P(FSEventsContract, WhatHappensToAPathWithinTheLatencyIsOneEvent) {
    const auto watch = watching();
    files_->makeFolder("b");
    files_->makeFolder("a");
    files_->removeFolder("b");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("a"), kCreated | kIsDir),
                                              std::pair(path("b"), kCreated | kRemoved | kIsDir)));
    ASSERT_THAT(watch->batches, Not(IsEmpty()));
    EXPECT_THAT(watch->batches[0], ElementsAre(path("b"), path("a"), path("fence"))); // as they were first told
}

TEST_P(FSEventsContract, LaterEventsComeInAnotherCallWithHigherNumbers) {
    const auto watch = watching();
    files_->makeFolder("a");
    static_cast<void>(watch->changes());
    files_->removeFolder("a");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("a"), kRemoved | kIsDir)));
    EXPECT_GE(watch->batches.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(watch->ids, std::ranges::less_equal{}));
}

TEST_P(FSEventsContract, WhatIsBesideAWatchedPathIsNotTold) {
    const auto watch = watching();
    files_->makeFolder("../beside");
    files_->makeFolder("../watched2");
    EXPECT_THAT(watch->changes(), IsEmpty());
}

TEST_P(FSEventsContract, PathsOneBelowTheOtherAreOne) {
    files_->makeFolder("a");
    const auto watch = watching({path("a"), path(""), path("") + "/"});
    files_->makeFolder("a/b");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("a/b"), kCreated | kIsDir)));
    EXPECT_THAT(watch->batches[0], ElementsAre(path("a/b"), path("fence")));
}

TEST_P(FSEventsContract, SeveralPathsAreWatched) {
    files_->makeFolder("a");
    files_->makeFolder("b");
    files_->makeFolder("c");
    const auto watch = watching({path("b"), path("a")});
    for (const char* name : {"a/1", "c/1", "b/1"}) {
        files_->makeFolder(name);
    }
    EXPECT_THAT(watch->changes("b/fence"),
                ElementsAre(std::pair(path("a/1"), kCreated | kIsDir), std::pair(path("b/1"), kCreated | kIsDir)));
}

TEST_P(FSEventsContract, AWatchedPathMayBeAFile) {
    files_->makeFile("file");
    files_->makeFolder("folder");
    const auto watch = watching({path("file"), path("folder")});
    files_->write("file");
    files_->makeFile("file2");
    EXPECT_THAT(watch->changes("folder/fence"), ElementsAre(std::pair(path("file"), kModified | kIsFile)));
    files_->removeFile("file");
    files_->makeFile("file");
    EXPECT_THAT(watch->changes("folder/fence"),
                ElementsAre(std::pair(path("file"), kRemoved | kCreated | kModified | kIsFile)));
}

TEST_P(FSEventsContract, AWatchedPathThatIsNotThereMayCome) {
    files_->makeFolder("folder");
    const auto watch = watching({path("a"), path("folder")});
    files_->makeFolder("a");
    files_->makeFolder("a/b");
    EXPECT_THAT(watch->changes("folder/fence"),
                ElementsAre(std::pair(path("a"), kCreated | kIsDir), std::pair(path("a/b"), kCreated | kIsDir)));
}

TEST_P(FSEventsContract, AWatchedFolderThatGoesLeavesTheOthersWatched) {
    files_->makeFolder("a");
    files_->makeFolder("folder");
    const auto watch = watching({path("a"), path("folder")});
    files_->removeFolder("a");
    files_->makeFile("folder/file");
    EXPECT_THAT(watch->changes("folder/fence"),
                ElementsAre(std::pair(path("a"), kRemoved | kIsDir),
                            std::pair(path("folder/file"), kCreated | kModified | kIsFile)));
    files_->makeFolder("a");
    EXPECT_THAT(watch->changes("folder/fence"), ElementsAre(std::pair(path("a"), kCreated | kIsDir)));
}

TEST_P(FSEventsContract, AWatchedFolderThatGoesAndComesIsWatched) {
    files_->makeFolder("a");
    files_->makeFolder("folder");
    const auto watch = watching({path("a"), path("folder")});
    files_->removeFolder("a");
    files_->makeFolder("a");
    EXPECT_THAT(watch->changes("folder/fence"), ElementsAre(std::pair(path("a"), kRemoved | kCreated | kIsDir)));
    files_->makeFile("a/file");
    EXPECT_THAT(watch->changes("a/fence"), ElementsAre(std::pair(path("a/file"), kCreated | kModified | kIsFile)));
}

TEST_P(FSEventsContract, EachStreamIsTold) {
    const auto first = watching();
    const auto second = watching();
    files_->makeFolder("a");
    EXPECT_THAT(first->changes(), ElementsAre(std::pair(path("a"), kCreated | kIsDir)));
    EXPECT_EQ(second->changes().at(path("a")), kCreated | kIsDir);
}

TEST_P(FSEventsContract, AStreamThatWasStoppedIsNotCalled) {
    const auto watch = watching();
    const auto other = watching();
    files_->makeFolder("early");
    files_->runLoop()->drain(); // the latency has begun
    files_->makeFolder("late");
    watch->stream().stop();
    files_->makeFolder("never");
    EXPECT_EQ(other->changes().size(), 3U);
    EXPECT_THAT(watch->batches, IsEmpty());
}

TEST_P(FSEventsContract, AStreamThatStartsAgainTellsWhatHappensFromThenOn) {
    const auto watch = watching();
    files_->makeFolder("early");
    watch->stream().stop();
    watch->stream().stop();
    files_->makeFolder("never");
    EXPECT_TRUE(watch->stream().start());
    EXPECT_TRUE(watch->stream().start());
    files_->makeFolder("again");
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path("again"), kCreated | kIsDir)));
}

TEST_P(FSEventsContract, AStreamIsStoppedInItsCall) {
    const auto watch = watching();
    const auto other = watching();
    watch->whenCalled = [&] {
        watch->stream().stop();
        watch->stream().invalidate();
    };
    files_->makeFolder("a");
    static_cast<void>(other->changes());
    files_->makeFolder("b");
    static_cast<void>(other->changes());
    EXPECT_EQ(watch->batches.size(), 1U);
}

TEST_P(FSEventsContract, AStreamIsReleasedInItsCall) {
    const auto watch = watching();
    const auto other = watching();
    watch->whenCalled = [&] { watch->release(); };
    files_->makeFolder("a");
    static_cast<void>(other->changes());
    files_->makeFolder("b");
    static_cast<void>(other->changes());
    EXPECT_EQ(watch->batches.size(), 1U);
}

TEST_P(FSEventsContract, NamesAreToldAsTheyAre) {
    const auto watch = watching();
    files_->makeFile("é \n%@");
    files_->makeFile(std::string(200, 'x'));
    EXPECT_THAT(watch->changes(), ElementsAre(std::pair(path(std::string(200, 'x')), kCreated | kModified | kIsFile),
                                              std::pair(path("é \n%@"), kCreated | kModified | kIsFile)));
}

} // namespace
} // namespace qk::tests
