// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// The software updates that wait to be installed. May take seconds. Raises `NSException` when no update tool can be
/// launched.
[[nodiscard]] std::optional<Body> updates(const Surroundings& surroundings);

} // namespace qk::info
