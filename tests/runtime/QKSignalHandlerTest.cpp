// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKSignalHandler.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

namespace {

using qk::QKSignalHandler;
using qk::platform::memory::Machine;
using qk::platform::memory::MemorySignalSources;
using qk::platform::memory::ScopedMachine;

constexpr int kTerminate = 15;
constexpr int kKill = 9;

class SignalHandler : public testing::Test {
protected:
    MemorySignalSources::Effect deliver(int signal) {
        const MemorySignalSources::Effect effect = machine.signalSources.deliver(signal);
        machine.dispatch.drain();
        return effect;
    }

    Machine machine;
    ScopedMachine installed{machine};
    int calls = 0;
};

TEST_F(SignalHandler, SignalZeroGivesNoHandlerAndLeavesEverythingAlone) {
    EXPECT_EQ(QKSignalHandler::initWithSignal(0, [] {}), nullptr);
    EXPECT_EQ(deliver(0), MemorySignalSources::Effect::Default);
    EXPECT_EQ(deliver(kTerminate), MemorySignalSources::Effect::Default);
}

TEST_F(SignalHandler, WithoutABlockTheSignalIsIgnored) {
    const auto handler = QKSignalHandler::initWithSignal(kTerminate, {});
    ASSERT_NE(handler, nullptr);
    EXPECT_EQ(handler->source(), nullptr);
    EXPECT_EQ(deliver(kTerminate), MemorySignalSources::Effect::Ignored);
}

TEST_F(SignalHandler, SignalCallsTheBlockOnTheMainQueue) {
    const auto handler = QKSignalHandler::initWithSignal(kTerminate, [&] {
        EXPECT_TRUE(machine.dispatch.isMainThread());
        ++calls;
    });
    EXPECT_NE(handler->source(), nullptr);
    EXPECT_EQ(machine.signalSources.deliver(kTerminate), MemorySignalSources::Effect::Called);
    EXPECT_EQ(calls, 0);
    machine.dispatch.drain();
    EXPECT_EQ(calls, 1);
}

TEST_F(SignalHandler, SignalStaysIgnoredWhenTheHandlerIsGone) {
    auto handler = QKSignalHandler::initWithSignal(kTerminate, [&] { ++calls; });
    handler.reset();
    EXPECT_EQ(deliver(kTerminate), MemorySignalSources::Effect::Ignored);
    EXPECT_EQ(calls, 0);
}

TEST_F(SignalHandler, HandlerThatIsGoneIsNotCalledForASignalThatCameBefore) {
    auto handler = QKSignalHandler::initWithSignal(kTerminate, [&] { ++calls; });
    machine.signalSources.deliver(kTerminate);
    handler.reset();
    machine.dispatch.drain();
    EXPECT_EQ(calls, 0);
}

TEST_F(SignalHandler, TwoHandlersOfOneSignalAreBothCalled) {
    const auto one = QKSignalHandler::initWithSignal(kTerminate, [&] { ++calls; });
    const auto other = QKSignalHandler::initWithSignal(kTerminate, [&] { ++calls; });
    deliver(kTerminate);
    EXPECT_EQ(calls, 2);
}

TEST_F(SignalHandler, SignalThatCannotBeIgnoredGivesAHandlerWithoutSource) {
    for (const int signal : {kKill, -1, 1000}) {
        const auto handler = QKSignalHandler::initWithSignal(signal, [&] { ++calls; });
        ASSERT_NE(handler, nullptr);
        EXPECT_EQ(handler->source(), nullptr);
        EXPECT_EQ(deliver(signal), MemorySignalSources::Effect::Default);
    }
}

} // namespace
