// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

TEST(NSStringNormalization, PrecomposedTextIsTheSameString) {
    for (const NSString& composed : {NSString(), NSString("plain"), NSString("\u00E9\u4E2D\U0001F600")}) {
        EXPECT_EQ(composed.precomposedStringWithCanonicalMapping().storage(), composed.storage());
    }
}

TEST(NSStringNormalization, DecomposedTextIsComposed) {
    EXPECT_EQ(NSString("e\u0301").precomposedStringWithCanonicalMapping(), "\u00E9");
    EXPECT_EQ(NSString("\u1112\u1161\u11AB").precomposedStringWithCanonicalMapping(), "\uD55C");
    EXPECT_EQ(NSString("\u212B").precomposedStringWithCanonicalMapping(), "\u00C5");
    EXPECT_EQ(NSString("\uFB01").precomposedStringWithCanonicalMapping(), "\uFB01") << "compatibility forms stay";
    const std::u16string lone = {u'e', 0x301, 0xD800};
    EXPECT_EQ(NSString(lone).precomposedStringWithCanonicalMapping().units(), (std::u16string{0xE9, 0xD800}));
}

} // namespace
} // namespace qk
