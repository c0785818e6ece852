// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxSystemConfiguration.h"

#include "QKFoundation/platform/linux/LinuxNetworkPreferences.h"
#include "QKFoundation/platform/linux/OperatingSystem.h"

#include <string>

namespace qk::platform {
namespace {

// This process's environment tells about the running system, not about captured files.
std::optional<std::string> noVariable(const char* /*name*/) {
    return std::nullopt;
}

} // namespace

LinuxSystemConfiguration::LinuxSystemConfiguration(const LinuxRoot& root, std::shared_ptr<NetworkReader> network)
    : LinuxSystemConfiguration(root, std::move(network), root.isHost() ? Variables(processVariable) : noVariable) {}

std::optional<NSString> LinuxSystemConfiguration::copyComputerName() const {
    const std::optional<std::string> name = operatingsystem::nodeName(root_);
    return name.has_value() ? std::optional(NSString::fromUTF8Lossy(*name)) : std::nullopt;
}

std::shared_ptr<const DynamicStore>
LinuxSystemConfiguration::createDynamicStore(const std::optional<NSString>& /*name*/) const {
    return network_->store(variables_);
}

std::shared_ptr<const NetworkPreferences> LinuxSystemConfiguration::createPreferences(const NSString& /*name*/) const {
    return std::make_shared<const LinuxNetworkPreferences>(network_->services());
}

std::unique_ptr<ConfigurationReading> LinuxSystemConfiguration::beginReading() const {
    return network_->beginReading();
}

} // namespace qk::platform
