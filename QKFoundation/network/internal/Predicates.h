// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSPredicate.h"

/// The conditions that services and interfaces are filtered by. Any thread, also while the process ends.
namespace qk::internal {

/// "enabled = YES"
[[nodiscard]] const NSPredicate& enabledPredicate();

/// "linkActive = YES"
[[nodiscard]] const NSPredicate& activePredicate();

/// "linkActive = YES AND builtin = YES"
[[nodiscard]] const NSPredicate& activeBuiltinPredicate();

} // namespace qk::internal
