// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// Model, processors and memory.
[[nodiscard]] std::optional<Body> hardware(const Surroundings& surroundings);

} // namespace qk::info
