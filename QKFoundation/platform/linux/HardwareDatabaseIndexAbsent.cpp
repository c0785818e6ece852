// SPDX-License-Identifier: Apache-2.0
// Stands in for HardwareDatabaseIndex.cpp in a build without libsystemd.
#include "QKFoundation/platform/linux/HardwareDatabase.h"

namespace qk::platform {

HardwareNames findInHardwareIndex(const HardwareNumbers& /*numbers*/) {
    return {};
}

} // namespace qk::platform
