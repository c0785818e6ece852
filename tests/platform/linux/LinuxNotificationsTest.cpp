// SPDX-License-Identifier: Apache-2.0
// Notifications between processes over a session bus of the test's own, and without one.
#include "QKFoundation/platform/linux/LinuxNotifications.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/PrivateBus.h"
#include "tests/platform/linux/Waiting.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace qk::platform {
namespace {

using tests::Child;
using tests::comesToRest;
using tests::Gate;
using tests::runUntil;
using namespace std::chrono_literals;

constexpr auto kAtOnce = NSNotificationSuspensionBehavior::DeliverImmediately;
constexpr auto kGenerous = 30s; // how long answers may take on a busy machine

// One process's end of the bus.
struct End {
    explicit End(const std::string& address, std::chrono::milliseconds limit = kGenerous)
        : center(makeLinuxNotifications(dispatch, tests::environment({{"DBUS_SESSION_BUS_ADDRESS", address}}), limit)) {
    }

    [[nodiscard]] std::unique_ptr<NotificationRegistration> count(const NSString& name, int& calls) const {
        return center->addObserver(name, kAtOnce, [this, &calls] {
            EXPECT_TRUE(dispatch->isMainThread());
            ++calls;
        });
    }
    [[nodiscard]] RunLoop& loop() const { return *dispatch->mainLoop(); }

    std::shared_ptr<LinuxDispatch> dispatch = std::make_shared<LinuxDispatch>();
    std::shared_ptr<DistributedNotificationCenter> center;
};

// Another process posts; whether the bus took it.
bool isPostedElsewhere(const std::string& address, const NSString& name) {
    const Child other([&] { ::_exit(End(address).center->postNotificationName(name) ? 0 : 1); });
    return other.waitUntilEnded() && other.exitStatus() == 0;
}

struct OnABus : testing::Test {
    void SetUp() override {
        if (!tests::PrivateBus::isInstalled()) {
            GTEST_SKIP() << "there is no " << tests::PrivateBus::kDaemon;
        }
        ASSERT_TRUE(bus.start());
    }

    // Whether a post of this process comes back, and once.
    bool arrivesOnce(const NSString& name, const int& heard) {
        const int before = heard;
        return end.center->postNotificationName(name) && runUntil(end.loop(), [&] { return heard > before; }) &&
               comesToRest(end.loop()) && heard == before + 1;
    }

    tests::PrivateBus bus;
    End end{bus.address()};
    int calls = 0;
};

TEST_F(OnABus, OtherNamesAreNotHeard) {
    const auto observer = end.count("a", calls);
    int others = 0;
    const auto other = end.count("b", others);
    EXPECT_TRUE(arrivesOnce("b", others));
    EXPECT_EQ(calls, 0);
}

TEST_F(OnABus, AnotherProcessIsHeard) {
    const auto observer = end.count("a", calls);
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls > 0; }));
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 1);
}

TEST_F(OnABus, AnotherProcessIsTold) {
    const Gate isWaiting;
    const Child other([&] {
        const End its(bus.address());
        int heard = 0;
        const auto observer = its.count("a", heard);
        isWaiting.open();
        ::_exit(runUntil(its.loop(), [&] { return heard > 0; }) ? 0 : 1);
    });
    isWaiting.wait();
    EXPECT_TRUE(end.center->postNotificationName("a"));
    EXPECT_TRUE(other.waitUntilEnded());
    EXPECT_EQ(other.exitStatus(), 0);
}

TEST_F(OnABus, EveryNameThatDBusCarriesArrives) {
    for (const NSString& name : {NSString(""), NSString("it's"), NSString("''"), NSString("\\"), NSString("\\'a\\'"),
                                 NSString("a,arg1='b'"), NSString("Größe ☃ 𝄞"), NSString(" "), NSString("line\nfeed"),
                                 NSString(std::u16string(5000, u'x')), NSString(std::u16string(700, u'\''))}) {
        int heard = 0;
        const auto observer = end.count(name, heard);
        EXPECT_TRUE(arrivesOnce(name, heard)) << name.utf8Lossy();
    }
}

TEST_F(OnABus, NamesThatDBusCannotCarryStayInTheProcess) {
    for (const NSString& name : {NSString(std::u16string_view(u"a\0b", 3)), NSString(std::u16string_view(u"\xD800"))}) {
        int heard = 0;
        const auto observer = end.count(name, heard);
        EXPECT_FALSE(end.center->postNotificationName(name));
        EXPECT_TRUE(comesToRest(end.loop()));
        EXPECT_EQ(heard, 1);
    }
    EXPECT_TRUE(end.center->isConnected());
}

TEST_F(OnABus, ALongNameHidesNoOther) {
    const NSString name(std::u16string(5000, u'x'));
    int longs = 0;
    const auto one = end.count(name, longs);
    const auto other = end.count("a", calls);
    EXPECT_TRUE(arrivesOnce("a", calls)); // which two requests match
    EXPECT_EQ(longs, 0);
}

TEST_F(OnABus, AllObserversOfANameAreCalled) {
    int others = 0;
    const auto one = end.count("a", calls);
    const auto two = end.count("a", calls);
    auto three = end.count("a", others);
    three.reset();
    EXPECT_TRUE(end.center->postNotificationName("a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls >= 2; }));
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(others, 0);
}

TEST_F(OnABus, AnObserverTakesItselfAndOthersAwayInItsCall) {
    std::unique_ptr<NotificationRegistration> one;
    std::unique_ptr<NotificationRegistration> two;
    const auto both = [&] {
        ++calls;
        one.reset();
        two.reset();
    };
    one = end.center->addObserver("a", kAtOnce, both);
    two = end.center->addObserver("a", kAtOnce, both);
    EXPECT_TRUE(end.center->postNotificationName("a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls > 0; }));
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 1);
}

TEST_F(OnABus, AnObserverAddsAndPostsInItsCall) {
    int answers = 0;
    std::unique_ptr<NotificationRegistration> second;
    const auto first = end.center->addObserver("question", kAtOnce, [&] {
        second = end.count("answer", answers);
        EXPECT_TRUE(end.center->postNotificationName("answer"));
    });
    EXPECT_TRUE(isPostedElsewhere(bus.address(), "question"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return answers > 0; }));
}

TEST_F(OnABus, NothingIsLostBetweenRegistrationAndTheLoop) {
    const auto observer = end.count("a", calls);
    for (int post = 0; post < 50; ++post) {
        EXPECT_TRUE(end.center->postNotificationName("a")); // reads ahead what the posts before brought
    }
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls >= 50; }));
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 50);
}

TEST_F(OnABus, ThreadsObserveAndPostAtTheSameTime) {
    constexpr int kThreads = 3;
    constexpr int kPosts = 50;
    const auto observer = end.count("a", calls);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int post = 0; post < kPosts; ++post) {
                const auto passing = end.center->addObserver(thread == 0 ? "a" : "b", kAtOnce, [] {});
                end.center->postNotificationName("a");
            }
        });
    }
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls >= kThreads * kPosts; }));
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, kThreads * kPosts);
}

TEST_F(OnABus, ABusThatDiesLeavesTheLoopAtRestAndPostsInTheProcess) {
    const auto observer = end.count("a", calls);
    EXPECT_TRUE(arrivesOnce("a", calls));
    bus.stop();
    EXPECT_TRUE(comesToRest(end.loop()));
    pollfd watched{end.loop().fileDescriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&watched, 1, 0), 0);
    EXPECT_FALSE(end.center->isConnected());
    EXPECT_FALSE(end.center->postNotificationName("a"));
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 2);
}

TEST_F(OnABus, APostFindsTheBusThatCameInThePlaceOfADeadOne) {
    const auto observer = end.count("a", calls);
    EXPECT_TRUE(arrivesOnce("a", calls));
    ASSERT_TRUE(bus.start());
    EXPECT_TRUE(arrivesOnce("a", calls)); // before the loop knows that the first one is gone
    ASSERT_TRUE(bus.start());
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_TRUE(arrivesOnce("a", calls));
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls == 4; }));
}

TEST_F(OnABus, AnObserverFindsTheBusThatCameInThePlaceOfADeadOne) {
    const auto first = end.count("a", calls);
    ASSERT_TRUE(bus.start());
    const auto second = end.count("a", calls); // of a name that was asked for before
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls == 2; }));
}

TEST_F(OnABus, ABusThatIsStoppedHoldsNobodyUpAndNothingComesTwice) {
    const End hasty(bus.address(), 1s);
    const auto observer = hasty.count("a", calls);
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(hasty.loop(), [&] { return calls == 1; }));
    bus.pause();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(hasty.center->postNotificationName("a"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, kGenerous);
    bus.goOn(); // and it handles what it was sent
    EXPECT_TRUE(runUntil(hasty.loop(), [&] { return hasty.center->isConnected(); }));
    EXPECT_TRUE(comesToRest(hasty.loop()));
    EXPECT_EQ(calls, 2);
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(hasty.loop(), [&] { return calls == 3; }));
}

TEST_F(OnABus, AChildMadeByForkPostsToItselfAndTakesNothingAway) {
    const auto observer = end.count("a", calls);
    const Child child([&] {
        const bool isLocal = !end.center->postNotificationName("a") && !end.center->isConnected();
        ::_exit(isLocal ? 0 : 1);
    });
    EXPECT_TRUE(child.waitUntilEnded());
    EXPECT_EQ(child.exitStatus(), 0);
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(isPostedElsewhere(bus.address(), "a"));
    EXPECT_TRUE(runUntil(end.loop(), [&] { return calls == 1; }));
}

TEST_F(OnABus, AProcessThatNeverRunsItsLoopKeepsOneTask) {
    for (int post = 0; post < 20; ++post) {
        EXPECT_TRUE(end.center->postNotificationName("a"));
    }
    EXPECT_TRUE(end.loop().drain());
    EXPECT_TRUE(comesToRest(end.loop()));
}

TEST_F(OnABus, TheBusOfTheRuntimeFolderIsFound) {
    const auto variables = tests::environment({{"XDG_RUNTIME_DIR", bus.folder().path()}});
    EXPECT_TRUE(makeLinuxNotifications(end.dispatch, variables, kGenerous)->isConnected());
}

class WithoutABus : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Of, WithoutABus,
                         testing::Values("", "unix:path=/nonexistent/bus", "nonsense", "unix:", "autolaunch:"));

TEST_P(WithoutABus, OwnPostsArrive) {
    const End end(GetParam());
    int calls = 0;
    const auto observer = end.count("a", calls);
    ASSERT_NE(observer, nullptr);
    EXPECT_FALSE(end.center->isConnected());
    EXPECT_FALSE(end.center->postNotificationName("a"));
    EXPECT_FALSE(end.center->postNotificationName("b"));
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 1);
}

TEST(LinuxNotifications, ABusThatSaysNothingIsNoBus) {
    const tests::TemporaryFolder folder;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    folder.path("bus").copy(address.sun_path, sizeof address.sun_path - 1);
    const UniqueFD listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(listener.get(), 8), 0); // which lets everybody connect
    const End end("unix:path=" + folder.path("bus"), 200ms);
    int calls = 0;
    const auto start = std::chrono::steady_clock::now();
    const auto observer = end.count("a", calls);
    EXPECT_FALSE(end.center->postNotificationName("a"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, kGenerous);
    EXPECT_TRUE(comesToRest(end.loop()));
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace qk::platform
