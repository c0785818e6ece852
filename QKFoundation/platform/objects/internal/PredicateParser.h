// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSPredicate.h"

#include <memory>
#include <vector>

namespace qk::internal {

/// The predicate of the text `format`, as `predicateWithFormat` says.
[[nodiscard]] std::shared_ptr<const NSPredicate> parsePredicate(const NSString& format,
                                                                const std::vector<Value>& arguments);

} // namespace qk::internal
