// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace qk {
namespace {

using NSString_Translation::stringByReplacingWFormatPlaceholders;

/// The operation word for word: one replacement in the whole text after the other.
NSString replacedOneByOne(NSString text) {
    for (std::uint64_t number = 1;; ++number) {
        const NSString digits = NSString::fromUnsignedInteger(number);
        const NSString placeholder = "%" + digits + "%";
        if (!text.contains(placeholder.units())) {
            return text;
        }
        text = text.stringByReplacingOccurrencesOfString(placeholder, "%" + digits + "$@");
    }
}

TEST(WFormatPlaceholders, ATextWithoutAnyIsReturnedAsItIs) {
    for (const NSString& text : {NSString(""), NSString("a"), NSString("%"), NSString("100%"), NSString("%d %@ %s"),
                                 NSString("%%"), NSString("%1"), NSString("1%"), NSString("% 1%"), NSString("%1 %")}) {
        EXPECT_EQ(stringByReplacingWFormatPlaceholders(text).storage(), text.storage()) << text.utf8Lossy();
    }
}

TEST(WFormatPlaceholders, AreReplacedOneNumberAfterTheOther) {
    const std::vector<std::pair<NSString, NSString>> cases = {
        {"%1%", "%1$@"},
        {"%2% of %1%", "%2$@ of %1$@"},
        {"%1%%1%", "%1$@%1$@"},
        {"%1% %1% %2%", "%1$@ %1$@ %2$@"},
        {"%1% and %3%", "%1$@ and %3%"},
        {"%2%", "%2%"},
        {"%2% %3%", "%2% %3%"},
        {"%2%1%", "%2$@1$@"},
        {"%1%1%", "%1$@1%"},
        {"%1%1%1%", "%1$@1%1$@"},
        {"%1%2%", "%1$@2%"},
        {"%1%2% %2%", "%1$@2% %2$@"},
        {"%3%2%1%", "%3$@2$@1$@"},
        {"%%1%", "%%1$@"},
        {"%%%1%", "%%%1$@"},
        {"%1%%", "%1$@%"},
        {"%1%%%", "%1$@%%"},
        {"%1%%2%", "%1$@%2$@"},
        {"%0% %1%", "%0% %1$@"},
        {"%01% %1% %02%", "%01% %1$@ %02%"},
        {"%+1% %1%", "%+1% %1$@"},
        {"%18446744073709551617% %1%", "%18446744073709551617% %1$@"},
        {"%1$@ %1%", "%1$@ %1$@"},
        {"%1% %d %@", "%1$@ %d %@"},
        {"%10%", "%10%"},
        {"%1%%2%%3%%4%%5%%6%%7%%8%%9%%10%%11%%13%", "%1$@%2$@%3$@%4$@%5$@%6$@%7$@%8$@%9$@%10$@%11$@%13%"},
        {"%1%%2%%3%%4%%5%%6%%7%%8%%10%", "%1$@%2$@%3$@%4$@%5$@%6$@%7$@%8$@%10%"},
        // the character behind "9" is no digit for ten
        {"%1%%2%%3%%4%%5%%6%%7%%8%%9%%:%", "%1$@%2$@%3$@%4$@%5$@%6$@%7$@%8$@%9$@%:%"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(replacedOneByOne(text), expected) << "of the table itself: " << text.utf8Lossy();
        EXPECT_EQ(stringByReplacingWFormatPlaceholders(text), expected) << text.utf8Lossy();
    }
}

TEST(WFormatPlaceholders, OtherDigitsThanASCIIAreNoNumbers) {
    const NSString arabic(u"%\u0661% %1%");
    EXPECT_EQ(stringByReplacingWFormatPlaceholders(arabic), NSString(u"%\u0661% %1$@"));
}

TEST(WFormatPlaceholders, ThousandsOfNumbersTakeNoTime) {
    std::u16string text;
    std::u16string expected;
    constexpr int kNumbers = 200'000;
    for (int number = kNumbers; number > 0; --number) {
        const std::string digits = std::to_string(number);
        text.append(u"%").append(digits.begin(), digits.end()).append(u"%");
        expected.append(u"%").append(digits.begin(), digits.end()).append(u"$@");
    }
    EXPECT_TRUE(stringByReplacingWFormatPlaceholders(NSString(text)) == NSString(expected));
}

RC_GTEST_PROP(WFormatPlaceholders, AreReplacedAsIfOneByOne, ()) {
    // Pieces that collide: placeholders in a row share their percent signs.
    const auto piece = rc::gen::elementOf(std::vector<std::string>{"%", "%", "%", "1", "1", "2", "3", "%1", "%2%", "%3",
                                                                   "4%", "%5%", "0", "$@", "x", "10", "%6%7%8%9%"});
    std::string utf8;
    for (const std::string& each : *rc::gen::container<std::vector<std::string>>(piece)) {
        utf8 += each;
    }
    const NSString original = text(utf8);
    RC_ASSERT(stringByReplacingWFormatPlaceholders(original) == replacedOneByOne(original));
}

} // namespace
} // namespace qk
