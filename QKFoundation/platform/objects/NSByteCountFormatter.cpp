// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSByteCountFormatter.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace qk {
namespace {

constexpr std::array<std::string_view, 7> kUnits{"bytes", "KB", "MB", "GB", "TB", "PB", "EB"};
constexpr std::array<std::size_t, 7> kMostDecimals{0, 0, 1, 2, 2, 2, 2};

std::string groupedInThrees(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t position = digits.size(); position > 3;) {
        position -= 3;
        digits.insert(position, 1, ',');
    }
    return digits;
}

// `amount` / `unit` with at most `decimals` digits behind the point, halves rounded to the even neighbour. A remainder
// stays below 2^60, so ten times it fits.
std::string quotient(std::uint64_t amount, std::uint64_t unit, std::size_t decimals) {
    std::uint64_t scale = 1;
    std::uint64_t value = amount / unit;
    std::uint64_t rest = amount % unit;
    for (std::size_t decimal = 0; decimal < decimals; ++decimal) {
        scale *= 10;
        value = value * 10 + rest * 10 / unit;
        rest = rest * 10 % unit;
    }
    if (rest * 2 > unit || (rest * 2 == unit && value % 2 != 0)) {
        ++value;
    }
    std::string text = groupedInThrees(value / scale);
    if (std::uint64_t fraction = value % scale; fraction != 0) {
        text += '.';
        for (; fraction != 0; fraction = fraction % scale) {
            scale /= 10;
            text += static_cast<char>('0' + fraction / scale);
        }
    }
    return text;
}

} // namespace

NSString NSByteCountFormatter::stringFromByteCount(std::int64_t byteCount, NSByteCountFormatterCountStyle countStyle) {
    if (byteCount == 0) {
        return "Zero KB";
    }
    const bool isDecimal =
        countStyle == NSByteCountFormatterCountStyle::File || countStyle == NSByteCountFormatterCountStyle::Decimal;
    const std::uint64_t step = isDecimal ? 1000 : 1024;
    // The smallest number has no counterpart above zero among the signed ones.
    const std::uint64_t amount =
        byteCount < 0 ? ~static_cast<std::uint64_t>(byteCount) + 1 : static_cast<std::uint64_t>(byteCount);
    std::size_t index = 0;
    std::uint64_t unit = 1;
    while (index + 1 < kUnits.size() && amount / unit >= step) {
        unit *= step;
        ++index;
    }
    std::string text = byteCount < 0 ? "-" : "";
    text += quotient(amount, unit, kMostDecimals[index]);
    text += ' ';
    text += amount == 1 ? "byte" : kUnits[index];
    return NSString::fromUTF8Lossy(text);
}

} // namespace qk
