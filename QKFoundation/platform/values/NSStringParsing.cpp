// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace qk {

namespace {

using internal::isASCIIDigit;

std::u16string_view skippingWhitespace(std::u16string_view text) {
    const auto first = std::find_if_not(text.begin(), text.end(), internal::isWhitespaceOrNewline);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    return text;
}

/// Takes one sign off the head of `text`. Returns whether it was "-".
bool takeSign(std::u16string_view& text) {
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) {
        text.remove_prefix(1);
    }
    return negative;
}

template <typename Integer>
Integer parseInteger(std::u16string_view text) {
    text = skippingWhitespace(text);
    const bool negative = takeSign(text);
    Integer value = 0; // gathered below zero, where there is room for every magnitude
    for (const char16_t unit : text) {
        if (!isASCIIDigit(unit)) {
            break;
        }
        const auto digit = static_cast<Integer>(unit - u'0');
        if (__builtin_mul_overflow(value, Integer{10}, &value) || __builtin_sub_overflow(value, digit, &value)) {
            return negative ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
        }
    }
    if (negative) {
        return value;
    }
    return value == std::numeric_limits<Integer>::min() ? std::numeric_limits<Integer>::max()
                                                        : static_cast<Integer>(-value);
}

/// The longest head of `text` of the form digits [ "." digits ] [ e [ sign ] digits ], with at least one digit in the
/// mantissa; empty when there is none.
std::string decimalNumber(std::u16string_view text) {
    std::string number;
    const auto takeDigits = [&](std::size_t index) {
        while (index < text.size() && isASCIIDigit(text[index])) {
            number.push_back(static_cast<char>(text[index++]));
        }
        return index;
    };
    std::size_t index = takeDigits(0);
    std::size_t digits = index;
    if (index < text.size() && text[index] == u'.') {
        number.push_back('.');
        const std::size_t end = takeDigits(index + 1);
        digits += end - index - 1;
        index = end;
    }
    if (digits == 0) {
        return {};
    }
    if (index < text.size() && (text[index] == u'e' || text[index] == u'E')) {
        const std::size_t mantissa = number.size();
        number.push_back('e');
        if (++index < text.size() && (text[index] == u'-' || text[index] == u'+')) {
            number.push_back(static_cast<char>(text[index++]));
        }
        if (takeDigits(index) == index) {
            number.resize(mantissa);
        }
    }
    return number;
}

/// Whether `number`, which no double can hold, is too large rather than too small: where does its first digit stand?
bool isTooLarge(const std::string& number) {
    const std::size_t mantissaEnd = std::min(number.find('e'), number.size());
    const std::size_t point = std::min(number.find('.'), mantissaEnd);
    const std::size_t first = number.find_first_of("123456789");
    const double place = static_cast<double>(point) - static_cast<double>(first);
    if (mantissaEnd == number.size()) {
        return place > 0;
    }
    const char* exponent = number.data() + mantissaEnd + 1;
    const bool negative = *exponent == '-';
    exponent += negative || *exponent == '+' ? 1 : 0;
    std::int64_t magnitude = 0;
    const auto parsed = std::from_chars(exponent, number.data() + number.size(), magnitude);
    if (parsed.ec == std::errc::result_out_of_range) {
        return !negative;
    }
    return place + static_cast<double>(negative ? -magnitude : magnitude) > 0;
}

} // namespace

std::int64_t NSString::integerValue() const {
    return parseInteger<std::int64_t>(units());
}

std::int32_t NSString::intValue() const {
    return parseInteger<std::int32_t>(units());
}

double NSString::doubleValue() const {
    std::u16string_view text = skippingWhitespace(units());
    const bool negative = takeSign(text);
    const std::string number = decimalNumber(text);
    if (number.empty()) {
        return 0;
    }
    double value = 0;
    const auto parsed = std::from_chars(number.data(), number.data() + number.size(), value);
    if (parsed.ec == std::errc::result_out_of_range) {
        value = isTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return negative ? -value : value;
}

bool NSString::boolValue() const {
    std::u16string_view text = skippingWhitespace(units());
    if (!text.empty() && std::u16string_view(u"YyTt").find(text.front()) != std::u16string_view::npos) {
        return true;
    }
    takeSign(text);
    const std::size_t first = text.find_first_not_of(u'0');
    return first != std::u16string_view::npos && isASCIIDigit(text[first]);
}

} // namespace qk
