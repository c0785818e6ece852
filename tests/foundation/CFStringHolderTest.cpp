// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/CFStringHolder.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace qk {
namespace {

// A string, and a second reference to it for a handle to adopt.
CFStringRef referenceTo(const NSString& string) {
    return CFRetain(string.storage());
}

TEST(CFStringHolder, HoldsNullByDefault) {
    const CFStringHolder holder;
    EXPECT_EQ(static_cast<CFStringRef>(holder), nullptr);
}

TEST(CFStringHolder, NullCanBeAdoptedCopiedAndAssigned) {
    const CFStringHolder null(nullptr);
    const CFStringHolder copy(null); // NOLINT(performance-unnecessary-copy-initialization): the copy is the subject
    EXPECT_EQ(static_cast<CFStringRef>(copy), nullptr);
    CFStringHolder assigned;
    assigned = null;
    EXPECT_EQ(static_cast<CFStringRef>(assigned), nullptr);
}

TEST(CFStringHolder, AdoptsWithoutRetaining) {
    const NSString string(u"text");
    ASSERT_EQ(CFGetRetainCount(string.storage()), 1U);
    {
        const CFStringHolder holder(referenceTo(string));
        EXPECT_EQ(static_cast<CFStringRef>(holder), string.storage());
        EXPECT_EQ(CFGetRetainCount(string.storage()), 2U);
    }
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(CFStringHolder, CopyingRetains) {
    const NSString string(u"text");
    const CFStringHolder holder(referenceTo(string));
    {
        const CFStringHolder copy(
            holder); // NOLINT(performance-unnecessary-copy-initialization): the copy is the subject
        EXPECT_EQ(CFGetRetainCount(string.storage()), 3U);
    }
    EXPECT_EQ(CFGetRetainCount(string.storage()), 2U);
}

TEST(CFStringHolder, AssigningReleasesWhatWasHeld) {
    const NSString first(u"first");
    const NSString second(u"second");
    CFStringHolder holder(referenceTo(first));
    const CFStringHolder other(referenceTo(second));
    CFStringHolder& result = holder = other;
    EXPECT_EQ(&result, &holder);
    EXPECT_EQ(static_cast<CFStringRef>(holder), second.storage());
    EXPECT_EQ(CFGetRetainCount(first.storage()), 1U);
    EXPECT_EQ(CFGetRetainCount(second.storage()), 3U);
}

TEST(CFStringHolder, AssigningAnEmptyHandleReleasesTheString) {
    const NSString string(u"text");
    CFStringHolder holder(referenceTo(string));
    holder = CFStringHolder();
    EXPECT_EQ(static_cast<CFStringRef>(holder), nullptr);
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(CFStringHolder, SurvivesBeingAssignedToItself) {
    CFStringHolder holder;
    {
        const NSString string(u"text");
        holder = CFStringHolder(referenceTo(string));
    }
    const CFStringHolder& same = holder;
    holder = same;
    EXPECT_EQ(CFGetRetainCount(holder), 1U);
    EXPECT_EQ(NSString::sharing(holder), NSString(u"text"));
}

TEST(CFStringHolder, TheLastHandleKeepsTheStringAlive) {
    CFStringHolder holder;
    {
        const NSString string(u"kept");
        const CFStringHolder inner(referenceTo(string));
        holder = inner;
    }
    EXPECT_EQ(CFGetRetainCount(holder), 1U);
    EXPECT_EQ(NSString::sharing(holder), NSString(u"kept"));
}

TEST(CFStringHolder, NeverThrowsWhenItEnds) {
    EXPECT_TRUE(std::is_nothrow_destructible_v<CFStringHolder>);
}

} // namespace
} // namespace qk
