// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/Services.h"

namespace qk::platform {

/// Every service of a Linux machine, its files under `root`. The names of users and children are always those of the
/// running system.
[[nodiscard]] Services makeLinuxServices(const LinuxRoot& root = {});

} // namespace qk::platform
