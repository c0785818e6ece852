// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/internal/Translation.h"

#include "tests/foundation/SampleBundle.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <latch>
#include <set>
#include <thread>
#include <vector>

namespace qk {
namespace {

using internal::Translator;

constexpr std::ptrdiff_t kThreads = 8;

/// Calls `work` with the thread's number, everywhere at once.
template <typename Work>
void runTogether(const Work& work) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (std::ptrdiff_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start, &work, number] {
            start.arrive_and_wait();
            work(static_cast<std::size_t>(number));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(TranslationThreads, OneOfTheFirstCallsWinsForAll) {
    platform::memory::Machine machine;
    tests::addSampleBundle(machine);
    Translator translator;
    std::array<std::optional<NSString>, kThreads> seen;
    const std::array<NSString, 4> languages{"de", "zhTW", "fr", "en"};
    runTogether([&](std::size_t number) {
        translator.setBundle(NSBundle::bundleWithPath(tests::kSamplePath, *machine.services()));
        translator.setLanguage(languages[number % languages.size()]);
        seen[number] = translator.TLN("ready");
    });
    for (const std::optional<NSString>& text : seen) {
        EXPECT_EQ(text, translator.TLN("ready"));
    }
}

TEST(TranslationThreads, LookUpsGoOnWhileTheValuesAreSet) {
    platform::memory::Machine machine;
    const std::shared_ptr<NSBundle> bundle = tests::sampleBundle(machine);
    Translator translator;
    runTogether([&](std::size_t number) {
        if (number == 0) {
            translator.setBundle(bundle);
        } else if (number == 1) {
            translator.setLanguage("de");
        }
        const std::set<std::optional<NSString>> allowed{std::nullopt, "READY", "Bereit"};
        for (int round = 0; round < 200; ++round) {
            EXPECT_TRUE(allowed.contains(translator.TLN("ready")));
            static_cast<void>(translator.bundleForLanguage("en"));
        }
    });
    EXPECT_EQ(translator.TLN("ready"), NSString("Bereit"));
}

TEST(TranslationThreads, ABundleIsReadByAllAtOnce) {
    platform::memory::Machine machine;
    const std::shared_ptr<NSBundle> bundle = tests::sampleBundle(machine);
    std::array<std::shared_ptr<NSBundle>, kThreads> folders;
    runTogether([&](std::size_t number) {
        folders[number] = bundle->bundleForLanguage("de");
        const NSString name = NSString::fromUnsignedInteger(number % 3);
        EXPECT_EQ(bundle->bundleForLanguage(name), nullptr);
        EXPECT_EQ(bundle->localizedStringForKey("ready", std::nullopt, name), "ready");
        EXPECT_EQ(folders[number]->localizedStringForKey("ready", std::nullopt, std::nullopt), "Bereit");
    });
    for (const std::shared_ptr<NSBundle>& folder : folders) {
        EXPECT_EQ(folder, folders.front());
    }
}

} // namespace
} // namespace qk
