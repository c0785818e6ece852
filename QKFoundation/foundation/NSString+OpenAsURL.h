// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

/// `NSString(OpenAsURL)`: texts opened as the URLs that they are. Threads: any, at the same time; a call waits until
/// the system has taken the URL or refused it.
namespace qk::NSString_OpenAsURL {

/// `openURLString:`. Opens the URL that `string` is, as it stands, with the application meant for it. False when it is
/// no URL or the system does not open it.
[[nodiscard]] QK_EXPORT bool openURLString(const NSString& string);

/// `openAsURL`. Removes all percent escapes, once, escapes again what a URL needs escaped, and opens the result as
/// `openURLString` does. "#" stays as it is, so that fragments survive. False also for escapes that are incomplete or
/// not UTF-8, and for a lone surrogate.
[[nodiscard]] QK_EXPORT bool openAsURL(const NSString& self);

} // namespace qk::NSString_OpenAsURL
