// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListScalars.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>

namespace qk::platform {
namespace {

constexpr std::string_view kSpaces = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kSpaces);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kSpaces) - begin + 1);
}

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

void removeSign(std::string_view& text) {
    if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
}

template <typename T>
std::optional<T> number(std::string_view digits, int base) {
    T value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

std::size_t countDigits(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    return std::ranges::equal(text, lower, [](char one, char other) { return (one | 0x20) == other; });
}

bool isReference(std::string_view name) {
    static constexpr std::array<std::string_view, 5> kEntities = {"amp", "lt", "gt", "quot", "apos"};
    static constexpr std::size_t kLongest = 8; // "#x10FFFF"
    if (!name.starts_with('#')) {
        return std::ranges::find(kEntities, name) != kEntities.end();
    }
    if (name.size() > kLongest) {
        return false;
    }
    const bool isHexadecimal = name.starts_with("#x");
    const auto character = number<std::uint32_t>(name.substr(isHexadecimal ? 2 : 1), isHexadecimal ? 16 : 10);
    return character.has_value() && *character != 0 && *character <= 0x10FFFF &&
           (*character < 0xD800 || *character > 0xDFFF);
}

constexpr std::array<bool, 256> kBase64 = [] {
    std::array<bool, 256> table{};
    for (const char byte : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")) {
        table[static_cast<unsigned char>(byte)] = true;
    }
    return table;
}();

} // namespace

std::optional<IntegerText> integerText(std::string_view text) {
    std::string_view rest = trimmed(text);
    const bool isNegative = rest.starts_with('-');
    removeSign(rest);
    const bool isHexadecimal = rest.starts_with("0x") || rest.starts_with("0X");
    IntegerText result{.digits = static_cast<std::size_t>(rest.data() - text.data()), .zeros = 0};
    if (isHexadecimal) {
        rest.remove_prefix(2);
    } else {
        const std::size_t significant = rest.find_first_not_of('0');
        result.zeros = significant == std::string_view::npos ? std::max<std::size_t>(rest.size(), 1) - 1 : significant;
    }
    const std::optional<std::uint64_t> magnitude = number<std::uint64_t>(rest, isHexadecimal ? 16 : 10);
    const bool fits = magnitude.has_value() && (!isNegative || *magnitude <= std::uint64_t{1} << 63U);
    return fits ? std::optional(result) : std::nullopt;
}

bool isRealText(std::string_view text) {
    std::string_view rest = trimmed(text);
    removeSign(rest);
    if (equalsIgnoringCase(rest, "nan") || equalsIgnoringCase(rest, "inf") || equalsIgnoringCase(rest, "infinity")) {
        return true;
    }
    std::size_t digits = countDigits(rest);
    rest.remove_prefix(digits);
    if (rest.starts_with('.')) {
        const std::size_t fraction = countDigits(rest.substr(1));
        digits += fraction;
        rest.remove_prefix(1 + fraction);
    }
    if (digits == 0) {
        return false;
    }
    if (rest.starts_with('e') || rest.starts_with('E')) {
        rest.remove_prefix(1);
        removeSign(rest);
        const std::size_t exponent = countDigits(rest);
        rest.remove_prefix(exponent);
        return exponent > 0 && rest.empty();
    }
    return rest.empty();
}

std::optional<int> yearOfDateText(std::string_view text) {
    static constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    const std::string_view date = trimmed(text);
    const bool hasForm = std::ranges::equal(
        date, kForm, [](char byte, char form) { return form == '0' ? isDigit(byte) : byte == form; });
    if (!hasForm) {
        return std::nullopt;
    }
    const auto part = [date](std::size_t begin, std::size_t count) {
        return number<unsigned>(date.substr(begin, count), 10).value_or(0);
    };
    const auto year = static_cast<int>(part(0, 4));
    const std::chrono::year_month_day day(std::chrono::year(year), std::chrono::month(part(5, 2)),
                                          std::chrono::day(part(8, 2)));
    const bool exists = day.ok() && part(11, 2) < 24 && part(14, 2) < 60 && part(17, 2) < 60;
    return exists ? std::optional(year) : std::nullopt;
}

bool isBase64(std::string_view text) {
    std::size_t count = 0;
    std::size_t padding = 0;
    for (const char byte : text) {
        if (kBase64[static_cast<unsigned char>(byte)]) {
            ++count;
            if (padding > 0) {
                return false;
            }
        } else if (byte == '=') {
            ++padding;
        } else if (kSpaces.find(byte) == std::string_view::npos) {
            return false;
        }
    }
    return padding <= 2 && (count + padding) % 4 == 0;
}

bool hasTameReferences(std::string_view text) {
    for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at)) {
        const std::size_t end = text.find(';', at);
        if (end == std::string_view::npos || !isReference(text.substr(at + 1, end - at - 1))) {
            return false;
        }
        at = end;
    }
    return true;
}

} // namespace qk::platform
