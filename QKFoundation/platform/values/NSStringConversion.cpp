// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringStorage.h"
#include "QKFoundation/platform/values/WideElements.h"
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <array>
#include <memory>

namespace qk {

using internal::StorageBuilder;

namespace {

/// Texts up to this many units are converted on the stack first.
constexpr std::size_t kShort = 64;

constexpr char16_t kReplacement = u'\uFFFD';

/// The bytes that were taken for a character and the units that it became.
struct CharacterAtHead {
    std::size_t bytes;
    std::size_t units;
};

/// Writes the character at the head of `bytes`, or U+FFFD for the first byte when there is none. `out` holds as many
/// units as there are bytes.
CharacterAtHead decodeHead(std::string_view bytes, char16_t* out) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t length = 1; length <= std::min(bytes.size(), kLongest); ++length) {
        if (const auto units = unicode::utf8ToUTF16(bytes.substr(0, length), out)) {
            return {length, *units};
        }
    }
    *out = kReplacement;
    return {1, 1};
}

/// The UTF-8 form of `units` by `convert`, which is given room for three bytes per unit.
template <typename Convert>
auto encodeUTF8With(std::u16string_view units, Convert convert) {
    if (units.size() <= kShort) {
        std::array<char, 3 * kShort> buffer;
        return convert(buffer.data());
    }
    const auto buffer = std::make_unique_for_overwrite<char[]>(3 * units.size());
    return convert(buffer.get());
}

} // namespace

std::optional<NSString> NSString::fromUTF8(std::string_view bytes) {
    // No text has more units than bytes: one allocation, one pass, and what is too much goes back.
    StorageBuilder builder(bytes.size());
    const auto length = unicode::utf8ToUTF16(bytes, builder.units());
    std::optional<NSString> string;
    if (length.has_value()) {
        string.emplace().storage_ = builder.finish(*length); // in place: the empty string is not counted
    }
    return string;
}

NSString NSString::fromUTF8Lossy(std::string_view bytes) {
    if (auto string = fromUTF8(bytes)) {
        return *std::move(string);
    }
    StorageBuilder builder(bytes.size());
    std::size_t length = 0;
    while (!bytes.empty()) {
        const CharacterAtHead head = decodeHead(bytes, builder.units() + length);
        length += head.units;
        bytes.remove_prefix(head.bytes);
    }
    return adopting(builder.finish(length));
}

NSString NSString::fromLiteral(std::string_view utf8) {
    return fromUTF8Lossy(utf8);
}

std::optional<NSString> NSString::fromUTF32(std::wstring_view elements) {
    if (elements.size() > internal::kMaxUnits / 2) {
        throw std::bad_alloc();
    }
    if (2 * elements.size() <= kShort) {
        std::array<char16_t, kShort> buffer;
        const auto length = internal::wideToUTF16(elements, buffer.data());
        return length.has_value() ? std::optional(NSString(std::u16string_view(buffer.data(), *length))) : std::nullopt;
    }
    StorageBuilder builder(2 * elements.size());
    const auto length = internal::wideToUTF16(elements, builder.units());
    if (!length.has_value()) {
        return std::nullopt;
    }
    return adopting(builder.finish(*length));
}

std::optional<NSString> NSString::fromUTF32NoCopy(std::wstring_view elements) {
    const auto length = internal::utf16LengthOfWide(elements);
    if (!length.has_value()) {
        return std::nullopt;
    }
    return *length == 0 ? NSString() : adopting(new internal::BorrowedStorage(elements, *length));
}

std::optional<std::string> NSString::utf8() const {
    return encodeUTF8With(units(), [this](char* buffer) -> std::optional<std::string> {
        const auto length = unicode::utf16ToUTF8(units(), buffer);
        return length.has_value() ? std::optional(std::string(buffer, *length)) : std::nullopt;
    });
}

std::string NSString::utf8Lossy(char loss) const {
    return encodeUTF8With(units(), [this, loss](char* buffer) {
        return std::string(buffer, unicode::utf16ToUTF8Lossy(units(), buffer, loss));
    });
}

std::optional<std::wstring> NSString::utf32() const {
    const std::wstring_view borrowed = internal::borrowedElements(storage_);
    return borrowed.empty() ? internal::utf16ToWide(units(), std::nullopt) : std::wstring(borrowed);
}

std::wstring NSString::utf32Lossy(wchar_t loss) const {
    const std::wstring_view borrowed = internal::borrowedElements(storage_);
    return borrowed.empty() ? internal::utf16ToWide(units(), loss).value_or(std::wstring()) : std::wstring(borrowed);
}

} // namespace qk
