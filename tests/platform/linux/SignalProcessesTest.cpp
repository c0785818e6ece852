// SPDX-License-Identifier: Apache-2.0
// Signals of processes that run their main loop: each test's own child.
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/runtime/QKSignalHandler.h"

#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/Waiting.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace qk {
namespace {

using tests::Child;

void send(int signal) {
    ::kill(::getpid(), signal); // has arrived when this returns, in a process of one thread
}

auto dispositionOf(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

platform::Dispatch& dispatch() {
    return *platform::services()->dispatch;
}

platform::RunLoop& loop() {
    return *dispatch().mainRunLoop();
}

// Runs `scenario`, which says whether all went well, in a process of its own.
template <typename Scenario>
void expectInAProcess(Scenario scenario) {
    const Child child([&] {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        ::_exit(scenario() ? 0 : 1);
    });
    EXPECT_TRUE(child.waitUntilEnded());
    EXPECT_EQ(child.exitStatus(), 0) << "ended by signal " << child.signal();
}

TEST(SignalProcesses, SignalZeroGivesNoHandlerAndLeavesTheDispositionsAlone) {
    expectInAProcess([] {
        return QKSignalHandler::initWithSignal(0, [] {}) == nullptr && dispositionOf(SIGTERM) == SIG_DFL &&
               dispositionOf(SIGHUP) == SIG_DFL;
    });
}

TEST(SignalProcesses, WithoutAHandlerTheSignalEndsTheProcess) {
    const Child child([] {
        static_cast<void>(QKSignalHandler::initWithSignal(0, [] {}));
        send(SIGTERM);
    });
    EXPECT_TRUE(child.waitUntilEnded());
    EXPECT_EQ(child.signal(), SIGTERM);
}

TEST(SignalProcesses, TheBlockIsCalledOnTheMainThreadAndTheProcessGoesOn) {
    expectInAProcess([] {
        bool isOnMain = false;
        const auto handler = QKSignalHandler::initWithSignal(SIGTERM, [&] {
            isOnMain = dispatch().isMainThread();
            loop().stop();
        });
        send(SIGTERM);
        if (handler->source() == nullptr || isOnMain) {
            return false; // it waits for the loop
        }
        loop().run();
        return isOnMain;
    });
}

TEST(SignalProcesses, AnotherProcessSendsTheSignal) {
    const tests::Gate isReady;
    const Child child([&] {
        const auto handler = QKSignalHandler::initWithSignal(SIGTERM, [] { ::_exit(3); });
        isReady.open();
        loop().run();
    });
    isReady.wait();
    ::kill(child.pid(), SIGTERM);
    EXPECT_TRUE(child.waitUntilEnded());
    EXPECT_EQ(child.exitStatus(), 3);
}

TEST(SignalProcesses, EachDeliveryCallsAgain) {
    expectInAProcess([] {
        int calls = 0;
        const auto handler = QKSignalHandler::initWithSignal(SIGTERM, [&] { ++calls; });
        for (int round = 1; round <= 3; ++round) {
            send(SIGTERM);
            if (!tests::comesToRest(loop()) || calls != round) {
                return false;
            }
        }
        return true;
    });
}

TEST(SignalProcesses, ASignalIsIgnoredWhenItsHandlerIsGone) {
    expectInAProcess([] {
        int calls = 0;
        auto handler = QKSignalHandler::initWithSignal(SIGTERM, [&] { ++calls; });
        send(SIGTERM); // the block has not been called yet
        handler.reset();
        send(SIGTERM);
        return tests::comesToRest(loop()) && calls == 0 && dispositionOf(SIGTERM) == SIG_IGN;
    });
}

TEST(SignalProcesses, AnIgnoredSignalGetsAHandlerAgain) {
    expectInAProcess([] {
        int first = 0;
        int second = 0;
        auto handler = QKSignalHandler::initWithSignal(SIGTERM, [&] { ++first; });
        send(SIGTERM);
        handler.reset();
        handler = QKSignalHandler::initWithSignal(SIGTERM, [&] { ++second; });
        send(SIGTERM);
        return tests::comesToRest(loop()) && first == 0 && second == 1;
    });
}

TEST(SignalProcesses, WithoutABlockTheSignalIsIgnored) {
    expectInAProcess([] {
        const auto handler = QKSignalHandler::initWithSignal(SIGTERM, {});
        send(SIGTERM);
        return handler != nullptr && handler->source() == nullptr && dispositionOf(SIGTERM) == SIG_IGN;
    });
}

TEST(SignalProcesses, SignalsThatCannotBeIgnoredGiveAHandlerWithoutSource) {
    expectInAProcess([] {
        for (const int signal : {SIGKILL, SIGSTOP, -1, 32, 65, 1000}) {
            const auto handler = QKSignalHandler::initWithSignal(signal, [] {});
            if (handler == nullptr || handler->source() != nullptr) {
                return false;
            }
        }
        return dispositionOf(SIGKILL) == SIG_DFL;
    });
}

TEST(SignalProcesses, AllHandlersOfASignalAreCalledUntilTheyGo) {
    expectInAProcess([] {
        std::vector<std::shared_ptr<QKSignalHandler>> handlers;
        int calls = 0;
        for (int count = 0; count < 3; ++count) {
            handlers.push_back(QKSignalHandler::initWithSignal(SIGTERM, [&] { ++calls; }));
        }
        handlers[1].reset();
        const auto ignoring = QKSignalHandler::initWithSignal(SIGTERM, {});
        send(SIGTERM);
        return tests::comesToRest(loop()) && calls == 2;
    });
}

TEST(SignalProcesses, SignalsAreToldApart) {
    expectInAProcess([] {
        std::string calls;
        const auto one = QKSignalHandler::initWithSignal(SIGUSR1, [&] { calls += "1"; });
        const auto last = QKSignalHandler::initWithSignal(SIGRTMAX, [&] { calls += "last"; });
        send(SIGRTMAX);
        return tests::comesToRest(loop()) && calls == "last";
    });
}

TEST(SignalProcesses, AHandlerGoesInItsOwnBlock) {
    expectInAProcess([] {
        int calls = 0;
        std::shared_ptr<QKSignalHandler> handler;
        handler = QKSignalHandler::initWithSignal(SIGTERM, [&] {
            handler.reset();
            ++calls;
        });
        send(SIGTERM);
        const bool isCalm = tests::comesToRest(loop());
        send(SIGTERM);
        return isCalm && tests::comesToRest(loop()) && calls == 1;
    });
}

TEST(SignalProcesses, MoreHandlersThanThereArePlacesHaveNoSource) {
    expectInAProcess([] {
        std::vector<std::shared_ptr<QKSignalHandler>> handlers(20);
        int sources = 0;
        for (auto& handler : handlers) {
            handler = QKSignalHandler::initWithSignal(SIGTERM, [] {});
            sources += handler->source() != nullptr ? 1 : 0;
        }
        return sources == 16;
    });
}

TEST(SignalProcesses, AHostsOwnHandlerStaysWhenOursGoes) {
    expectInAProcess([] {
        auto handler = QKSignalHandler::initWithSignal(SIGTERM, [] {});
        const auto hosts = [](int) {};
        std::signal(SIGTERM, hosts);
        handler.reset();
        return dispositionOf(SIGTERM) == +hosts;
    });
}

TEST(SignalProcesses, AFaultEndsTheProcessByItsSignal) {
#if defined(QK_SANITIZE_ADDRESS) || defined(QK_SANITIZE_THREAD)
    GTEST_SKIP() << "sanitizers have handlers of their own";
#endif
    const Child child([] {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        const auto handler = QKSignalHandler::initWithSignal(SIGSEGV, [] {});
        volatile int* volatile nowhere = nullptr;
        *nowhere = 1; // NOLINT(clang-analyzer-core.NullDereference): that is what is tested
    });
    EXPECT_TRUE(child.waitUntilEnded());
    EXPECT_EQ(child.signal(), SIGSEGV);
}

TEST(SignalProcesses, AFaultSignalThatWasSentCallsTheBlock) {
    expectInAProcess([] {
        int calls = 0;
        const auto handler = QKSignalHandler::initWithSignal(SIGSEGV, [&] { ++calls; });
        send(SIGSEGV);
        return tests::comesToRest(loop()) && calls == 1;
    });
}

TEST(SignalProcesses, ASignalToAChildMadeByForkIsNotTheParents) {
    expectInAProcess([] {
        int calls = 0;
        auto handler = QKSignalHandler::initWithSignal(SIGTERM, [&] { ++calls; });
        const Child inner([&] {
            send(SIGTERM);
            handler.reset(); // which must not end the parent's
        });
        if (!inner.waitUntilEnded() || inner.exitStatus() != 0 || !tests::comesToRest(loop()) || calls != 0) {
            return false;
        }
        send(SIGTERM);
        return tests::comesToRest(loop()) && calls == 1;
    });
}

TEST(SignalProcesses, AProgramThatIsStartedHasTheDefaultDisposition) {
    expectInAProcess([] {
        const auto handler = QKSignalHandler::initWithSignal(SIGTERM, [] {});
        const auto ignoring = QKSignalHandler::initWithSignal(SIGUSR1, {});
        platform::TaskRequest request;
        request.launchPath = "/bin/sh";
        request.arguments = {"-c", "kill -USR1 $$"};
        const auto result = platform::services()->taskLauncher->run(request);
        const auto* exit = std::get_if<platform::TaskExit>(&result);
        return exit != nullptr && exit->uncaughtSignal && exit->terminationStatus == SIGUSR1;
    });
}

} // namespace
} // namespace qk
