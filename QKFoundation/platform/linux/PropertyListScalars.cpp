// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/PropertyListScalars.h"

#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::string_view kSpaces = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kSpaces);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(kSpaces) - begin + 1);
}

// Takes the sign away, if there is one. Returns whether it was "-".
bool takeSign(std::string_view& text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return isNegative;
}

template <typename T>
std::optional<T> number(std::string_view digits, int base) {
    T value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> kBase64 = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(kNoDigit);
    std::uint8_t value = 0;
    for (const char byte : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")) {
        table[static_cast<unsigned char>(byte)] = value++;
    }
    return table;
}();

// The character for what stands between "&" and ";"; 0 when there is none.
char32_t referred(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, char32_t>, 5> kEntities = {
        {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};
    static constexpr std::size_t kLongest = 8; // "#x10FFFF"
    if (!name.starts_with('#')) {
        const auto* entity = std::ranges::find(kEntities, name, [](const auto& known) { return known.first; });
        return entity != kEntities.end() ? entity->second : 0;
    }
    const bool isHexadecimal = name.starts_with("#x");
    const auto character = number<std::uint32_t>(name.substr(isHexadecimal ? 2 : 1), isHexadecimal ? 16 : 10);
    return name.size() <= kLongest ? character.value_or(0) : 0;
}

// Nothing for a surrogate and above U+10FFFF.
bool appendCharacter(char32_t character, std::string& characters) {
    std::array<char16_t, 2> units{};
    const auto count = unicode::utf32ToUTF16({&character, 1}, units.data());
    if (!count.has_value()) {
        return false;
    }
    std::array<char, 3 * units.size()> bytes{};
    const auto length = unicode::utf16ToUTF8({units.data(), *count}, bytes.data());
    characters.append(bytes.data(), length.value_or(0));
    return true;
}

} // namespace

std::optional<NSNumber> integerOfText(std::string_view text) {
    std::string_view rest = trimmed(text);
    const bool isNegative = takeSign(rest);
    const bool isHexadecimal = rest.starts_with("0x") || rest.starts_with("0X");
    const auto magnitude = number<std::uint64_t>(rest.substr(isHexadecimal ? 2 : 0), isHexadecimal ? 16 : 10);
    if (!magnitude.has_value() || (isNegative && *magnitude > std::uint64_t{1} << 63U)) {
        return std::nullopt;
    }
    return isNegative ? NSNumber(static_cast<std::int64_t>(-*magnitude)) : NSNumber(*magnitude);
}

std::optional<NSNumber> realOfText(std::string_view text) {
    std::string_view rest = trimmed(text);
    const bool isNegative = takeSign(rest);
    const bool hasStrangeEnd = rest.starts_with('-') || rest.ends_with(')'); // a second sign, "nan(...)"
    double value = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (hasStrangeEnd || error == std::errc::invalid_argument || end != rest.data() + rest.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        value = NSString::fromUTF8(rest).value_or(NSString()).doubleValue();
    }
    return NSNumber(isNegative ? -value : value);
}

std::optional<NSDate> dateOfText(std::string_view text) {
    static constexpr std::string_view kForm = "0000-00-00T00:00:00Z";
    const std::string_view date = trimmed(text);
    const bool hasForm = std::ranges::equal(
        date, kForm, [](char byte, char form) { return form == '0' ? byte >= '0' && byte <= '9' : byte == form; });
    if (!hasForm) {
        return std::nullopt;
    }
    const auto part = [date](std::size_t begin, std::size_t count) {
        return number<unsigned>(date.substr(begin, count), 10).value_or(0);
    };
    const std::chrono::year_month_day day(std::chrono::year(static_cast<int>(part(0, 4))),
                                          std::chrono::month(part(5, 2)), std::chrono::day(part(8, 2)));
    if (!day.ok() || part(11, 2) >= 24 || part(14, 2) >= 60 || part(17, 2) >= 60) {
        return std::nullopt;
    }
    const auto moment = std::chrono::sys_days(day) + std::chrono::hours(part(11, 2)) +
                        std::chrono::minutes(part(14, 2)) + std::chrono::seconds(part(17, 2));
    return NSDate::dateWithTimeIntervalSince1970(static_cast<double>(moment.time_since_epoch().count()));
}

std::optional<NSData> dataOfText(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::size_t count = 0;
    std::size_t padding = 0;
    std::uint32_t bits = 0;
    for (const char byte : text) {
        if (const std::uint8_t digit = kBase64[static_cast<unsigned char>(byte)]; digit != kNoDigit) {
            bits = bits << 6U | digit;
            if (++count % 4 == 0) {
                bytes += {static_cast<char>(bits >> 16U), static_cast<char>(bits >> 8U), static_cast<char>(bits)};
            }
            if (padding > 0) {
                return std::nullopt;
            }
        } else if (byte == '=') {
            ++padding;
        } else if (kSpaces.find(byte) == std::string_view::npos) {
            return std::nullopt;
        }
    }
    if (padding > 2 || (count + padding) % 4 != 0) {
        return std::nullopt;
    }
    bits <<= 6 * padding;
    for (std::size_t shift = 16; padding > 0 && shift >= 8 * padding; shift -= 8) {
        bytes += static_cast<char>(bits >> shift);
    }
    return NSData(bytes);
}

bool appendCharacters(std::string_view text, std::string& characters) {
    for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&')) {
        const std::size_t end = text.find(';', at);
        const char32_t character = end != std::string_view::npos ? referred(text.substr(at + 1, end - at - 1)) : 0;
        characters.append(text.substr(0, at));
        if (character == 0 || !appendCharacter(character, characters)) {
            return false;
        }
        text.remove_prefix(end + 1);
    }
    characters.append(text);
    return true;
}

} // namespace qk::platform
