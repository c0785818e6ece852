// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDispatch.h"
#include "QKFoundation/platform/linux/LinuxFSEvents.h"

#include "tests/platform/linux/MetadataFixture.h"
#include "tests/platform/linux/Waiting.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// Searches whose walks run on real threads. Meant for ThreadSanitizer, too.
namespace qk::platform {
namespace {

class MetadataThreads : public testing::Test, protected tests::MetadataFixture {
protected:
    MetadataThreads() {
        for (int index = 0; index < kFiles; ++index) {
            write("scope/" + std::to_string(index % kFolders) + "/a/" + std::to_string(index), 1000 + index);
        }
    }
    [[nodiscard]] MetadataSearch search(std::size_t limit) const {
        return {.scopes = {NSString::fromUTF8Lossy(path("scope"))},
                .predicate = NSPredicate::predicateWithFormat("kMDItemContentTypeTree == 'public.data'"),
                .sortDescriptors = {{kMDItemContentModificationDate, false}},
                .limit = limit};
    }

    static constexpr int kFiles = 600;
    static constexpr int kFolders = 60;
    BackgroundQueue queue{{.threads = 3, .idleTime = std::chrono::milliseconds(10)}};
    std::shared_ptr<LinuxDispatch> real = std::make_shared<LinuxDispatch>(queue);
    LinuxMetadataIndex threaded{LinuxRoot(), real, events,
                                std::make_shared<LinuxUniformTypes>(LinuxRoot(path("no-types"))),
                                StandardFolders(LinuxRoot(), std::make_shared<memory::MemoryUsers>(),
                                                [](const char*) { return std::nullopt; })};
};

TEST_F(MetadataThreads, WhatTwoThreadsFindIsWhatThereIs) {
    for (int pass = 0; pass < 10; ++pass) {
        MetadataResults found;
        const auto running = threaded.begin(
            search(5), {.progress = {}, .deliver = [&](MetadataResults results) { found = std::move(results); }});
        ASSERT_TRUE(tests::runUntil(*real->currentRunLoop(), [&] { return !found.empty(); }));
        ASSERT_EQ(found.size(), 5U);
        for (std::size_t index = 0; index < found.size(); ++index) {
            EXPECT_EQ(found[index]->valueForAttribute(kMDItemContentModificationDate),
                      Value(NSDate::dateWithTimeIntervalSince1970(1000 + kFiles - 1 - static_cast<int>(index))));
        }
    }
}

TEST_F(MetadataThreads, SearchesEndWhileTheyWalk) {
    int told = 0;
    for (int pass = 0; pass < 50; ++pass) {
        const auto running =
            threaded.begin(search(0), {.progress = {}, .deliver = [&](const MetadataResults&) { ++told; }});
        if (pass % 3 == 0) {
            static_cast<void>(real->currentRunLoop()->drain());
        }
    }
    const int before = told;
    EXPECT_TRUE(tests::comesToRest(*real->currentRunLoop()));
    EXPECT_EQ(told, before);
}

TEST_F(MetadataThreads, SearchesRunOnSeveralThreads) {
    const auto one = [this] {
        bool isDone = false;
        const auto running = threaded.begin(search(3), {.progress = {}, .deliver = [&](const MetadataResults& results) {
                                                            isDone = results.size() == 3;
                                                        }});
        EXPECT_TRUE(tests::runUntil(*real->currentRunLoop(), [&] { return isDone; }));
    };
    std::thread other(one);
    one();
    other.join();
}

TEST_F(MetadataThreads, WhatReallyHappensIsTold) {
    const auto watched = std::make_shared<LinuxFSEvents>(LinuxFSEvents::Means::Inotify);
    LinuxMetadataIndex live(
        LinuxRoot(), real, watched, std::make_shared<LinuxUniformTypes>(LinuxRoot(path("no-types"))),
        StandardFolders(LinuxRoot(), std::make_shared<memory::MemoryUsers>(), [this](const std::string& name) {
            return name == "XDG_DATA_HOME" ? std::optional(path("data")) : std::nullopt;
        }));
    std::string newest;
    const auto running = live.begin(search(5), {.progress = {}, .deliver = [&](const MetadataResults& results) {
                                                    const auto first =
                                                        results.at(0)->valueForAttribute(NSMetadataItemDisplayNameKey);
                                                    newest = first->as<NSString>()->utf8Lossy();
                                                }});
    RunLoop& loop = *real->currentRunLoop();
    ASSERT_TRUE(tests::runUntil(loop, [&] { return newest == "599"; }));

    write("made/deep/new", 5000);
    move("made", "scope/moved");
    EXPECT_TRUE(tests::runUntil(loop, [&] { return newest == "new"; }));
    write("scope/moved/deep/newer", 6000);
    EXPECT_TRUE(tests::runUntil(loop, [&] { return newest == "newer"; }));
    remove("scope/moved");
    EXPECT_TRUE(tests::runUntil(loop, [&] { return newest == "599"; }));
}

TEST_F(MetadataThreads, NothingOfAnEndedSearchIsLeft) {
    std::weak_ptr<int> captured;
    {
        const auto witness = std::make_shared<int>(0);
        captured = witness;
        const auto running =
            threaded.begin(search(0), {.progress = {}, .deliver = [witness](const MetadataResults&) {}});
    }
    EXPECT_TRUE(captured.expired());
}

} // namespace
} // namespace qk::platform
