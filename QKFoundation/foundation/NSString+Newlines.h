// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

/// `NSString(Newlines)`: line ends from one convention to the other. Threads: all of them may be called anywhere.
namespace qk::NSString_Newlines {

/// `stringByReplacingWindowsNewlinesWithUnixNewlines`. Every CR LF becomes LF, in one pass: CR CR LF becomes CR LF. A
/// lone CR stays.
[[nodiscard]] QK_EXPORT NSString stringByReplacingWindowsNewlinesWithUnixNewlines(const NSString& self);

/// `stringByReplacingUnixNewlinesWithWindowsNewLines`. Every LF becomes CR LF, but for those that stand in one already.
/// A lone CR stays.
[[nodiscard]] QK_EXPORT NSString stringByReplacingUnixNewlinesWithWindowsNewLines(const NSString& self);

/// `stringByAppendingNullCharacter`. The text with U+0000 at its end.
[[nodiscard]] QK_EXPORT NSString stringByAppendingNullCharacter(const NSString& self);

} // namespace qk::NSString_Newlines
