// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

namespace qk::platform {
namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
        reader.reset(ends[0]);
        writer.reset(ends[1]);
    }
    void write() const { EXPECT_EQ(::write(writer.get(), "x", 1), 1); }
    void read() const {
        char byte = 0;
        EXPECT_EQ(::read(reader.get(), &byte, 1), 1);
    }

    UniqueFD reader;
    UniqueFD writer;
};

class LinuxRunLoopTest : public testing::Test {
protected:
    const std::shared_ptr<LinuxRunLoop> loop_ = LinuxRunLoop::make();
    Pipe pipe_;
    int calls_ = 0;

    /// Whether a host would see the loop's descriptor readable, within `milliseconds`.
    bool isReadable(int milliseconds = 0) const {
        pollfd polled{loop_->fileDescriptor(), POLLIN, 0};
        return ::poll(&polled, 1, milliseconds) == 1;
    }
};

TEST_F(LinuxRunLoopTest, WithoutADescriptorThereIsNothingToWatch) {
    EXPECT_EQ(loop_->addFileDescriptor(-1, [] {}), nullptr);
    EXPECT_EQ(errno, EBADF);
    const UniqueFD regular(::open("/proc/self/exe", O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(regular);
    EXPECT_EQ(loop_->addFileDescriptor(regular.get(), [] {}), nullptr);
    EXPECT_EQ(errno, EPERM);
    EXPECT_FALSE(loop_->drain());
}

TEST_F(LinuxRunLoopTest, ADescriptorIsWatchedOnce) {
    const auto source = loop_->addFileDescriptor(pipe_.reader.get(), [this] { ++calls_; });
    EXPECT_NE(source, nullptr);
    EXPECT_EQ(loop_->addFileDescriptor(pipe_.reader.get(), [] {}), nullptr);
    EXPECT_EQ(errno, EEXIST);
    pipe_.write();
    EXPECT_TRUE(loop_->drain());
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxRunLoopTest, AnEmptyCallIsHarmless) {
    const auto source = loop_->addFileDescriptor(pipe_.reader.get(), nullptr);
    pipe_.write();
    loop_->drain();
}

TEST_F(LinuxRunLoopTest, AWatchIsCalledForAsLongAsThereIsSomethingToRead) {
    const auto source = loop_->addFileDescriptor(pipe_.reader.get(), [this] { ++calls_; });
    EXPECT_FALSE(loop_->drain());
    pipe_.write();
    EXPECT_TRUE(isReadable());
    EXPECT_TRUE(loop_->drain());
    EXPECT_TRUE(loop_->drain());
    EXPECT_EQ(calls_, 2);
    pipe_.read();
    EXPECT_FALSE(isReadable());
    EXPECT_FALSE(loop_->drain());
}

TEST_F(LinuxRunLoopTest, AHangUpIsTold) {
    const auto source = loop_->addFileDescriptor(pipe_.reader.get(), [this] { ++calls_; });
    pipe_.writer.reset();
    EXPECT_TRUE(loop_->drain());
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxRunLoopTest, OtherEventsCanBeWatched) {
    const auto source = loop_->addFileDescriptor(
        pipe_.writer.get(), [this] { ++calls_; }, EPOLLOUT);
    EXPECT_TRUE(loop_->drain());
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxRunLoopTest, AWatchThatWasTakenAwayIsNotCalled) {
    auto source = loop_->addFileDescriptor(pipe_.reader.get(), [this] { ++calls_; });
    pipe_.write();
    source.reset();
    EXPECT_FALSE(isReadable());
    EXPECT_FALSE(loop_->drain());
    EXPECT_NE(loop_->addFileDescriptor(pipe_.reader.get(), [] {}), nullptr);
}

TEST_F(LinuxRunLoopTest, AWatchTakesItselfAway) {
    std::unique_ptr<RunLoopSource> source;
    auto held = std::make_shared<int>(0);
    source = loop_->addFileDescriptor(pipe_.reader.get(), [&, held] {
        source.reset();
        ++*held; // what the call holds is whole until it ends
    });
    pipe_.write();
    EXPECT_TRUE(loop_->drain());
    EXPECT_FALSE(loop_->drain());
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(LinuxRunLoopTest, OfTwoWatchesThatTakeEachOtherAwayOneIsCalled) {
    const Pipe other;
    std::unique_ptr<RunLoopSource> first;
    std::unique_ptr<RunLoopSource> second;
    const auto call = [&] {
        ++calls_;
        first.reset();
        second.reset();
    };
    first = loop_->addFileDescriptor(pipe_.reader.get(), call);
    second = loop_->addFileDescriptor(other.reader.get(), call);
    pipe_.write();
    other.write();
    EXPECT_TRUE(loop_->drain());
    EXPECT_FALSE(loop_->drain());
    EXPECT_EQ(calls_, 1);
}

TEST_F(LinuxRunLoopTest, ANewWatchOfTheSameNumberDoesNotGetTheOldOnesEvent) {
    std::vector<std::string> calls;
    std::unique_ptr<RunLoopSource> first;
    std::unique_ptr<RunLoopSource> second;
    Pipe other;
    std::unique_ptr<RunLoopSource> replacing;
    const auto replace = [&](const char* name, std::unique_ptr<RunLoopSource>& victim, const UniqueFD& descriptor) {
        calls.emplace_back(name);
        if (replacing == nullptr) {
            const int number = descriptor.get();
            victim.reset();
            const UniqueFD quiet(::eventfd(0, EFD_CLOEXEC));
            ASSERT_EQ(::dup3(quiet.get(), number, O_CLOEXEC), number); // closes what had the number
            replacing = loop_->addFileDescriptor(number, [&] { calls.emplace_back("replacing"); });
        }
    };
    first = loop_->addFileDescriptor(pipe_.reader.get(), [&] { replace("first", second, other.reader); });
    second = loop_->addFileDescriptor(other.reader.get(), [&] { replace("second", first, pipe_.reader); });
    pipe_.write();
    other.write();
    loop_->drain();
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(LinuxRunLoopTest, MoreDescriptorsThanOneLookTakesAreAllServed) {
    constexpr int kMany = 100;
    std::vector<Pipe> pipes(kMany);
    std::vector<std::unique_ptr<RunLoopSource>> sources;
    for (Pipe& pipe : pipes) {
        sources.push_back(loop_->addFileDescriptor(pipe.reader.get(), [&] {
            pipe.read();
            ++calls_;
        }));
        pipe.write();
    }
    while (loop_->drain()) {
    }
    EXPECT_EQ(calls_, kMany);
}

TEST_F(LinuxRunLoopTest, SourcesOutliveTheLoop) {
    auto loop = LinuxRunLoop::make();
    const auto watch = loop->addFileDescriptor(pipe_.reader.get(), [this] { ++calls_; });
    const auto timer = loop->scheduleTimer(0, true, [this] { ++calls_; });
    loop.reset();
    EXPECT_EQ(calls_, 0);
}

TEST_F(LinuxRunLoopTest, TasksOfALoopThatGoesAreGivenBack) {
    auto held = std::make_shared<int>(0);
    auto loop = LinuxRunLoop::make();
    loop->perform([held] {});
    loop.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(LinuxRunLoopDeathTest, WhatATaskThrowsEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            const auto loop = LinuxRunLoop::make();
            loop->perform([] { throw 1; });
            loop->drain();
        },
        "");
}

TEST(LinuxRunLoopLimits, WithoutDescriptorsThereIsNoLoop) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const auto loop = LinuxRunLoop::make();
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW(static_cast<void>(LinuxRunLoop::make()), std::system_error);
    EXPECT_THROW(static_cast<void>(loop->scheduleTimer(0, false, [] {})), std::system_error);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_NE(loop->scheduleTimer(0, false, [] {}), nullptr);
}

} // namespace
} // namespace qk::platform
