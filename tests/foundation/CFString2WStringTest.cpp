// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/CFString2WString.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace qk {
namespace {

TEST(CFString2WString, NullGivesTheEmptyWideString) {
    EXPECT_EQ(CFString2WString(nullptr), L"");
}

TEST(CFString2WString, TheEmptyStringGivesTheEmptyWideString) {
    EXPECT_EQ(CFString2WString(NSString().storage()), L"");
}

TEST(CFString2WString, KeepsZeroUnits) {
    EXPECT_EQ(CFString2WString(NSString(u"a\0b"s).storage()), L"a\0b"s);
}

TEST(CFString2WString, TwoUnitsOutsideTheBasicPlaneBecomeOneElement) {
    EXPECT_EQ(CFString2WString(NSString(u"x\U0001F600y").storage()), L"x\U0001F600y"s);
}

TEST(CFString2WString, EveryLoneSurrogateBecomesAQuestionMark) {
    EXPECT_EQ(CFString2WString(NSString(u"a\xD83D\xD83D"s
                                        u"b\xDE00"s)
                                   .storage()),
              L"a??b?"s);
}

TEST(CFString2WString, LeavesTheCountOfReferencesAsItWas) {
    const NSString string(u"text");
    EXPECT_EQ(CFString2WString(string.storage()), L"text");
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(WString2CFString, OfTheEmptyStringHoldsTheEmptyString) {
    const CFStringHolder holder = WString2CFString(L"");
    ASSERT_NE(static_cast<CFStringRef>(holder), nullptr);
    EXPECT_TRUE(NSString::sharing(holder).isEmpty());
}

TEST(WString2CFString, MalformedElementsGiveAHandleThatHoldsNull) {
    for (const auto element : {0xD800, 0xDFFF, 0x110000, -1}) {
        const std::wstring wide{L'a', static_cast<wchar_t>(element)};
        EXPECT_EQ(static_cast<CFStringRef>(WString2CFString(wide)), nullptr) << std::hex << element;
    }
}

TEST(WString2CFString, TwoSurrogateElementsAreNotJoined) {
    EXPECT_EQ(static_cast<CFStringRef>(WString2CFString({0xD83D, 0xDE00})), nullptr);
}

TEST(WString2CFString, TheHandleOwnsTheOnlyReference) {
    const CFStringHolder holder = WString2CFString(L"caf\u00E9 \U0001F600");
    ASSERT_NE(static_cast<CFStringRef>(holder), nullptr);
    EXPECT_EQ(CFGetRetainCount(holder), 1U);
    EXPECT_EQ(NSString::sharing(holder), NSString(u"caf\u00E9 \U0001F600"));
}

TEST(WString2CFString, StopsAtTheFirstZeroElement) {
    const std::wstring wide{L'a', L'b', 0, static_cast<wchar_t>(0xD800)};
    EXPECT_EQ(NSString::sharing(WString2CFString(wide)), NSString(u"ab"));
}

TEST(PrecomposedWString, OfTheEmptyStringIsEmpty) {
    EXPECT_EQ(PrecomposedWString(L""), L"");
}

TEST(PrecomposedWString, OfAMalformedStringIsEmpty) {
    EXPECT_EQ(PrecomposedWString({L'a', 0x110000}), L"");
}

TEST(PrecomposedWString, JoinsALetterAndItsAccent) {
    EXPECT_EQ(PrecomposedWString(L"e\u0301"), L"\u00E9");
}

TEST(PrecomposedWString, StopsAtTheFirstZeroElement) {
    EXPECT_EQ(PrecomposedWString(L"e\u0301\0e"s), L"\u00E9");
}

TEST(PrecomposedWString, ComposesCanonicallyAndNoMore) {
    const struct {
        const wchar_t* given;
        const wchar_t* composed;
    } rows[] = {
        {L"\u212B", L"\u00C5"},                         // a singleton changes though nothing was apart
        {L"\u2126", L"\u03A9"},                         //
        {L"\uF900", L"\u8C48"},                         //
        {L"\u0915\u093C", L"\u0915\u093C"},             // excluded from composition
        {L"\u0958", L"\u0915\u093C"},                   // ... and taken apart when it comes composed
        {L"\uFB01", L"\uFB01"},                         // a compatibility form stays
        {L"\u1100\u1161\u11A8", L"\uAC01"},             // Hangul
        {L"\uAC00\u11A8", L"\uAC01"},                   //
        {L"\uAC01\u11A8", L"\uAC01\u11A8"},             // a full syllable takes no more
        {L"a\u0301\u0323", L"\u1EA1\u0301"},            // marks are brought into order first
        {L"e\u0301\u0301", L"\u00E9\u0301"},            // the second mark is blocked
        {L"\u1100\u0300\u1161", L"\u1100\u0300\u1161"}, // and so is a vowel behind a mark
        {L"\U00011099\U000110BA", L"\U0001109A"},       // outside the basic plane
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PrecomposedWString(row.given), row.composed);
    }
}

} // namespace
} // namespace qk
