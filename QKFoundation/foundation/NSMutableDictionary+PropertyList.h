// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/PropertyListSerialization.h"
#include "QKFoundation/platform/values/Value.h"

#include <optional>

/// `NSMutableDictionary(PropertyList)`: what property lists hold.
///
/// Deliberate: what is read need not be a dictionary; a list of any other kind is returned as it is.
/// Values never change in place, whatever the mutability asked for: make an `NSMutableDictionary` of what is to change.
/// Threads: any.
namespace qk::NSMutableDictionary_PropertyList {

/// `dictionaryWithData:format:mutabilityOptions:`. The value that `data` hold, in whatever format they are written;
/// nothing when they cannot be read.
/// Deliberate: `format` makes no difference, it is where the platform starts from when it finds the format out.
[[nodiscard]] QK_EXPORT std::optional<Value>
dictionaryWithData(const NSData& data, platform::NSPropertyListFormat format,
                   platform::NSPropertyListMutabilityOptions mutabilityOptions);

/// `dictionaryWithPropertyListAtPath:`. The value that the file at `path` holds; nothing when there is none, and when
/// it cannot be read.
[[nodiscard]] QK_EXPORT std::optional<Value> dictionaryWithPropertyListAtPath(const NSString& path);

} // namespace qk::NSMutableDictionary_PropertyList
