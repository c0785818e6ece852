// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform {

/// The bytes by which the kernel knows a path, a name or an argument: UTF-8, with each lone surrogate from U+DC80 to
/// U+DCFF as the byte that it stands for. Nothing for any other lone surrogate and for U+0000, which no path can hold.
[[nodiscard]] std::optional<std::string> fileSystemRepresentation(const NSString& string);

/// The string that stands for `bytes` in the calls of the services: UTF-8, with each malformed byte as the lone
/// surrogate U+DC00 + byte. `fileSystemRepresentation` turns it back into the same bytes, whatever they are.
[[nodiscard]] NSString stringWithFileSystemRepresentation(std::string_view bytes);

} // namespace qk::platform
