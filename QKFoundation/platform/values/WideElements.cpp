// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/WideElements.h"

#include "QKFoundation/platform/values/unicode/Transcode.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace qk::internal {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char32_t), "a wide string holds UTF-32");

constexpr std::size_t kChunk = 1024;
using Chunk = std::array<char32_t, kChunk>;

/// Calls `use` with one piece of `elements` after the other until it returns false.
template <typename Use>
bool forEachChunk(std::wstring_view elements, Use use) {
    Chunk chunk;
    while (!elements.empty()) {
        const std::size_t count = std::min(elements.size(), kChunk);
        std::memcpy(chunk.data(), elements.data(), count * sizeof(char32_t));
        if (!use(std::u32string_view(chunk.data(), count))) {
            return false;
        }
        elements.remove_prefix(count);
    }
    return true;
}

/// The length of the next piece of `units`: it does not part the two halves of a pair.
std::size_t nextPiece(std::u16string_view units) {
    if (units.size() <= kChunk) {
        return units.size();
    }
    const bool endsInHigh = (units[kChunk - 1] & 0xFC00U) == 0xD800U;
    return endsInHigh ? kChunk - 1 : kChunk;
}

} // namespace

std::optional<std::size_t> utf16LengthOfWide(std::wstring_view elements) {
    std::size_t length = 0;
    const bool valid = forEachChunk(elements, [&](std::u32string_view chunk) {
        const auto units = unicode::utf16LengthOfUTF32(chunk);
        length += units.value_or(0);
        return units.has_value();
    });
    return valid ? std::optional(length) : std::nullopt;
}

std::optional<std::size_t> wideToUTF16(std::wstring_view elements, char16_t* out) {
    std::size_t length = 0;
    const bool valid = forEachChunk(elements, [&](std::u32string_view chunk) {
        const auto units = unicode::utf32ToUTF16(chunk, out + length);
        length += units.value_or(0);
        return units.has_value();
    });
    return valid ? std::optional(length) : std::nullopt;
}

void validWideToUTF16(std::wstring_view elements, char16_t* out) {
    std::array<char16_t, 2 * kChunk> piece; // the codec may write behind its result, and `out` has no room there
    forEachChunk(elements, [&](std::u32string_view chunk) {
        const std::size_t units = unicode::utf32ToUTF16(chunk, piece.data()).value_or(0);
        std::memcpy(out, piece.data(), units * sizeof(char16_t));
        out += units;
        return true;
    });
}

std::optional<std::wstring> utf16ToWide(std::u16string_view units, std::optional<wchar_t> loss) {
    std::wstring result(units.size(), L'\0');
    std::size_t length = 0;
    Chunk chunk;
    while (!units.empty()) {
        const std::u16string_view piece = units.substr(0, nextPiece(units));
        const auto count = loss.has_value()
                               ? unicode::utf16ToUTF32Lossy(piece, chunk.data(), static_cast<char32_t>(*loss))
                               : unicode::utf16ToUTF32(piece, chunk.data());
        if (!count.has_value()) {
            return std::nullopt;
        }
        std::memcpy(result.data() + length, chunk.data(), *count * sizeof(char32_t));
        length += *count;
        units.remove_prefix(piece.size());
    }
    result.resize(length);
    return result;
}

} // namespace qk::internal
