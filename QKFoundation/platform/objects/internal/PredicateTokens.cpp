// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/PredicateTokens.h"

#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>

namespace qk::internal {
namespace {

using Kind = PredicateToken::Kind;

constexpr std::u16string_view kKeyWords[] = {
    u"AND",  u"OR",      u"NOT",  u"IN",  u"BETWEEN", u"BEGINSWITH", u"CONTAINS",      u"ENDSWITH",
    u"LIKE", u"MATCHES", u"ANY",  u"ALL", u"NONE",    u"SOME",       u"YES",           u"NO",
    u"TRUE", u"FALSE",   u"NULL", u"NIL", u"SELF",    u"CAST",       u"TRUEPREDICATE", u"FALSEPREDICATE"};

constexpr std::u16string_view kTwoUnitMarks[] = {u"==", u"!=", u"<>", u"<=", u">=", u"=>", u"=<", u"&&", u"||"};
constexpr std::u16string_view kOneUnitMarks = u"=<>!(){}[],";

constexpr bool beginsWord(char16_t unit) noexcept {
    return isASCIILetter(unit) || unit == u'_' || (unit >= 0x80 && !isWhitespaceOrNewline(unit));
}

constexpr bool continuesWord(char16_t unit) noexcept {
    return beginsWord(unit) || isASCIIDigit(unit);
}

/// The length of the word at the head of `text`; 0 when there is none.
std::size_t wordLength(std::u16string_view text) {
    std::size_t length = 0;
    while (length < text.size() && beginsWord(text[length])) {
        length = static_cast<std::size_t>(
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(length), text.end(), continuesWord) -
            text.begin());
        if (length + 1 >= text.size() || text[length] != u'.' || !beginsWord(text[length + 1])) {
            break;
        }
        ++length;
    }
    return length;
}

bool isWordInAnyCase(std::u16string_view text, std::u16string_view capitals) {
    return std::ranges::equal(text, capitals, [](char16_t unit, char16_t capital) {
        return (unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit) == capital;
    });
}

std::size_t digitCount(std::u16string_view text, std::size_t from) {
    std::size_t end = from;
    while (end < text.size() && isASCIIDigit(text[end])) {
        ++end;
    }
    return end - from;
}

/// The integer of `digits`, which may have a sign; a floating number when no integer is as large.
NSNumber integerNumber(const NSString& digits) {
    const std::string plain = digits.utf8Lossy();
    const char* begin = plain.data() + (plain.starts_with('+') ? 1 : 0);
    const char* end = plain.data() + plain.size();
    std::int64_t integer = 0;
    if (std::from_chars(begin, end, integer).ec == std::errc()) {
        return NSNumber(integer);
    }
    std::uint64_t large = 0;
    if (!plain.starts_with('-') && std::from_chars(begin, end, large).ec == std::errc()) {
        return NSNumber(large);
    }
    return NSNumber(digits.doubleValue());
}

std::optional<char16_t> hexadecimalUnit(std::u16string_view digits) {
    std::uint32_t unit = 0;
    for (const char16_t digit : digits) {
        const bool isLetter = (digit >= u'a' && digit <= u'f') || (digit >= u'A' && digit <= u'F');
        if (!isLetter && !isASCIIDigit(digit)) {
            return std::nullopt;
        }
        unit = unit * 16 + (isLetter ? (digit & 0x0FU) + 9U : digit - u'0');
    }
    return digits.size() == 4 ? std::optional(static_cast<char16_t>(unit)) : std::nullopt;
}

char16_t escapedUnit(char16_t letter) {
    switch (letter) {
    case u'n': return u'\n';
    case u't': return u'\t';
    case u'r': return u'\r';
    case u'b': return u'\b';
    case u'f': return u'\f';
    default: return letter;
    }
}

} // namespace

bool PredicateToken::isWord(std::u16string_view word) const {
    return kind == Kind::Word && isWordInAnyCase(text.units(), word);
}

std::u16string_view PredicateTokenizer::take(std::size_t count) {
    const std::u16string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
}

PredicateToken PredicateTokenizer::next() {
    rest_.remove_prefix(
        static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), isWhitespaceOrNewline) - rest_.begin()));
    if (rest_.empty()) {
        return {};
    }
    const char16_t first = peek(0);
    const std::size_t afterSign = first == u'-' || first == u'+' ? 1 : 0;
    if (isASCIIDigit(peek(afterSign)) || (peek(afterSign) == u'.' && isASCIIDigit(peek(afterSign + 1)))) {
        return number();
    }
    if (beginsWord(first)) {
        return word();
    }
    switch (first) {
    case u'#': return keyPath();
    case u'"':
    case u'\'': return quoted();
    case u'%': return placeholder();
    default: return mark();
    }
}

PredicateToken PredicateTokenizer::word() {
    return {Kind::Word, NSString(take(wordLength(rest_))), std::nullopt};
}

PredicateToken PredicateTokenizer::keyPath() {
    static_cast<void>(take(1));
    if (peek(0) == u'"' || peek(0) == u'\'') {
        return {Kind::KeyPath, quoted().text, std::nullopt};
    }
    const std::size_t length = wordLength(rest_);
    if (length == 0) {
        raiseInvalidPredicate("no key path after #");
    }
    return {Kind::KeyPath, NSString(take(length)), std::nullopt};
}

PredicateToken PredicateTokenizer::quoted() {
    const char16_t quote = take(1).front();
    NSMutableString text;
    while (!rest_.empty() && rest_.front() != quote) {
        const char16_t unit = take(1).front();
        if (unit != u'\\' || rest_.empty()) {
            text.append(unit);
            continue;
        }
        const char16_t letter = take(1).front();
        const auto coded = letter == u'u' ? hexadecimalUnit(rest_.substr(0, 4)) : std::nullopt;
        if (coded.has_value()) {
            static_cast<void>(take(4));
        }
        text.append(coded.value_or(escapedUnit(letter)));
    }
    if (rest_.empty()) {
        raiseInvalidPredicate("a text without its closing quotation mark");
    }
    static_cast<void>(take(1));
    return {Kind::Text, text.copy(), std::nullopt};
}

PredicateToken PredicateTokenizer::number() {
    std::size_t end = peek(0) == u'-' || peek(0) == u'+' ? 1 : 0;
    end += digitCount(rest_, end);
    bool isInteger = true;
    if (peek(end) == u'.' && isASCIIDigit(peek(end + 1))) {
        isInteger = false;
        end += 1 + digitCount(rest_, end + 1);
    }
    if (peek(end) == u'e' || peek(end) == u'E') {
        const std::size_t sign = peek(end + 1) == u'-' || peek(end + 1) == u'+' ? 1 : 0;
        const std::size_t digits = digitCount(rest_, end + 1 + sign);
        isInteger = isInteger && digits == 0;
        end += digits > 0 ? 1 + sign + digits : 0;
    }
    if (end < rest_.size() && (continuesWord(rest_[end]) || rest_[end] == u'.')) {
        raiseInvalidPredicate("a number that goes on as " + NSString(rest_.substr(0, end + 1)));
    }
    const NSString digits(take(end));
    return {Kind::Number, digits, isInteger ? integerNumber(digits) : NSNumber(digits.doubleValue())};
}

PredicateToken PredicateTokenizer::placeholder() {
    static_cast<void>(take(1));
    while (peek(0) == u'l' || peek(0) == u'h' || peek(0) == u'q') { // sizes: arguments have theirs
        static_cast<void>(take(1));
    }
    const char16_t letter = peek(0);
    if (letter == u'\0' || std::u16string_view(u"@Kdiufg").find(letter) == std::u16string_view::npos) {
        raiseInvalidPredicate("an unknown placeholder %" + NSString(rest_.substr(0, 1)));
    }
    return {Kind::Placeholder, NSString(take(1)), std::nullopt};
}

PredicateToken PredicateTokenizer::mark() {
    if (std::ranges::find(kTwoUnitMarks, rest_.substr(0, 2)) != std::end(kTwoUnitMarks)) {
        return {Kind::Mark, NSString(take(2)), std::nullopt};
    }
    if (kOneUnitMarks.find(peek(0)) == std::u16string_view::npos) {
        raiseInvalidPredicate("nothing begins with " + NSString(rest_.substr(0, 1)));
    }
    return {Kind::Mark, NSString(take(1)), std::nullopt};
}

bool isPredicateKeyWord(const NSString& word) {
    return std::ranges::any_of(kKeyWords, [&](std::u16string_view one) { return isWordInAnyCase(word.units(), one); });
}

NSString quotedPredicateText(const NSString& text) {
    NSMutableString quoted;
    quoted.append(u'"');
    for (const char16_t unit : text.units()) {
        if (unit == u'"' || unit == u'\\') {
            quoted.append(u'\\');
        }
        quoted.append(unit);
    }
    return quoted.append(u'"').copy();
}

NSString writtenKeyPath(const NSString& keyPath) {
    const std::u16string_view units = keyPath.units();
    if (units.empty() || wordLength(units) != units.size()) {
        return "#" + quotedPredicateText(keyPath);
    }
    // A key word with a dot behind it is none, but for SELF, which would be left out.
    const bool isMistaken = isPredicateKeyWord(keyPath.substringToIndex(units.find(u'.'))) && units != u"SELF";
    return isMistaken ? "#" + keyPath : keyPath;
}

void raiseInvalidPredicate(const NSString& reason) {
    throw NSInvalidArgumentException("this is no predicate: " + reason);
}

} // namespace qk::internal
