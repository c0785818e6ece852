// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <thread>
#include <vector>

namespace qk::tests {
namespace {

class ActivityTracingContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, ActivityTracingContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(ActivityTracingContract, NothingIsMarkedAtFirst) {
    EXPECT_TRUE(subject().silent().activityTracing->breadcrumbs().empty());
}

TEST_P(ActivityTracingContract, MarksAreKeptInOrder) {
    const auto tracing = subject().silent().activityTracing;
    tracing->setBreadcrumb("first");
    tracing->setBreadcrumb("second");
    EXPECT_EQ(tracing->breadcrumbs(), (std::vector<NSString>{"first", "second"}));
}

TEST_P(ActivityTracingContract, ThreadsMarkAtTheSameTime) {
    const auto tracing = subject().silent().activityTracing;
    std::vector<std::thread> threads;
    for (int count = 0; count < 4; ++count) {
        threads.emplace_back([&] {
            for (int mark = 0; mark < 32; ++mark) {
                tracing->setBreadcrumb("mark");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(tracing->breadcrumbs().size(), 128U);
}

} // namespace
} // namespace qk::tests
