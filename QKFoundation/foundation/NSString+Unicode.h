// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <string>

/// `NSString(Unicode)`: strings from and to the standard library's narrow strings (UTF-8) and wide strings (UTF-32, one
/// Unicode scalar value per element, no byte-order mark).
///
/// Malformed input is never converted in part: the copying conversions answer it with an empty result. A leading U+FEFF
/// is a character like any other. Threads: all of them may be called anywhere; none keeps state.
namespace qk::NSString_Unicode {

/// `stringWithStdString:`. As `initWithStdString`.
[[nodiscard]] QK_EXPORT NSString stringWithStdString(const std::string& narrow);

/// `initWithStdString:`. The text that all bytes of `narrow` encode in UTF-8, zero bytes included; "" when they are
/// malformed.
[[nodiscard]] QK_EXPORT NSString initWithStdString(const std::string& narrow);

/// `stringWithWString:`. As `initWithWString`.
[[nodiscard]] QK_EXPORT NSString stringWithWString(const std::wstring& wide);

/// `initWithWString:`. The text of `wide` up to its first zero element; "" when one of those elements is a surrogate or
/// above U+10FFFF.
[[nodiscard]] QK_EXPORT NSString initWithWString(const std::wstring& wide);

/// `stringWithWStringNoCopy:`. As `initWithWStringNoCopy`.
[[nodiscard]] QK_EXPORT std::optional<NSString> stringWithWStringNoCopy(const std::wstring& wide);
std::optional<NSString> stringWithWStringNoCopy(std::wstring&& wide) = delete;

/// `initWithWStringNoCopy:`. A string that refers to the elements of `wide` up to its first zero element. Nothing when
/// one of them is a surrogate or above U+10FFFF. The caller keeps `wide` alive and unchanged for as long as the string,
/// or a copy of it, lives.
[[nodiscard]] QK_EXPORT std::optional<NSString> initWithWStringNoCopy(const std::wstring& wide);
std::optional<NSString> initWithWStringNoCopy(std::wstring&& wide) = delete;

/// `wstringFrom:`. The wide form of `string`, U+0000 included. Empty for nothing, and for a string that holds a lone
/// surrogate.
[[nodiscard]] QK_EXPORT std::wstring wstringFrom(const std::optional<NSString>& string);

/// `wstringFromDecomposed:`. The wide form of `string` after canonical composition (NFC): for decomposed texts, such as
/// the paths that some file systems deliver. Empty as `wstringFrom` is.
[[nodiscard]] QK_EXPORT std::wstring wstringFromDecomposed(const std::optional<NSString>& string);

} // namespace qk::NSString_Unicode
