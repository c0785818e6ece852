// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

namespace qk::info {

/// The operating system, the names of computer and user, and the time of the start.
[[nodiscard]] std::optional<Body> operatingSystem(const Surroundings& surroundings);

} // namespace qk::info
