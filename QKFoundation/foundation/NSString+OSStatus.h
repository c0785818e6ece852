// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>

/// `NSString(OSStatus)`. Threads: any.
namespace qk::NSString_OSStatus {

/// `stringWithOSStatus:`. What a result code of code signing, -67072 to -67000, says: "Code object is not signed at
/// all." for -67062. Any other code, and -67038, which means nothing, gives "Error -67038 while validating app bundle
/// signature."
[[nodiscard]] QK_EXPORT NSString stringWithOSStatus(std::int32_t status);

} // namespace qk::NSString_OSStatus
