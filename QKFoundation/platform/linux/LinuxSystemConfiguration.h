// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkReader.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// The store's computer name is the network node's name (uname(2) nodename), as `hostname` prints it. Stores and
/// preferences are never refused; what they hold is read when it is first asked for.
class LinuxSystemConfiguration final : public SystemConfiguration {
public:
    explicit LinuxSystemConfiguration(const LinuxRoot& root = {})
        : LinuxSystemConfiguration(root, std::make_shared<NetworkReader>(root)) {}
    /// The proxies are those of this process's environment, if `root` is this host.
    LinuxSystemConfiguration(const LinuxRoot& root, std::shared_ptr<NetworkReader> network);
    LinuxSystemConfiguration(LinuxRoot root, std::shared_ptr<NetworkReader> network, Variables variables)
        : root_(std::move(root)), network_(std::move(network)), variables_(std::move(variables)) {}

    [[nodiscard]] std::optional<NSString> copyComputerName() const override;
    [[nodiscard]] std::shared_ptr<const DynamicStore>
    createDynamicStore(const std::optional<NSString>& name) const override;
    [[nodiscard]] std::shared_ptr<const NetworkPreferences> createPreferences(const NSString& name) const override;
    [[nodiscard]] std::unique_ptr<ConfigurationReading> beginReading() const override;

private:
    LinuxRoot root_;
    std::shared_ptr<NetworkReader> network_;
    Variables variables_;
};

} // namespace qk::platform
