// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"

#include <optional>
#include <string>
#include <string_view>

namespace qk::platform {

/// The path of the executable that the link `link` of a process's folder ("/proc/1/exe") leads to, as the system calls
/// it, without the mark of one that was removed or replaced. Nothing when there is no such process or it may not be
/// asked. Any thread.
[[nodiscard]] std::optional<std::string> executablePath(const LinuxRoot& root, std::string_view link);

} // namespace qk::platform
