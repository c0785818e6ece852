// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"

#include "tests/foundation/SampleBundle.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace qk {
namespace {

using namespace NSString_Translation;

// One test: what is set here stays set for the life of the process.
TEST(NSStringTranslation, TheProcessHasOneBundleAndOneLanguage) {
    EXPECT_EQ(TLN("ready"), std::nullopt);
    EXPECT_EQ(TLC("ready"), std::nullopt);
    EXPECT_EQ(bundleForLanguage("en"), nullptr);
    EXPECT_EQ(stringByReplacingWFormatPlaceholdersInStringWithId("ready"), std::nullopt);
    EXPECT_EQ(stringWithFormatId("ready"), std::nullopt);
    EXPECT_EQ(initWithFormatId("ready", "a"), std::nullopt);

    platform::memory::Machine machine;
    const std::shared_ptr<NSBundle> bundle = tests::sampleBundle(machine);
    setBundleForTranslation(bundle);
    EXPECT_EQ(TLN("ready"), NSString("READY"));

    std::vector<std::thread> threads;
    for (const NSString& language : {NSString("de"), NSString("de"), NSString("de")}) {
        threads.emplace_back([language] { setLanguageForTranslation(language); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    setLanguageForTranslation("en");
    setBundleForTranslation(nullptr);
    EXPECT_EQ(TLN("ready"), NSString("Bereit"));
    EXPECT_EQ(TLC("ready"), NSString("Bereit"));
    EXPECT_EQ(bundleForLanguage("de"), bundle->bundleForLanguage("de"));
    EXPECT_EQ(bundleForLanguage(std::nullopt), nullptr);

    EXPECT_EQ(stringByReplacingWFormatPlaceholdersInStringWithId("swapped"), NSString("%1$@ von %2$@"));
    const std::vector<std::optional<Value>> arguments{Value("3"), Value("10")};
    EXPECT_EQ(initWithFormatId("swapped", arguments), NSString("3 von 10"));
    EXPECT_EQ(initWithFormatId("swapped", "3", "10"), NSString("3 von 10"));
    EXPECT_EQ(stringWithFormatId("swapped", NSString("3"), 10), NSString("3 von 10"));
    EXPECT_EQ(stringWithFormatId("swapped", std::optional<NSString>(), std::nullopt), NSString("(null) von (null)"));
    EXPECT_EQ(stringWithFormatId("ready"), NSString("Bereit"));
}

} // namespace
} // namespace qk
