// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Commands.h"

#include <string>
#include <vector>

namespace qk::info {

/// Exit statuses of the program.
inline constexpr int kSuccess = 0;
inline constexpr int kTimeIsOver = 1;
inline constexpr int kFailure = 2;

/// The whole program but for its arguments' source: answers on standard output, or fails with one line on standard
/// error. `arguments` are those behind the program's name.
[[nodiscard]] int runProgram(const std::vector<std::string>& arguments, const Surroundings& surroundings);

} // namespace qk::info
