// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSGeometry.h"
#include "QKFoundation/platform/values/NSNull.h"

#include <cstdint>

/// `NSNull(Sanity)`: the null marker answers what is asked of numbers and sizes with zero, so that code which reads
/// them out of a dictionary may meet it. Threads: any.
namespace qk::NSNull_Sanity {

/// `sizeValue`. The zero size.
[[nodiscard]] QK_EXPORT NSSize sizeValue(NSNull self);

/// `floatValue`. 0.
[[nodiscard]] QK_EXPORT float floatValue(NSNull self);

/// `boolValue`. False.
[[nodiscard]] QK_EXPORT bool boolValue(NSNull self);

/// `intValue`. 0.
[[nodiscard]] QK_EXPORT std::int32_t intValue(NSNull self);

} // namespace qk::NSNull_Sanity
