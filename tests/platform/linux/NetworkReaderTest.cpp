// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkReader.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

const LinuxRoot kNowhere("/nonexistent");

TEST(NetworkReader, WithoutAReadingEachLookIsANewOne) {
    const NetworkReader reader(kNowhere);
    const auto first = reader.snapshot();
    ASSERT_NE(first, nullptr);
    EXPECT_NE(reader.snapshot(), first);
}

TEST(NetworkReader, AReadingHasOneLook) {
    const NetworkReader reader(kNowhere);
    auto reading = reader.beginReading();
    const auto seen = reader.snapshot();
    EXPECT_EQ(reader.snapshot(), seen);
    reading.reset();
    EXPECT_NE(reader.snapshot(), seen);
    const auto next = reader.beginReading();
    EXPECT_NE(reader.snapshot(), seen);
}

TEST(NetworkReader, NestedReadingsShareTheLookOfTheOutermost) {
    const NetworkReader reader(kNowhere);
    auto outer = reader.beginReading();
    const auto seen = reader.snapshot();
    auto inner = reader.beginReading();
    EXPECT_EQ(reader.snapshot(), seen);
    inner.reset();
    EXPECT_EQ(reader.snapshot(), seen);
    inner = reader.beginReading();
    outer.reset(); // in whatever order they end
    EXPECT_EQ(reader.snapshot(), seen);
    inner.reset();
    EXPECT_NE(reader.snapshot(), seen);
}

TEST(NetworkReader, ReadingsOfTwoReadersAreTwo) {
    const NetworkReader one(kNowhere);
    const NetworkReader two(kNowhere);
    const auto reading = one.beginReading();
    EXPECT_NE(one.snapshot(), two.snapshot());
    EXPECT_NE(two.snapshot(), two.snapshot());
    const auto another = two.beginReading();
    EXPECT_NE(one.snapshot(), two.snapshot());
    EXPECT_EQ(two.snapshot(), two.snapshot());
}

TEST(NetworkReader, AReadingMayOutliveItsReader) {
    auto reader = std::make_unique<NetworkReader>(kNowhere);
    auto reading = reader->beginReading();
    reader.reset();
    reading.reset();
}

TEST(NetworkReader, CapturedFactsAreTheOnlyLook) {
    const auto captured = std::make_shared<const NetworkSnapshot>(KernelNetwork{}, kNowhere);
    const NetworkReader reader(captured);
    EXPECT_EQ(reader.snapshot(), captured);
    const auto reading = reader.beginReading();
    EXPECT_EQ(reader.snapshot(), captured);
}

TEST(NetworkReader, AReadingBelongsToItsThread) {
    const NetworkReader reader(kNowhere);
    const auto reading = reader.beginReading();
    const auto seen = reader.snapshot();
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                EXPECT_NE(reader.snapshot(), seen);
                const auto own = reader.beginReading();
                EXPECT_EQ(reader.snapshot(), reader.snapshot());
                EXPECT_NE(reader.snapshot(), seen);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(reader.snapshot(), seen);
}

TEST(NetworkSnapshotThreads, OneLookServesAllAtTheSameTime) {
    const NetworkSnapshot network; // of the running system, whatever it has
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&network] {
            for (const NetworkLink& link : network.kernel().links) {
                EXPECT_EQ(network.link(link.name), &link);
                static_cast<void>(network.wireless(link));
                static_cast<void>(network.hardware(link));
                for (const NetworkAddress& address : network.addresses(link.index)) {
                    static_cast<void>(network.neighbour(link.index, address.address));
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace qk::platform
