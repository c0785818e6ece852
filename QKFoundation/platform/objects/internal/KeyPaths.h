// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <optional>

namespace qk::internal {

/// `valueForKeyPath:`. The value at the end of keys joined by dots; "SELF" is the object itself. On the way an object
/// answers as `valueForKey` does, a dictionary with its entry, an array with the array of what its elements answer (the
/// null marker for nil), nil and the null marker with nil. Raises `NSUndefinedKeyException` for a key that an object
/// does not have, or that is asked of any other value.
[[nodiscard]] std::optional<Value> valueForKeyPath(const NSObject& object, const NSString& keyPath);

} // namespace qk::internal
