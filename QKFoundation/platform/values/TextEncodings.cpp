// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/TextEncodings.h"

#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <cstddef>

namespace qk::internal {
namespace {

using namespace std::string_view_literals;

/// The elements of `bytes`; nothing when the last one is cut off.
template <typename Element>
std::optional<std::basic_string<Element>> elements(std::string_view bytes, bool isLittleEndian) {
    constexpr std::size_t size = sizeof(Element);
    if (bytes.size() % size != 0) {
        return std::nullopt;
    }
    std::basic_string<Element> result(bytes.size() / size, Element());
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const std::size_t place = isLittleEndian ? index % size : size - 1 - index % size;
        Element& element = result[index / size];
        element = static_cast<Element>(element | static_cast<Element>(static_cast<unsigned char>(bytes[index]))
                                                     << (8 * place));
    }
    return result;
}

std::optional<UTF8Text> fromUTF16(std::u16string_view units) {
    std::string result(3 * units.size(), '\0');
    const std::optional<std::size_t> length = unicode::utf16ToUTF8(units, result.data());
    result.resize(length.value_or(0));
    return length.has_value() ? std::optional(UTF8Text(std::move(result))) : std::nullopt;
}

std::optional<UTF8Text> fromUTF16(std::string_view bytes, bool isLittleEndian) {
    const std::optional<std::u16string> units = elements<char16_t>(bytes, isLittleEndian);
    return units.has_value() ? fromUTF16(*units) : std::nullopt;
}

std::optional<UTF8Text> fromUTF32(std::string_view bytes, bool isLittleEndian) {
    const std::optional<std::u32string> characters = elements<char32_t>(bytes, isLittleEndian);
    if (!characters.has_value()) {
        return std::nullopt;
    }
    std::u16string units(2 * characters->size(), u'\0');
    const std::optional<std::size_t> length = unicode::utf32ToUTF16(*characters, units.data());
    return length.has_value() ? fromUTF16(std::u16string_view(units).substr(0, *length)) : std::nullopt;
}

} // namespace

std::optional<UTF8Text> utf8Text(std::string_view bytes) {
    static constexpr std::string_view kUTF8Mark = "\xEF\xBB\xBF";
    // That of UTF-32 begins as that of UTF-16 does.
    if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) {
        return fromUTF32(bytes.substr(4), bytes.front() == '\xFF');
    }
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return fromUTF16(bytes.substr(2), bytes.front() == '\xFF');
    }
    if (bytes.starts_with(kUTF8Mark)) {
        bytes.remove_prefix(kUTF8Mark.size());
    } else if (bytes.substr(0, 2).find('\0') != std::string_view::npos) {
        return fromUTF16(bytes, bytes.front() != '\0');
    }
    return unicode::isValidUTF8(bytes) ? std::optional(UTF8Text(bytes)) : std::nullopt;
}

} // namespace qk::internal
