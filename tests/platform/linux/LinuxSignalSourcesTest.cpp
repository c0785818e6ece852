// SPDX-License-Identifier: Apache-2.0
// Signals of a process with several threads. Meant for ThreadSanitizer, too.
#include "QKFoundation/platform/linux/LinuxSignalSources.h"

#include "tests/platform/linux/Waiting.h"

#include <gtest/gtest.h>

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <memory>
#include <string>
#include <thread>

namespace qk::platform {
namespace {

using tests::comesToRest;
using tests::runUntil;

constexpr int kSignal = SIGUSR1;

struct LinuxSignals : testing::Test {
    [[nodiscard]] RunLoop& loop() const { return *dispatch->mainLoop(); }

    std::shared_ptr<LinuxDispatch> dispatch = std::make_shared<LinuxDispatch>();
    LinuxSignalSources sources{dispatch};
};

TEST_F(LinuxSignals, ASignalToAnyThreadCallsOnTheMainThread) {
    int calls = 0;
    const auto source = sources.makeSignalSource(kSignal, [&] {
        EXPECT_TRUE(dispatch->isMainThread());
        ++calls;
    });
    std::thread([] { ::raise(kSignal); }).join();
    EXPECT_TRUE(comesToRest(loop()));
    EXPECT_EQ(calls, 1);
}

TEST_F(LinuxSignals, SourcesComeAndGoWhileSignalsArrive) {
    sources.ignoreSignal(kSignal);
    std::atomic<bool> isOver = false;
    std::thread sender([&] {
        while (!isOver) {
            ::raise(kSignal);
        }
    });
    std::thread other([&] {
        for (int round = 0; round < 500; ++round) {
            const auto passing = sources.makeSignalSource(kSignal, [] {});
        }
    });
    int calls = 0;
    const auto source = sources.makeSignalSource(kSignal, [&] { ++calls; });
    EXPECT_TRUE(runUntil(loop(), [&] { return calls >= 100; }));
    isOver = true;
    sender.join();
    other.join();
    EXPECT_TRUE(comesToRest(loop()));
}

// Whether a thread waits in the kernel.
bool isAsleep(pid_t thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t name = text.rfind(')');
    return name != std::string::npos && text.compare(name, 3, ") S") == 0;
}

void waitUntilAsleep(const std::atomic<pid_t>& thread) {
    while (thread == 0 || !isAsleep(thread)) {
        std::this_thread::yield();
    }
}

TEST_F(LinuxSignals, AnInterruptedSystemCallGoesOn) {
#if defined(QK_SANITIZE_THREAD)
    GTEST_SKIP() << "ThreadSanitizer keeps signals back until the call has returned";
#endif
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    std::atomic<pid_t> id = 0;
    ssize_t length = -1;
    std::thread reader([&] {
        id = ::gettid();
        char byte = 0;
        length = ::read(ends[0], &byte, 1);
    });
    int calls = 0;
    const auto source = sources.makeSignalSource(kSignal, [&] { ++calls; });
    for (int round = 1; round <= 3; ++round) {
        waitUntilAsleep(id);
        ::pthread_kill(reader.native_handle(), kSignal);
        EXPECT_TRUE(runUntil(loop(), [&] { return calls == round; }));
    }
    waitUntilAsleep(id);
    EXPECT_EQ(::write(ends[1], "x", 1), 1);
    reader.join();
    EXPECT_EQ(length, 1);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(LinuxSignals, AFullOrEmptyCounterIsHarmless) {
    int calls = 0;
    const auto source = sources.makeSignalSource(kSignal, [&] { ++calls; });
    for (int times = 0; times < 1000; ++times) {
        ::raise(kSignal);
    }
    EXPECT_TRUE(comesToRest(loop()));
    EXPECT_EQ(calls, 1); // several deliveries became one call
}

TEST_F(LinuxSignals, ErrnoIsLeftAsItWas) {
    const auto source = sources.makeSignalSource(kSignal, [] {});
    errno = ENOTTY;
    ::raise(kSignal);
    EXPECT_EQ(errno, ENOTTY);
}

TEST(LinuxSignalSources, ASourceOutlivesItsLoop) {
    auto source = LinuxSignalSources(std::make_shared<LinuxDispatch>()).makeSignalSource(kSignal, [] { FAIL(); });
    ASSERT_NE(source, nullptr);
    ::raise(kSignal);
    source.reset();
    ::raise(kSignal);
}

} // namespace
} // namespace qk::platform
