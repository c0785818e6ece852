// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/ProcessTable.h"

#include <utility>

namespace qk::platform {

/// Paths of executables: the target of the link /proc/PID/exe. The kernel's mark " (deleted)" behind the path of a file
/// that was replaced or removed is left out. A script's path is its interpreter's. Zombies and threads of the kernel
/// have none, and other users' processes show theirs to root alone.
class LinuxProcessTable final : public ProcessTable {
public:
    explicit LinuxProcessTable(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] std::optional<std::string> pidPath(std::int32_t pid) const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
