// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <utility>

namespace qk::platform {

/// The store's computer name is the network node's name (uname(2) nodename), as `hostname` prints it.
class LinuxSystemConfiguration final : public SystemConfiguration {
public:
    explicit LinuxSystemConfiguration(LinuxRoot root = {}) : root_(std::move(root)) {}

    [[nodiscard]] std::optional<NSString> copyComputerName() const override;

private:
    LinuxRoot root_;
};

} // namespace qk::platform
