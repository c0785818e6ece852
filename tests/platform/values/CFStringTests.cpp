// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <limits>

namespace qk {
namespace {

constexpr std::size_t kForever = std::numeric_limits<std::size_t>::max();

/// Made before `main` and left to be destroyed after it, by which time the empty storage must still be there.
const NSString globalEmpty;
const NSString globalText("made before main");

TEST(CFString, StaticStringsAreReadyBeforeMain) {
    EXPECT_TRUE(globalEmpty.isEmpty());
    EXPECT_EQ(globalText.length(), 16U);
}

TEST(CFString, EmptyStringIsNeverCounted) {
    const CFStringRef empty = NSString().storage();
    EXPECT_EQ(CFGetRetainCount(empty), kForever);
    EXPECT_EQ(CFRetain(empty), empty);
    EXPECT_EQ(CFGetRetainCount(empty), kForever);
    CFRelease(empty);
    CFRelease(empty);
    EXPECT_EQ(CFGetRetainCount(empty), kForever);
}

TEST(CFString, RetainAndReleaseCount) {
    const NSString string("counted");
    const CFStringRef storage = string.storage();
    EXPECT_EQ(CFGetRetainCount(storage), 1U);
    EXPECT_EQ(CFRetain(storage), storage);
    EXPECT_EQ(CFGetRetainCount(storage), 2U);
    CFRelease(storage);
    EXPECT_EQ(CFGetRetainCount(storage), 1U);
}

TEST(CFString, AdoptingTakesTheCallersReference) {
    const NSString string("bridged");
    const CFStringRef storage = CFRetain(string.storage());
    {
        const NSString adopted = NSString::adopting(storage);
        EXPECT_EQ(adopted, "bridged");
        EXPECT_EQ(CFGetRetainCount(storage), 2U);
    }
    EXPECT_EQ(CFGetRetainCount(storage), 1U);
}

TEST(CFString, SharingAddsAReference) {
    const NSString string("bridged");
    {
        const NSString shared = NSString::sharing(string.storage());
        EXPECT_EQ(shared.storage(), string.storage());
        EXPECT_EQ(CFGetRetainCount(string.storage()), 2U);
    }
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(CFString, StorageOutlivesTheStringWhileItIsRetained) {
    CFStringRef storage = nullptr;
    {
        const NSString string("outlived by its storage");
        storage = CFRetain(string.storage());
    }
    EXPECT_EQ(CFGetRetainCount(storage), 1U);
    EXPECT_EQ(NSString::adopting(storage), "outlived by its storage");
}

TEST(CFString, BorrowedStringReadsTheCallersBuffer) {
    std::wstring buffer = L"borrowed";
    const auto string = NSString::fromUTF32NoCopy(buffer);
    ASSERT_TRUE(string.has_value());
    EXPECT_EQ(string->length(), 8U);
    buffer[0] = L'B'; // allowed here, since nobody has asked for the units
    EXPECT_EQ(string->utf32(), L"Borrowed");
    EXPECT_EQ(*string, "Borrowed");
}

TEST(CFString, BorrowedStringIsIndependentOnceItsUnitsWereAskedFor) {
    std::wstring buffer = L"x\U0001F600y";
    const auto string = NSString::fromUTF32NoCopy(buffer);
    ASSERT_TRUE(string.has_value());
    EXPECT_EQ(string->length(), 4U) << "two elements and a pair";
    const auto* const first = string->units().data();
    buffer.assign(3, L'-');
    EXPECT_EQ(string->units(), u"x\U0001F600y");
    EXPECT_EQ(string->units().data(), first);
    EXPECT_EQ(string->utf32(), L"x\U0001F600y");
    EXPECT_EQ(string->utf32Lossy(), L"x\U0001F600y");
}

TEST(CFString, BorrowedStringIsCountedAsAnyOther) {
    const std::wstring buffer(5000, L'\u4E2D');
    auto string = NSString::fromUTF32NoCopy(buffer);
    ASSERT_TRUE(string.has_value());
    const NSString copy = *string;
    EXPECT_EQ(CFGetRetainCount(copy.storage()), 2U);
    string.reset();
    EXPECT_EQ(CFGetRetainCount(copy.storage()), 1U);
    EXPECT_EQ(copy.units(), std::u16string(5000, u'\u4E2D'));
}

TEST(CFString, BorrowedStringMayGoWithoutEverBeingRead) {
    const std::wstring buffer = L"never read";
    EXPECT_TRUE(NSString::fromUTF32NoCopy(buffer).has_value());
}

TEST(CFString, BorrowedStringBehavesLikeItsCopy) {
    const std::wstring buffer = L"/usr/lib/x.so";
    const NSString copied = *NSString::fromUTF32(buffer);
    EXPECT_EQ(*NSString::fromUTF32NoCopy(buffer), copied);
    EXPECT_EQ(NSString::fromUTF32NoCopy(buffer)->hash(), copied.hash());
    EXPECT_EQ(NSString::fromUTF32NoCopy(buffer)->pathExtension(), "so");
    EXPECT_EQ(NSString::fromUTF32NoCopy(buffer)->utf8(), copied.utf8());
    EXPECT_EQ(*NSString::fromUTF32NoCopy(buffer) <=> copied, std::strong_ordering::equal);
    EXPECT_EQ(*NSString::fromUTF32NoCopy(buffer) + "!", copied + "!");
}

} // namespace
} // namespace qk
