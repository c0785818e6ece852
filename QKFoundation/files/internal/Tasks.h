// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <optional>
#include <vector>

/// The child-process operations against a given machine.
namespace qk::internal {

/// Runs a program to its end. Raises `NSInvalidArgumentException` when it cannot be launched.
[[nodiscard]] platform::TaskExit runTask(const platform::Services& services, const platform::TaskRequest& request);

[[nodiscard]] NSData runCommandAtPath(const platform::Services& services, const NSString& path,
                                      const std::vector<NSString>& arguments);

[[nodiscard]] std::optional<std::vector<NSString>> unzipFileAtPath(const platform::Services& services,
                                                                   const std::optional<NSString>& path,
                                                                   const std::optional<NSString>& inDirectoryAtPath);

[[nodiscard]] std::optional<NSString> zipDirectoryAtPath(const platform::Services& services,
                                                         const std::optional<NSString>& path);

} // namespace qk::internal
