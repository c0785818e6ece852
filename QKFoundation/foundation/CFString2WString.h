// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/foundation/CFStringHolder.h"
#include "QKFoundation/platform/Export.h"

#include <string>

/// Conversions between a string's storage and wide strings: UTF-32, one Unicode scalar value per element, no byte-order
/// mark.
///
/// Threads: all of them may be called anywhere; none keeps state.
namespace qk {

/// `CFString2WString`. The wide form of `string`, U+0000 included. A lone surrogate, which has no wide form, becomes
/// "?". Empty for null.
[[nodiscard]] QK_EXPORT std::wstring CFString2WString(CFStringRef string);

/// `WString2CFString`. A new string of `wide` up to its first zero element, owned by the returned handle. The handle
/// holds null when one of those elements is a surrogate or above U+10FFFF.
[[nodiscard]] QK_EXPORT CFStringHolder WString2CFString(const std::wstring& wide);

/// `PrecomposedWString`. `wide` up to its first zero element, composed canonically (NFC). Empty when one of those
/// elements is a surrogate or above U+10FFFF.
[[nodiscard]] QK_EXPORT std::wstring PrecomposedWString(const std::wstring& wide);

} // namespace qk
