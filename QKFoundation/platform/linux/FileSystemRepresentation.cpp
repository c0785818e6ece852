// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace qk::platform {
namespace {

constexpr char32_t kByteSurrogates = 0xDC00; // U+DC00 + byte stands for a byte that is no character
constexpr char32_t kSupplementary = 0x10000;

void appendUTF8(std::string& bytes, char32_t scalar) {
    const auto tail = [scalar](unsigned shift) { return static_cast<char>(0x80U | ((scalar >> shift) & 0x3FU)); };
    if (scalar < 0x80) {
        bytes.push_back(static_cast<char>(scalar));
    } else if (scalar < 0x800) {
        bytes.append({static_cast<char>(0xC0U | (scalar >> 6U)), tail(0)});
    } else if (scalar < kSupplementary) {
        bytes.append({static_cast<char>(0xE0U | (scalar >> 12U)), tail(6), tail(0)});
    } else {
        bytes.append({static_cast<char>(0xF0U | (scalar >> 18U)), tail(12), tail(6), tail(0)});
    }
}

constexpr bool isHighSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00;
}

// The length of the well-formed character at the start of `bytes`, which is not empty; 0 when there is none.
std::size_t lengthOfCharacter(std::string_view bytes) {
    struct Lead {
        unsigned char first, last; // lead bytes
        std::size_t length;
        unsigned char lowSecond, highSecond; // what may follow; all later bytes are 80..BF
    };
    static constexpr std::array kLeads = {
        Lead{0x00, 0x7F, 1, 0, 0},       Lead{0xC2, 0xDF, 2, 0x80, 0xBF}, Lead{0xE0, 0xE0, 3, 0xA0, 0xBF},
        Lead{0xE1, 0xEC, 3, 0x80, 0xBF}, Lead{0xED, 0xED, 3, 0x80, 0x9F}, Lead{0xEE, 0xEF, 3, 0x80, 0xBF},
        Lead{0xF0, 0xF0, 4, 0x90, 0xBF}, Lead{0xF1, 0xF3, 4, 0x80, 0xBF}, Lead{0xF4, 0xF4, 4, 0x80, 0x8F},
    };
    const auto at = [bytes](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const auto* const lead = std::ranges::find_if(
        kLeads, [first = at(0)](const Lead& candidate) { return first >= candidate.first && first <= candidate.last; });
    if (lead == kLeads.end() || bytes.size() < lead->length) {
        return 0;
    }
    if (lead->length > 1 && (at(1) < lead->lowSecond || at(1) > lead->highSecond)) {
        return 0;
    }
    for (std::size_t index = 2; index < lead->length; ++index) {
        if ((at(index) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    return lead->length;
}

} // namespace

std::optional<std::string> fileSystemRepresentation(const NSString& string) {
    const std::u16string_view units = string.units();
    std::string bytes;
    bytes.reserve(units.size());
    for (std::size_t index = 0; index < units.size(); ++index) {
        const char16_t unit = units[index];
        if (unit == 0) {
            return std::nullopt;
        }
        if (isHighSurrogate(unit) && index + 1 < units.size() && isLowSurrogate(units[index + 1])) {
            const char32_t high = static_cast<char32_t>(unit & 0x3FFU) << 10U;
            appendUTF8(bytes, kSupplementary + high + (units[++index] & 0x3FFU));
        } else if (unit >= kByteSurrogates + 0x80 && unit <= kByteSurrogates + 0xFF) {
            bytes.push_back(static_cast<char>(unit & 0xFFU));
        } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
            return std::nullopt;
        } else {
            appendUTF8(bytes, unit);
        }
    }
    return bytes;
}

NSString stringWithFileSystemRepresentation(std::string_view bytes) {
    if (std::optional<NSString> whole = NSString::fromUTF8(bytes); whole.has_value()) {
        return *whole;
    }
    NSMutableString string;
    while (!bytes.empty()) {
        std::size_t sound = 0;
        while (sound < bytes.size()) {
            const std::size_t length = lengthOfCharacter(bytes.substr(sound));
            if (length == 0) {
                break;
            }
            sound += length;
        }
        string.append(NSString::fromUTF8Lossy(bytes.substr(0, sound)));
        bytes.remove_prefix(sound);
        if (!bytes.empty()) {
            string.append(static_cast<char16_t>(kByteSurrogates + static_cast<unsigned char>(bytes.front())));
            bytes.remove_prefix(1);
        }
    }
    return string.copy();
}

} // namespace qk::platform
