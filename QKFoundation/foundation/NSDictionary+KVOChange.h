// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSKeyValueObserving.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <optional>

/// `NSDictionary(KVOChange)`: what the change dictionary of a key-value observation says.
///
/// Threads: any, at the same time.
namespace qk::NSDictionary_KVOChange {

/// `keyValueChangeKind`. The kind of the change; 0, which is none, when there is no such number.
///
/// Deliberate: the number is cut to 32 bits without a sign, so -1 is 4294967295 and 4294967297 is 1.
[[nodiscard]] QK_EXPORT NSKeyValueChange keyValueChangeKind(const NSDictionary& self);

/// `keyValueChangeOld`. The value before the change; nothing when that was nil, and when it was not asked for.
[[nodiscard]] QK_EXPORT std::optional<Value> keyValueChangeOld(const NSDictionary& self);

/// `keyValueChangeNew`. The value after the change; nothing when that is nil, and when it was not asked for.
[[nodiscard]] QK_EXPORT std::optional<Value> keyValueChangeNew(const NSDictionary& self);

} // namespace qk::NSDictionary_KVOChange
