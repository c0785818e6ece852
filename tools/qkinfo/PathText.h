// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <string_view>

namespace qk::info {

/// The string by which the library knows a path: a byte that is malformed is the lone surrogate U+DC00 + byte.
[[nodiscard]] NSString pathString(std::string_view bytes);

/// The same for a path of the command line, which may begin in the current folder. "" stays "".
[[nodiscard]] NSString absolutePathString(std::string_view bytes);

} // namespace qk::info
