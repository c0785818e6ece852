// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdint>
#include <optional>

/// The version of the operating system of a given machine.
namespace qk::internal {

/// `OSXVersion`. The version triple, read afresh: from the process-information object where it tells it, else number by
/// number the older way, with 0 for a number that nobody tells.
[[nodiscard]] NSOperatingSystemVersion OSXVersion(const platform::Services& services);

[[nodiscard]] NSString versionString(const NSOperatingSystemVersion& version);
[[nodiscard]] NSString versionLongString(const NSOperatingSystemVersion& version);
[[nodiscard]] std::optional<NSString> versionCodeName(const NSOperatingSystemVersion& version);

[[nodiscard]] bool versionIs(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                             std::int64_t minorVersion);
[[nodiscard]] bool versionIsGreaterThan(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                                        std::int64_t minorVersion);
[[nodiscard]] bool versionIsLessThan(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                                     std::int64_t minorVersion);

} // namespace qk::internal
