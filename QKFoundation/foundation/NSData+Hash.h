// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

/// `NSData(Hash)`. Threads: any.
namespace qk::NSData_Hash {

/// `sha1`. The SHA-1 digest of the bytes as 40 hexadecimal digits in lower case; nothing on a system without
/// cryptography.
[[nodiscard]] QK_EXPORT std::optional<NSString> sha1(const NSData& self);

} // namespace qk::NSData_Hash
