// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxSystemConfiguration.h"

#include "QKFoundation/platform/linux/OperatingSystem.h"

#include <string>

namespace qk::platform {

std::optional<NSString> LinuxSystemConfiguration::copyComputerName() const {
    const std::optional<std::string> name = operatingsystem::nodeName(root_);
    return name.has_value() ? std::optional(NSString::fromUTF8Lossy(*name)) : std::nullopt;
}

} // namespace qk::platform
