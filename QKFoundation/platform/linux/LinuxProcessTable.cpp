// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxProcessTable.h"

#include "QKFoundation/platform/linux/ExecutablePath.h"

namespace qk::platform {

std::optional<std::string> LinuxProcessTable::pidPath(std::int32_t pid) const {
    return executablePath(root_, "/proc/" + std::to_string(pid) + "/exe");
}

} // namespace qk::platform
