// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace qk::platform {

/// Where file systems are mounted below `roots` that hold no files but a view of the kernel or another machine
/// ("/proc", "/sys", a point where mounting is automatic): nothing there is watched.
[[nodiscard]] std::vector<std::string> pseudoMountsBelow(const std::vector<std::string>& roots);

/// Where the other file systems below `roots` are mounted.
[[nodiscard]] std::vector<std::string> fileMountsBelow(const std::vector<std::string>& roots);

} // namespace qk::platform
