// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

/// `NSString(Binary)`. Threads: any.
namespace qk::NSString_Binary {

/// `binaryStringWithInteger:`. All 64 bits of `number`, the most significant one first, in groups of eight with a blank
/// between them.
[[nodiscard]] QK_EXPORT NSString binaryStringWithInteger(std::uint64_t number);

} // namespace qk::NSString_Binary
