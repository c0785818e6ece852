// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/softwareupdate/PendingUpdate.h"

#include <optional>

/// Who can say which updates are pending. Each answers nothing when this system does not have it or it does not succeed
/// in its time, and an empty list when there are none. None of them changes anything or waits for the network.
namespace qk::softwareupdate {

/// PackageKit, if it runs on the system bus already.
[[nodiscard]] std::optional<PendingUpdates> updatesOfPackageKit();

/// apt, from the package lists of its last update; nothing when there are none.
[[nodiscard]] std::optional<PendingUpdates> updatesOfApt();

/// dnf, from its cache.
[[nodiscard]] std::optional<PendingUpdates> updatesOfDnf();

} // namespace qk::softwareupdate
