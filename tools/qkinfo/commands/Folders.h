// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// The standard folders as a program in this one's place finds them.
[[nodiscard]] std::optional<Body> folders(const Surroundings& surroundings);

} // namespace qk::info
