// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <optional>

namespace qk::internal {

/// The order of two numbers, two strings (literal) or two dates; nothing for any other pair.
[[nodiscard]] std::optional<NSComparisonResult> orderOf(const Value& left, const Value& right);

} // namespace qk::internal
