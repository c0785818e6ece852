// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterface.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>
#include <vector>

/// The interfaces of `QKNetworkInfo` on a given machine. Each call is one reading of it.
namespace qk::internal {

using Interfaces = std::vector<std::shared_ptr<QKNetworkInterface>>;

[[nodiscard]] Interfaces networkInterfaces(const platform::Services& services);
[[nodiscard]] Interfaces activeNetworkInterfaces(const platform::Services& services);
[[nodiscard]] Interfaces activeBuiltinNetworkInterfaces(const platform::Services& services);

} // namespace qk::internal
