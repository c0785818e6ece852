// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Value.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace rc {

/// Strings of a few kinds of units: letters that collide, marks of paths and URLs, every plane, and lone surrogates.
template <>
struct Arbitrary<qk::NSString> {
    static Gen<qk::NSString> arbitrary() {
        const auto unit = gen::cast<char16_t>(
            gen::weightedOneOf<int>({{6, gen::inRange(int{'a'}, int{'d'})},
                                     {3, gen::cast<int>(gen::elementOf(std::string("/.%#? ~\n1\t-")))},
                                     {2, gen::inRange(0x80, 0xD800)},
                                     {1, gen::inRange(0, 0x10000)}}));
        return gen::map(gen::container<std::u16string>(unit),
                        [](const std::u16string& units) { return qk::NSString(units); });
    }
};

template <>
struct Arbitrary<qk::NSNumber> {
    static Gen<qk::NSNumber> arbitrary() {
        using qk::NSNumber;
        const auto edge =
            gen::element(0.0, -0.0, 0.5, 9007199254740992.0, 9223372036854775808.0, -9223372036854775808.0,
                         18446744073709551616.0, std::nan(""), HUGE_VAL, -HUGE_VAL);
        return gen::oneOf(
            gen::map(gen::arbitrary<std::int64_t>(), [](std::int64_t value) { return NSNumber(value); }),
            gen::map(gen::arbitrary<std::uint64_t>(), [](std::uint64_t value) { return NSNumber(value); }),
            gen::map(gen::arbitrary<bool>(), [](bool value) { return NSNumber(value); }),
            gen::map(gen::arbitrary<double>(), [](double value) { return NSNumber(value); }),
            gen::map(edge, [](double value) { return NSNumber(value); }),
            gen::map(gen::arbitrary<std::int64_t>(),
                     [](std::int64_t value) { return NSNumber(static_cast<double>(value)); }));
    }
};

inline void showValue(const qk::NSString& string, std::ostream& out) {
    out << string.utf8Lossy();
}
inline void showValue(const qk::NSNumber& number, std::ostream& out) {
    out << number.stringValue().utf8Lossy();
}

} // namespace rc

namespace qk {
namespace {

int sign(NSComparisonResult result) {
    return static_cast<int>(result);
}

RC_GTEST_PROP(NSStringProperties, UTF8ReturnsTheSameString, (const NSString& string)) {
    const auto utf8 = string.utf8();
    const auto utf32 = string.utf32();
    RC_ASSERT(utf8.has_value() == utf32.has_value());
    if (utf8.has_value()) {
        RC_ASSERT(NSString::fromUTF8(*utf8) == string);
        RC_ASSERT(NSString::fromUTF32(*utf32) == string);
        RC_ASSERT(NSString::fromUTF32NoCopy(*utf32) == string);
        RC_ASSERT(string.utf8Lossy() == *utf8);
        RC_ASSERT(string.utf32Lossy() == *utf32);
    } else {
        RC_ASSERT(NSString::fromUTF8(string.utf8Lossy()).has_value());
        RC_ASSERT(NSString::fromUTF8(string.utf8Lossy())->length() == string.length());
    }
}

RC_GTEST_PROP(NSStringProperties, BytesAreTakenWhollyOrNotAtAll, (const std::string& bytes)) {
    const auto string = NSString::fromUTF8(bytes);
    const NSString lossy = NSString::fromUTF8Lossy(bytes);
    if (string.has_value()) {
        RC_ASSERT(string->utf8() == bytes);
        RC_ASSERT(lossy == *string);
    } else {
        RC_ASSERT(lossy.contains(u"\uFFFD"));
    }
}

RC_GTEST_PROP(NSStringProperties, IntegersSurviveTheirDigits, (std::int64_t number)) {
    RC_ASSERT(NSString::fromInteger(number).integerValue() == number);
    RC_ASSERT(NSNumber(number).stringValue().integerValue() == number);
}

RC_GTEST_PROP(NSNumberProperties, DecimalsOfTenDigitsSurviveTheirText, (std::int32_t mantissa, std::uint8_t places)) {
    const double number = mantissa / std::pow(10.0, places % 16);
    RC_ASSERT(NSNumber(number).stringValue().doubleValue() == number);
}

RC_GTEST_PROP(NSStringProperties, CompareIsATotalOrder, (const NSString& a, const NSString& b, const NSString& c)) {
    RC_ASSERT(sign(a.compare(b)) == -sign(b.compare(a)));
    RC_ASSERT((a.compare(b) == NSComparisonResult::NSOrderedSame) == (a == b));
    RC_ASSERT((a <=> b) == (a.units() <=> b.units()));
    if (a <= b && b <= c) {
        RC_ASSERT(a <= c);
    }
}

RC_GTEST_PROP(NSStringProperties, HashAgreesWithEquality, (const NSString& string)) {
    const NSString rebuilt{std::u16string(string.units())};
    RC_ASSERT(rebuilt == string);
    RC_ASSERT(rebuilt.hash() == string.hash());
    RC_ASSERT(Value(rebuilt).hash() == Value(string).hash());
}

RC_GTEST_PROP(NSStringProperties, PiecesJoinToTheString, (const NSString& string, const NSString& separator)) {
    const auto pieces = string.componentsSeparatedByString(separator);
    RC_ASSERT(!pieces.empty());
    NSMutableString joined;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        joined.append(index == 0 ? NSString() : separator).append(pieces[index]);
    }
    RC_ASSERT(joined.copy() == string);
}

RC_GTEST_PROP(NSStringProperties, ReplacingByTheSameChangesNothing, (const NSString& string, const NSString& target)) {
    RC_ASSERT(string.stringByReplacingOccurrencesOfString(target, target) == string);
}

RC_GTEST_PROP(NSStringProperties, FindAgreesWithTheStandardLibrary, (const NSString& string, const NSString& text)) {
    RC_PRE(!text.isEmpty());
    RC_ASSERT(string.find(text.units()).value_or(std::u16string::npos) == string.units().find(text.units()));
    RC_ASSERT(string.findLast(text.units()).value_or(std::u16string::npos) == string.units().rfind(text.units()));
}

RC_GTEST_PROP(NSStringProperties, PathComponentsJoinToTheTidyPath, (const NSString& path)) {
    NSString joined;
    for (const NSString& component : path.pathComponents()) {
        joined = joined.stringByAppendingPathComponent(component);
    }
    RC_ASSERT(joined == path.stringByAppendingPathComponent(""));
}

RC_GTEST_PROP(NSStringProperties, FolderAndNameJoinToTheTidyPath, (const NSString& path)) {
    const NSString folder = path.stringByDeletingLastPathComponent();
    RC_ASSERT(folder.stringByAppendingPathComponent(path.lastPathComponent()) ==
              path.stringByAppendingPathComponent(""));
}

RC_GTEST_PROP(NSStringProperties, StemAndExtensionJoinToTheTidyPath, (const NSString& path)) {
    const NSString extension = path.pathExtension();
    const NSString tidy = path.stringByAppendingPathComponent("");
    const NSString stem = path.stringByDeletingPathExtension();
    RC_ASSERT((extension.isEmpty() ? stem : stem + "." + extension) == tidy);
}

RC_GTEST_PROP(NSURLProperties, EscapesComeOffAgain, (const NSString& text)) {
    const auto escaped = CFURLCreateStringByAddingPercentEscapes(text);
    RC_ASSERT(escaped.has_value() == text.utf8().has_value());
    if (escaped.has_value()) {
        RC_ASSERT(CFURLCreateStringByReplacingPercentEscapes(*escaped) == text);
    }
}

RC_GTEST_PROP(NSURLProperties, FilePathSurvivesItsURL, (const NSString& name)) {
    RC_PRE(name.utf8().has_value());
    const NSString path = NSString("/") + name.stringByReplacingOccurrencesOfString("/", "") + "x";
    const auto url = NSURL::fileURLWithPath(path);
    RC_ASSERT(url.has_value());
    RC_ASSERT(url->path() == path);
    RC_ASSERT(NSURL::URLWithString(url->absoluteString()) == url);
    RC_ASSERT(!url->query().has_value() && !url->fragment().has_value() && !url->host().has_value());
}

RC_GTEST_PROP(NSNumberProperties, CompareIsATotalOrder, (const NSNumber& a, const NSNumber& b, const NSNumber& c)) {
    RC_ASSERT(sign(a.compare(b)) == -sign(b.compare(a)));
    RC_ASSERT(a == a);
    if (sign(a.compare(b)) <= 0 && sign(b.compare(c)) <= 0) {
        RC_ASSERT(sign(a.compare(c)) <= 0);
    }
}

RC_GTEST_PROP(NSNumberProperties, HashAgreesWithEquality, (const NSNumber& a, const NSNumber& b)) {
    if (a == b) {
        RC_ASSERT(a.hash() == b.hash());
    }
    const NSNumber floating(a.doubleValue());
    if (floating == a) {
        RC_ASSERT(floating.hash() == a.hash());
    }
}

RC_GTEST_PROP(NSNumberProperties, OrderOfIntegersIsExact, (std::int64_t a, std::uint64_t b)) {
    const int expected = std::cmp_less(a, b) ? -1 : std::cmp_equal(a, b) ? 0 : 1;
    RC_ASSERT(sign(NSNumber(a).compare(NSNumber(b))) == expected);
}

RC_GTEST_PROP(CollectionProperties, DictionaryAnswersLikeAMap, (const std::vector<std::pair<NSString, int>>& given)) {
    std::map<NSString, int> expected;
    std::vector<NSDictionary::Entry> entries;
    NSMutableDictionary changing;
    for (const auto& [key, value] : given) {
        expected[key] = value;
        entries.emplace_back(key, value);
        changing.setObject(value, key);
    }
    const NSDictionary dictionary(entries);
    RC_ASSERT(dictionary == changing.copy());
    RC_ASSERT(dictionary.count() == expected.size());
    for (const auto& [key, value] : expected) {
        RC_ASSERT(dictionary.objectForKey(key) != nullptr);
        RC_ASSERT(*dictionary.objectForKey(key) == Value(value));
    }
    RC_ASSERT(std::is_sorted(dictionary.begin(), dictionary.end(),
                             [](const auto& left, const auto& right) { return left.first < right.first; }));
}

} // namespace
} // namespace qk
