// SPDX-License-Identifier: Apache-2.0
// Stands in for PackageKit.cpp in a build without libsystemd.
#include "tools/softwareupdate/UpdateSources.h"

namespace qk::softwareupdate {

std::optional<PendingUpdates> updatesOfPackageKit() {
    return std::nullopt;
}

} // namespace qk::softwareupdate
