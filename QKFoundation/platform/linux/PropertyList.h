// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace qk::platform {

/// The largest file that is read as a property list, in bytes.
inline constexpr std::size_t kPropertyListLimit = std::size_t{64} << 20U;

/// The value that a property list holds, XML or binary ("bplist00"). Nothing when it is malformed, nested too deeply,
/// or would unfold into far more than its own size. Integers, real numbers, booleans, dates and data keep their kinds.
/// Any thread.
[[nodiscard]] std::optional<Value> propertyList(std::string_view bytes);

} // namespace qk::platform
