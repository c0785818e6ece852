// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/softwareupdate/PendingUpdate.h"

#include <optional>
#include <string_view>

/// What package managers print, taken apart. Pure: nothing here runs a program.
namespace qk::softwareupdate {

/// The updates in the output of `apt-get --simulate dist-upgrade`: its lines "Inst name [old] (new origin
/// [architecture])". Packages that would be installed for the first time (no "[old]") are none. Sizes are not told
/// there.
[[nodiscard]] PendingUpdates aptUpdates(std::string_view simulation);

/// Fills in the sizes that `apt-get --print-uris dist-upgrade` tells for the same packages: lines
/// "'address' name_version_architecture.deb bytes hash".
void addAptSizes(PendingUpdates& updates, std::string_view simulation, std::string_view addresses);

/// The updates in the output of `dnf check-update`: "name.architecture version repository", up to the section of
/// obsolete packages. A line that is too long for dnf's columns goes on in the next one.
[[nodiscard]] PendingUpdates dnfUpdates(std::string_view output);

/// The update in a package identifier of PackageKit, "name;version;architecture;origin"; nothing when it is none.
[[nodiscard]] std::optional<PendingUpdate> packageKitUpdate(std::string_view packageID);

/// Marks the updates after which the system should be started anew: the kernel, the C library, systemd and D-Bus, which
/// run until then as they were; and the packages that `rebootRequired` (/run/reboot-required.pkgs, a name on each line)
/// lists.
void markRestarts(PendingUpdates& updates, std::string_view rebootRequired);

} // namespace qk::softwareupdate
