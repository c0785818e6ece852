// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <optional>

/// `NSProcessInfo(OSVersion)`: the version of the running operating system as texts, its code name, and comparisons by
/// (major, minor).
///
/// On Linux the numbers are those of VERSION_ID in /etc/os-release, else /usr/lib/os-release: "12" is 12.0.0, "22.04"
/// is 22.4.0. Threads: any, at the same time. Every call asks the system afresh.
namespace qk::NSProcessInfo_OSVersion {

/// `OSVersionString`. Major and minor number, "12.0".
[[nodiscard]] QK_EXPORT NSString OSVersionString();

/// `OSVersionLongString`. Major, minor and patch number, "12.0.0".
[[nodiscard]] QK_EXPORT NSString OSVersionLongString();

/// `OSVersionCodeName`. The name that belongs to the minor number, from 0, "Cheetah", to 12, "Sierra"; nothing for any
/// other. Deliberate: the major number is not consulted, so every system with a minor number up to 12 has a code name.
[[nodiscard]] QK_EXPORT std::optional<NSString> OSVersionCodeName();

/// `OSVersionIsEqualTo::`. Whether both numbers are the running version's.
[[nodiscard]] QK_EXPORT bool OSVersionIsEqualTo(std::int64_t majorVersion, std::int64_t minorVersion);

/// `OSVersionIsGreaterThan::`. Whether the running version is strictly greater; the major number is compared first, the
/// patch level never.
[[nodiscard]] QK_EXPORT bool OSVersionIsGreaterThan(std::int64_t majorVersion, std::int64_t minorVersion);

/// `OSVersionIsLessThan::`. Whether the running version is strictly less; the major number is compared first, the patch
/// level never.
[[nodiscard]] QK_EXPORT bool OSVersionIsLessThan(std::int64_t majorVersion, std::int64_t minorVersion);

} // namespace qk::NSProcessInfo_OSVersion
