// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxRunLoop.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

/// What a host sees that watches a run loop's descriptor with a loop of its own.
namespace qk::platform {
namespace {

// The eventfds of this process.
std::set<int> eventDescriptors() {
    std::set<int> result;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the iterator's own descriptor
        if (std::filesystem::read_symlink(entry.path(), gone) == "anon_inode:[eventfd]") {
            result.insert(std::stoi(entry.path().filename()));
        }
    }
    return result;
}

class LinuxRunLoopHost : public testing::Test {
protected:
    const std::shared_ptr<LinuxRunLoop> loop_ = LinuxRunLoop::make();
    int calls_ = 0;

    /// Whether a host would see the loop's descriptor readable, within `milliseconds`.
    bool isReadable(int milliseconds = 0) const {
        pollfd polled{loop_->fileDescriptor(), POLLIN, 0};
        return ::poll(&polled, 1, milliseconds) == 1;
    }
};

TEST_F(LinuxRunLoopHost, TheDescriptorIsReadableWheneverThereIsSomethingToCall) {
    EXPECT_FALSE(isReadable());
    loop_->perform([this] {
        ++calls_;
        loop_->perform([this] { ++calls_; });
    });
    EXPECT_TRUE(isReadable());
    EXPECT_TRUE(loop_->drain());
    EXPECT_TRUE(isReadable());
    EXPECT_TRUE(loop_->drain());
    EXPECT_FALSE(isReadable());
    EXPECT_EQ(calls_, 2);
}

TEST_F(LinuxRunLoopHost, TimersMakeTheDescriptorReadable) {
    const auto timer = loop_->scheduleTimer(0.001, false, [this] { ++calls_; });
    EXPECT_TRUE(isReadable(10'000));
    EXPECT_TRUE(loop_->drain());
    EXPECT_FALSE(isReadable());
    auto second = loop_->scheduleTimer(0, false, [this] { ++calls_; });
    EXPECT_TRUE(isReadable(10'000));
    second.reset();
    EXPECT_FALSE(loop_->drain());
    EXPECT_FALSE(isReadable());
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxRunLoopHost, AHostThatPollsSeesEverything) {
    constexpr int kEach = 1000;
    std::thread poster([this] {
        for (int index = 0; index < kEach; ++index) {
            loop_->perform([this] { ++calls_; });
        }
    });
    int ticks = 0;
    const auto timer = loop_->scheduleTimer(0.0001, true, [&] { ++ticks; });
    while (calls_ < kEach || ticks < 3) {
        ASSERT_TRUE(isReadable(10'000));
        loop_->drain();
    }
    poster.join();
}

TEST_F(LinuxRunLoopHost, ALoopInsideACallSeesWhatIsPostedMeanwhile) {
    loop_->perform([this] {
        loop_->perform([this] { ++calls_; });
        EXPECT_TRUE(isReadable()) << "as the loop of a dialog would look";
        EXPECT_TRUE(loop_->drain());
        EXPECT_EQ(calls_, 1);
    });
    EXPECT_TRUE(loop_->drain());
}

TEST_F(LinuxRunLoopHost, NobodyWritesWhileAWakeUpIsUnderWay) {
    const auto before = eventDescriptors();
    const auto own = LinuxRunLoop::make();
    std::vector<int> added;
    std::ranges::set_difference(eventDescriptors(), before, std::back_inserter(added));
    ASSERT_EQ(added.size(), 1U);
    const UniqueFD counter(::fcntl(added[0], F_DUPFD_CLOEXEC, 0));
    ASSERT_TRUE(counter);
    for (int index = 0; index < 1000; ++index) {
        own->perform([this] { ++calls_; });
    }
    std::uint64_t written = 0;
    ASSERT_EQ(::read(counter.get(), &written, sizeof written), static_cast<ssize_t>(sizeof written));
    EXPECT_EQ(written, 1U);
    own->perform([this] { ++calls_; });
    own->drain();
    EXPECT_EQ(calls_, 1001);
}

} // namespace
} // namespace qk::platform
