// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

/// `NSString(Versionnumber)`: the numbers of a version such as "10.12.6", the text split at its dots. Each number is
/// the `integerValue` of its piece, so one without digits is 0. Threads: all of them may be called anywhere.
namespace qk::NSString_Versionnumber {

/// `majorVersion`. The first number.
[[nodiscard]] QK_EXPORT std::int64_t majorVersion(const NSString& self);

/// `minorVersion`. The second number.
/// Deliberate: raises `NSRangeException` for a text without a dot, as it looks for one number only; a caller may rely
/// on that to tell "10" from "10.0".
[[nodiscard]] QK_EXPORT std::int64_t minorVersion(const NSString& self);

/// `buildNumber`. The third number; 0 for a text without a dot.
/// Deliberate: raises `NSRangeException` for a text with one dot, as it looks for two numbers only.
[[nodiscard]] QK_EXPORT std::int64_t buildNumber(const NSString& self);

} // namespace qk::NSString_Versionnumber
