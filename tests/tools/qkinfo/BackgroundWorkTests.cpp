// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tools/qkinfo/BackgroundWork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace qk::info {

namespace {

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    return ends;
}

std::string readUntil(int fd, std::string_view end) {
    std::string text;
    char character = 0;
    while (!text.ends_with(end) && read(fd, &character, 1) == 1) {
        text += character;
    }
    return text;
}

const std::function<void()> kInterruptAndHang = [] {
    kill(getpid(), SIGINT);
    for (;;) {
        pause();
    }
};

} // namespace

TEST(BackgroundWork, RunsOnAThreadOfItsOwn) {
    std::thread::id worker;
    runInBackground([&] { worker = std::this_thread::get_id(); }, {});
    EXPECT_NE(worker, std::thread::id());
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST(BackgroundWork, RaisesWhatTheWorkRaises) {
    EXPECT_THROW(runInBackground([] { throw std::runtime_error("no"); }, {}), std::runtime_error);
}

TEST(BackgroundWork, TheLineMovesWhileTheWorkLastsAndIsClearedAtItsEnd) {
    const auto ends = makePipe();
    std::string seen;
    runInBackground([&] { seen = readUntil(ends[0], "Waiting -"); }, BusyLine{ends[1], "Waiting"});
    close(ends[1]);
    EXPECT_EQ(seen, "\rWaiting |\rWaiting /\rWaiting -");
    EXPECT_THAT(readUntil(ends[0], "(end)"), testing::EndsWith("\r\x1b[K"));
    close(ends[0]);
}

TEST(BackgroundWork, SignalsAreAsTheyWereAfterwards) {
    struct sigaction before {};
    struct sigaction after {};
    sigaction(SIGINT, nullptr, &before);
    runInBackground([] {}, {});
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
}

TEST(BackgroundWorkDeathTest, ASignalEndsTheProcessWithTheLineCleared) {
    EXPECT_EXIT(runInBackground(kInterruptAndHang, BusyLine{STDERR_FILENO, "Waiting"}), testing::KilledBySignal(SIGINT),
                "\r\x1b\\[K$");
}

TEST(BackgroundWorkDeathTest, AnIgnoredSignalStaysIgnored) {
    const auto interruptOnly = [] {
        std::signal(SIGINT, SIG_IGN);
        runInBackground([] { kill(getpid(), SIGINT); }, {});
        _exit(7);
    };
    EXPECT_EXIT(interruptOnly(), testing::ExitedWithCode(7), "");
}

TEST(BackgroundWorkDeathTest, ASignalEndsTheChildrenToo) {
    if (!std::filesystem::exists("/proc/thread-self/children")) {
        GTEST_SKIP() << "this kernel does not list children";
    }
    // The child holds the writing end for as long as it lives.
    const auto ends = makePipe();
    const auto startChildAndHang = [&] {
        pid_t child = 0;
        const std::array<const char*, 3> arguments{"sleep", "1000", nullptr};
        posix_spawnp(&child, "sleep", nullptr, nullptr, const_cast<char* const*>(arguments.data()), environ);
        kInterruptAndHang();
    };
    EXPECT_EXIT(runInBackground(startChildAndHang, {}), testing::KilledBySignal(SIGINT), "");
    close(ends[1]);
    EXPECT_EQ(readUntil(ends[0], "(end)"), "");
    close(ends[0]);
}

TEST(BackgroundWork, ServingTheMainLoopLastsUntilWhatItCallsSaysSo) {
    const auto ends = makePipe();
    int calls = 0;
    const auto timer = platform::services()->dispatch->mainRunLoop()->scheduleTimer(0.001, true, [&calls] { ++calls; });
    serveMainLoop([&] { return calls >= 3; }, BusyLine{ends[1], "Looking"});
    EXPECT_GE(calls, 3);
    close(ends[1]);
    EXPECT_THAT(readUntil(ends[0], "(end)"),
                testing::AllOf(testing::StartsWith("\rLooking |"), testing::EndsWith("\r\x1b[K")));
    close(ends[0]);
}

TEST(BackgroundWork, ALoopThatIsSteppedByHandIsRun) {
    const platform::memory::Machine machine;
    const platform::memory::ScopedMachine installed(machine);
    bool isDone = false;
    const auto timer = machine.dispatch.mainRunLoop()->scheduleTimer(60, false, [&] { isDone = true; });
    serveMainLoop([&] { return isDone; }, {});
    EXPECT_TRUE(isDone);
}

TEST(BackgroundWorkDeathTest, ASignalEndsTheServingWithTheLineCleared) {
    const auto interruptAndServe = [] {
        platform::services()->dispatch->mainRunLoop()->perform([] { kill(getpid(), SIGINT); });
        serveMainLoop([] { return false; }, BusyLine{STDERR_FILENO, "Looking"});
    };
    EXPECT_EXIT(interruptAndServe(), testing::KilledBySignal(SIGINT), "\r\x1b\\[K$");
}

} // namespace qk::info
