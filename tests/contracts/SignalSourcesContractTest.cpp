// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <array>
#include <cstdint>
#include <memory>
#include <thread>

namespace qk::tests {
namespace {

using platform::SignalSource;

constexpr std::int32_t kSignal = 10; // nobody sends it but this test
constexpr std::int32_t kOther = 12;

class SignalSourcesContract : public Contract {
protected:
    void deliver(std::int32_t signal) {
        subject().deliverSignal(signal);
        while (services_.dispatch->mainRunLoop()->drain()) {
        }
    }
    std::unique_ptr<SignalSource> counting(std::int32_t signal) {
        return services_.signalSources->makeSignalSource(signal, [this] {
            EXPECT_TRUE(services_.dispatch->isMainThread());
            ++calls_;
        });
    }

    const platform::Services services_ = subject().silent();
    int calls_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Of, SignalSourcesContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(SignalSourcesContract, WhatCannotBeWatchedHasNoSource) {
    for (const std::int32_t signal : {0, -1, 9, 19, 65, 1000, INT32_MAX, INT32_MIN}) {
        services_.signalSources->ignoreSignal(signal);
        EXPECT_EQ(counting(signal), nullptr) << signal;
    }
}

TEST_P(SignalSourcesContract, AnIgnoredSignalDoesNothing) {
    services_.signalSources->ignoreSignal(kSignal);
    deliver(kSignal);
}

TEST_P(SignalSourcesContract, ASignalCallsOnceTheLoopRuns) {
    const auto source = counting(kSignal);
    subject().deliverSignal(kSignal);
    EXPECT_EQ(calls_, 0);
    deliver(kSignal);
    EXPECT_GE(calls_, 1); // the two may have become one
    EXPECT_LE(calls_, 2);
}

TEST_P(SignalSourcesContract, OtherSignalsDoNotCall) {
    services_.signalSources->ignoreSignal(kOther);
    const auto source = counting(kSignal);
    deliver(kOther);
    EXPECT_EQ(calls_, 0);
}

TEST_P(SignalSourcesContract, ASignalIsIgnoredWhenItsSourcesAreGone) {
    auto source = counting(kSignal);
    subject().deliverSignal(kSignal);
    source.reset();
    deliver(kSignal);
    EXPECT_EQ(calls_, 0);
}

TEST_P(SignalSourcesContract, IgnoringASignalThatHasASourceKeepsTheSource) {
    const auto source = counting(kSignal);
    services_.signalSources->ignoreSignal(kSignal);
    deliver(kSignal);
    EXPECT_EQ(calls_, 1);
}

TEST_P(SignalSourcesContract, AllSourcesOfASignalAreCalled) {
    const std::array sources{counting(kSignal), counting(kSignal), counting(kSignal)};
    deliver(kSignal);
    EXPECT_EQ(calls_, 3);
}

TEST_P(SignalSourcesContract, ASourceGoesInItsOwnCall) {
    std::unique_ptr<SignalSource> source;
    source = services_.signalSources->makeSignalSource(kSignal, [&] {
        source.reset();
        ++calls_;
    });
    deliver(kSignal);
    deliver(kSignal);
    EXPECT_EQ(calls_, 1);
}

TEST_P(SignalSourcesContract, ASourceOfAnotherThreadCallsOnTheMainThread) {
    std::unique_ptr<SignalSource> source;
    std::thread([&] { source = counting(kSignal); }).join();
    deliver(kSignal);
    EXPECT_EQ(calls_, 1);
}

} // namespace
} // namespace qk::tests
