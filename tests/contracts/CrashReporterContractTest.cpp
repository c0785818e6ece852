// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <thread>

namespace qk::tests {
namespace {

class CrashReporterContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, CrashReporterContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(CrashReporterContract, AProgramThatOffersNoSlotHasNone) {
    const auto reporter = subject().silent().crashReporter;
    EXPECT_EQ(reporter->informationSlot(), nullptr);
    std::thread([&] { EXPECT_EQ(reporter->informationSlot(), nullptr); }).join();
}

} // namespace
} // namespace qk::tests
