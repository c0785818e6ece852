// SPDX-License-Identifier: Apache-2.0
// Stands in for SystemBus.cpp in a build without libsystemd.
#include "QKFoundation/platform/linux/SystemBus.h"

namespace qk::platform {

std::optional<std::string> readBusProperty(const BusInterface& /*object*/, const char* /*property*/,
                                           std::chrono::milliseconds /*limit*/) {
    return std::nullopt;
}

} // namespace qk::platform
