// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace qk::platform {

/// Where callers expect the program that lists pending updates.
inline constexpr const char* kUpdateToolPath = "/usr/sbin/softwareupdate";

/// Where this library's own program of that kind lies: what the environment variable QK_SOFTWAREUPDATE says (never in a
/// set-uid process), else the place of the installation, found from the library's own file so that an installation can
/// be moved. Nothing when no such file exists. Any thread.
[[nodiscard]] std::optional<std::string> locateUpdateTool();

} // namespace qk::platform
