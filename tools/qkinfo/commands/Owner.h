// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// Who runs this program, and who is at the console.
[[nodiscard]] std::optional<Body> owner(const Surroundings& surroundings);

} // namespace qk::info
