// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSNumber.h"

/// `NSNumber(ReverseComparing)`. Threads: any.
namespace qk::NSNumber_ReverseComparing {

/// `reverseCompare:`. How `other` compares with `self`: sorts numbers from the largest to the smallest.
[[nodiscard]] QK_EXPORT NSComparisonResult reverseCompare(const NSNumber& self, const NSNumber& other);

} // namespace qk::NSNumber_ReverseComparing
