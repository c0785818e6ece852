// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <barrier>
#include <thread>

namespace qk {
namespace {

constexpr int kThreads = 4;

/// Runs `work(thread)` on several threads that begin at the same moment.
template <typename Work>
void together(Work work) {
    std::barrier start(kThreads);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            start.arrive_and_wait();
            work(thread);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ValuesAcrossThreads, CountsOfAStringAddUp) {
    const NSString string("shared by all threads");
    together([&](int /*thread*/) {
        for (int round = 0; round < 2000; ++round) {
            const NSString copy = string;
            NSString other = copy;
            other = string;
            CFRelease(CFRetain(copy.storage()));
            EXPECT_EQ(other.length(), string.length());
        }
    });
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(ValuesAcrossThreads, LastReleaseMayBeAnywhere) {
    for (int round = 0; round < 200; ++round) {
        std::vector<NSString> copies(kThreads, NSString("the last one frees it"));
        together([&](int thread) {
            EXPECT_EQ(copies[static_cast<std::size_t>(thread)].characterAtIndex(0), u't');
            copies[static_cast<std::size_t>(thread)] = NSString();
        });
    }
}

TEST(ValuesAcrossThreads, BorrowedStringIsConvertedOnce) {
    const std::wstring buffer(3000, L'\U0001F600');
    for (int round = 0; round < 100; ++round) {
        const NSString string = *NSString::fromUTF32NoCopy(buffer);
        std::vector<const char16_t*> seen(kThreads);
        together([&](int thread) {
            const std::u16string_view units = string.units();
            seen[static_cast<std::size_t>(thread)] = units.data();
            EXPECT_EQ(units.size(), 6000U);
            EXPECT_EQ(units.back(), 0xDE00);
            EXPECT_EQ(string.utf32()->size(), 3000U);
        });
        EXPECT_EQ(seen, std::vector<const char16_t*>(kThreads, string.units().data()));
    }
}

TEST(ValuesAcrossThreads, HashIsTheSameForAll) {
    for (int round = 0; round < 200; ++round) {
        const NSString string("hashed by all at once");
        const NSString fresh("hashed by all at once");
        together([&](int /*thread*/) { EXPECT_EQ(string.hash(), fresh.hash()); });
    }
}

TEST(ValuesAcrossThreads, EmptyStringIsFreeForAll) {
    together([](int /*thread*/) {
        for (int round = 0; round < 2000; ++round) {
            NSString string;
            const NSString copy = string;
            string = NSString("x");
            EXPECT_TRUE(copy.isEmpty());
            EXPECT_EQ(copy.hash(), NSString().hash());
        }
    });
}

TEST(ValuesAcrossThreads, CollectionsDieOnAnyThread) {
    Value deep = "core";
    for (int level = 0; level < 10'000; ++level) {
        deep = NSDictionary{{"key", NSArray{std::move(deep)}}};
    }
    std::vector<Value> copies(kThreads, deep);
    deep = Value();
    together([&](int thread) {
        EXPECT_EQ(copies[static_cast<std::size_t>(thread)].hash(), 1U);
        copies[static_cast<std::size_t>(thread)] = Value();
    });
}

} // namespace
} // namespace qk
