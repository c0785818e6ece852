// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Kernels.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// Conversions between the three encoding forms of Unicode, over memory of the caller.
///
/// Well-formed means what the Unicode standard means: no overlong forms, no surrogates outside a UTF-16 pair, nothing
/// above U+10FFFF. U+0000, U+FEFF and the noncharacters are characters like any other and are kept.
///
/// Every function with an `out` stays inside the capacity that its comment asks for. Memory inside the capacity but
/// behind the result may be overwritten; on failure that holds for the whole capacity. Input is never read past its
/// end.
///
/// Threads: all of these may be called from anywhere, at any time, static initialisation included. None blocks or
/// allocates.
namespace qk::unicode {

namespace internal {

/// Inline, as its callers are: a `Progress` comes back in registers, an optional by way of memory.
[[nodiscard]] inline std::optional<std::size_t> complete(Progress progress, std::size_t length) {
    return progress.read == length ? std::optional(progress.written) : std::nullopt;
}

} // namespace internal

/// Writes `in` as UTF-16 to `out`, which holds `in.size()` units. Returns the units written; nothing if `in` is
/// malformed.
[[nodiscard]] inline std::optional<std::size_t> utf8ToUTF16(std::string_view in, char16_t* out) {
    return internal::complete(kernels().utf8ToUTF16(in.data(), in.size(), out), in.size());
}

/// The UTF-16 units that well-formed `in` needs; nothing if `in` is malformed.
[[nodiscard]] inline std::optional<std::size_t> utf16LengthOfUTF8(std::string_view in) {
    return internal::complete(kernels().utf16LengthOfUTF8(in.data(), in.size()), in.size());
}

/// As `utf8ToUTF16`, for input known to be well-formed (anything else is undefined). `out` holds exactly the result,
/// that is `utf16LengthOfUTF8(in)` units.
inline std::size_t validUTF8ToUTF16(std::string_view in, char16_t* out) {
    return kernels().validUTF8ToUTF16(in.data(), in.size(), out);
}

/// Writes `in` as UTF-8 to `out`, which holds `3 * in.size()` bytes. Returns the bytes written; nothing if `in` has a
/// lone surrogate.
[[nodiscard]] inline std::optional<std::size_t> utf16ToUTF8(std::u16string_view in, char* out) {
    return internal::complete(kernels().utf16ToUTF8(in.data(), in.size(), out), in.size());
}

/// The UTF-8 bytes that `in` needs; nothing if `in` has a lone surrogate.
[[nodiscard]] inline std::optional<std::size_t> utf8LengthOfUTF16(std::u16string_view in) {
    return internal::complete(kernels().utf8LengthOfUTF16(in.data(), in.size()), in.size());
}

/// As `utf16ToUTF8`, with `replacement` (one byte, so ASCII if the result is to be well-formed) for each lone
/// surrogate.
std::size_t utf16ToUTF8Lossy(std::u16string_view in, char* out, char replacement);

/// Writes `in` as UTF-16 to `out`, which holds `2 * in.size()` units. Returns the units written; nothing if `in` has a
/// surrogate or a value above U+10FFFF.
[[nodiscard]] inline std::optional<std::size_t> utf32ToUTF16(std::u32string_view in, char16_t* out) {
    return internal::complete(kernels().utf32ToUTF16(in.data(), in.size(), out), in.size());
}

/// The UTF-16 units that `in` needs; nothing if `in` has a surrogate or a value above U+10FFFF.
[[nodiscard]] inline std::optional<std::size_t> utf16LengthOfUTF32(std::u32string_view in) {
    return internal::complete(kernels().utf16LengthOfUTF32(in.data(), in.size()), in.size());
}

/// Writes `in` as UTF-32 to `out`, which holds `in.size()` values. Returns the values written; nothing if `in` has a
/// lone surrogate.
[[nodiscard]] inline std::optional<std::size_t> utf16ToUTF32(std::u16string_view in, char32_t* out) {
    return internal::complete(kernels().utf16ToUTF32(in.data(), in.size(), out), in.size());
}

/// As `utf16ToUTF32`, with `replacement` for each lone surrogate.
std::size_t utf16ToUTF32Lossy(std::u16string_view in, char32_t* out, char32_t replacement);

/// The characters (scalar values) of `in`; nothing if `in` has a lone surrogate.
[[nodiscard]] inline std::optional<std::size_t> utf32LengthOfUTF16(std::u16string_view in) {
    return internal::complete(kernels().utf32LengthOfUTF16(in.data(), in.size()), in.size());
}

/// Whether every byte of `in` is below 0x80. True for an empty text.
[[nodiscard]] inline bool isASCII(std::string_view in) {
    return kernels().isASCII(in.data(), in.size());
}

/// Whether `in` is well-formed UTF-8. True for an empty text.
[[nodiscard]] inline bool isValidUTF8(std::string_view in) {
    return kernels().utf16LengthOfUTF8(in.data(), in.size()).read == in.size();
}

} // namespace qk::unicode
