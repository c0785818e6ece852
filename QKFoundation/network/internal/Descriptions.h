// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"

#include <vector>

/// The two layouts in which the network's objects describe themselves. Both begin with the root class's description and
/// show the null marker for nothing.
namespace qk::internal {

/// "{", a line "key = value" for each of `keys`, which `values` has, in that order, and "}".
[[nodiscard]] NSString blockDescription(const NSObject& object, const NSDictionary& values,
                                        const std::vector<NSString>& keys);

/// As above of the object's own values for `keys`, in the order of the dictionary that they make.
[[nodiscard]] NSString blockDescription(const NSObject& object, const std::vector<NSString>& keys);

/// The text of the dictionary that the object's values for `keys` make.
[[nodiscard]] NSString dictionaryDescription(const NSObject& object, const std::vector<NSString>& keys);

} // namespace qk::internal
