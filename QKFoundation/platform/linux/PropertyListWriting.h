// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/PropertyListSerialization.h"

#include <optional>

namespace qk::platform {

/// The bytes of `value` in XML or binary form. Nothing when it holds what no property list can: the null marker,
/// objects, URLs, a lone surrogate, U+0000; for containers nested too deeply to be read again; for a date that is no
/// number, or that XML has no four digits of a year for; and for the older text form. XML drops the fraction of
/// seconds. Any thread.
[[nodiscard]] std::optional<NSData> dataOfPropertyList(const Value& value, NSPropertyListFormat format);

} // namespace qk::platform
