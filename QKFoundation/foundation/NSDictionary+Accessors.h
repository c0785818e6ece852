// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <cstdint>

/// `NSDictionary(Accessors)`: typed answers from dictionaries whose values may be missing, or the null marker.
///
/// Threads: any, at the same time.
namespace qk::NSDictionary_Accessors {

/// `boolForKey:`. The truth of the value: a number that is not 0, a text that reads as true ("YES", "1"; see
/// `NSString::boolValue`). False when there is none, for the null marker, and for a value of another kind.
[[nodiscard]] QK_EXPORT bool boolForKey(const NSDictionary& self, const NSString& key);

/// `unsignedIntegerForKey:`. The number as an unsigned one; a negative number wraps. 0 when there is none, for the null
/// marker, and for a value of another kind.
[[nodiscard]] QK_EXPORT std::uint64_t unsignedIntegerForKey(const NSDictionary& self, const NSString& key);

} // namespace qk::NSDictionary_Accessors
