// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

/// `NSString(ByteCount)`. Threads: any.
namespace qk::NSString_ByteCount {

/// `stringWithByteCount:`. An amount of memory as people read it, in units of 1024: "Zero KB", "1 byte", "879 KB",
/// "11.8 MB"; see `NSByteCountFormatter`.
[[nodiscard]] QK_EXPORT NSString stringWithByteCount(std::int64_t byteCount);

} // namespace qk::NSString_ByteCount
