// SPDX-License-Identifier: Apache-2.0
// Stands in for Portal.cpp in a build without libsystemd.
#include "QKFoundation/platform/linux/Portal.h"

namespace qk::platform {

PortalAnswer openURLWithPortal(const std::string& /*address*/, const std::string& /*url*/) {
    return PortalAnswer::Absent;
}

PortalAnswer openFileWithPortal(const std::string& /*address*/, const std::string& /*path*/) {
    return PortalAnswer::Absent;
}

} // namespace qk::platform
