// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <optional>
#include <string>

namespace qk::platform {

/// The settings of a link's medium as its driver tells them (ioctl SIOCETHTOOL, ETHTOOL_GLINKSETTINGS). Nothing when
/// there is no such link or its driver has none to tell.
[[nodiscard]] std::optional<MediumFacts> readMedium(const std::string& name);

/// The same from captured files, "speed" and "duplex" of /sys/class/net/<name>, which do not tell the port. Nothing
/// when there is neither.
[[nodiscard]] std::optional<MediumFacts> readMediumFiles(const LinuxRoot& root, const std::string& name);

} // namespace qk::platform
