// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/DynamicTypes.h"

#include <array>
#include <cstddef>
#include <utility>

namespace qk::platform::types {
namespace {

constexpr std::string_view kPrefix = "dyn.a";
constexpr std::string_view kDigits = "abcdefghkmnpqrstuvwxyz0123456789";
constexpr unsigned kBitsOfDigit = 5;
constexpr unsigned kBitsOfByte = 8;

// The types that have a letter of their own.
constexpr std::array<std::pair<char, std::string_view>, 10> kLetters{{{'6', "public.data"},
                                                                      {'7', "public.text"},
                                                                      {'8', "public.plain-text"},
                                                                      {'9', "public.utf16-plain-text"},
                                                                      {'A', "com.apple.traditional-mac-plain-text"},
                                                                      {'B', "public.image"},
                                                                      {'C', "public.video"},
                                                                      {'D', "public.audio"},
                                                                      {'E', "public.directory"},
                                                                      {'F', "public.folder"}}};

} // namespace

bool isDynamic(std::string_view identifier) {
    return identifier.starts_with(kPrefix);
}

std::optional<std::string> dynamicText(std::string_view identifier) {
    if (!isDynamic(identifier)) {
        return std::nullopt;
    }
    std::string text;
    unsigned bits = 0;
    unsigned count = 0;
    for (const char digit : identifier.substr(kPrefix.size())) {
        const std::size_t value = kDigits.find(digit);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        bits = (bits << kBitsOfDigit | static_cast<unsigned>(value)) & 0xFFFU;
        count += kBitsOfDigit;
        if (count >= kBitsOfByte) {
            count -= kBitsOfByte;
            text += static_cast<char>(bits >> count & 0xFFU);
        }
    }
    return text.starts_with('?') ? std::optional(text) : std::nullopt;
}

std::vector<std::string_view> dynamicConformance(std::string_view identifier) {
    std::vector<std::string_view> types;
    const std::string text = dynamicText(identifier).value_or("");
    // "?0=" and letters, up to the next field or the end.
    if (text.starts_with("?0=")) {
        for (const char letter : std::string_view(text).substr(3, text.find(':') - 3)) {
            for (const auto& [known, type] : kLetters) {
                if (known == letter) {
                    types.push_back(type);
                }
            }
        }
    }
    if (types.empty()) {
        types.emplace_back("public.data");
    }
    return types;
}

std::string dynamicIdentifier(std::string_view type, std::string_view extension) {
    char letter = kLetters.front().first;
    for (const auto& [known, lettered] : kLetters) {
        letter = lettered == type ? known : letter;
    }
    const std::string text = std::string("?0=") + letter + ":1=" + std::string(extension);
    std::string identifier(kPrefix);
    unsigned bits = 0;
    unsigned count = 0;
    for (const char byte : text) {
        bits = (bits << kBitsOfByte | static_cast<unsigned char>(byte)) & 0xFFFU;
        for (count += kBitsOfByte; count >= kBitsOfDigit;) {
            count -= kBitsOfDigit;
            identifier += kDigits[bits >> count & 0x1FU];
        }
    }
    if (count > 0) { // the last digit is filled with zero bits
        identifier += kDigits[bits << (kBitsOfDigit - count) & 0x1FU];
    }
    return identifier;
}

} // namespace qk::platform::types
