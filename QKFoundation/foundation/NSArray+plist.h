// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

/// `NSArray(plist)`: arrays as texts that hold a property list. Threads: any.
namespace qk::NSArray_plist {

/// `plistRepresentation`. The array as an XML property list. Nothing when it holds what no property list can (the null
/// marker, objects, URLs, a lone surrogate), and on a system that does not write XML.
[[nodiscard]] QK_EXPORT std::optional<NSString> plistRepresentation(const NSArray& self);

/// `arrayForPlistRepresentation:`. The array that `string`, a property list of any format, holds; a lone surrogate in
/// it reads as "?". Nothing when it cannot be read or holds something else.
[[nodiscard]] QK_EXPORT std::optional<NSArray> arrayForPlistRepresentation(const NSString& string);

} // namespace qk::NSArray_plist
