// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSDate.h"

#include <optional>

/// The facts of `QKHardwareInfo` and `QKSystemInfo` about a given machine.
namespace qk::internal {

[[nodiscard]] std::optional<NSString> model(const platform::Services& services);
[[nodiscard]] std::optional<NSString> osRevision(const platform::Services& services);
[[nodiscard]] std::optional<NSString> processorTypeName(const platform::Services& services);
[[nodiscard]] std::optional<NSString> kernelVersion(const platform::Services& services);
[[nodiscard]] std::optional<NSDate> bootDate(const platform::Services& services);

[[nodiscard]] std::optional<NSString> computerName(const platform::Services& services);
[[nodiscard]] std::optional<NSString> osProductName(const platform::Services& services);
[[nodiscard]] NSString osVersionDescription(const platform::Services& services);
[[nodiscard]] std::optional<NSArray> osUpdates(const platform::Services& services);

} // namespace qk::internal
