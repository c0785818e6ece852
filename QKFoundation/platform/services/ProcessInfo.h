// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <optional>

namespace qk {

/// The version of an operating system.
struct NSOperatingSystemVersion {
    std::int64_t majorVersion = 0;
    std::int64_t minorVersion = 0;
    std::int64_t patchVersion = 0;

    [[nodiscard]] friend bool operator==(const NSOperatingSystemVersion&, const NSOperatingSystemVersion&) = default;
};

namespace platform {

/// The selectors that `ProcessInfo::gestalt` knows.
enum class GestaltSelector : std::uint32_t {
    gestaltSystemVersionMajor = 0x73797331,  // 'sys1'
    gestaltSystemVersionMinor = 0x73797332,  // 'sys2'
    gestaltSystemVersionBugFix = 0x73797333, // 'sys3'
};

/// The process-information object of the base library and its older sibling. Threads: any, at the same time.
class QK_EXPORT ProcessInfo {
public:
    ProcessInfo() = default;
    ProcessInfo(const ProcessInfo&) = delete;
    ProcessInfo& operator=(const ProcessInfo&) = delete;
    virtual ~ProcessInfo();

    /// `operatingSystemVersion`. The running system's version; nothing where the object does not respond to the
    /// selector.
    [[nodiscard]] virtual std::optional<NSOperatingSystemVersion> operatingSystemVersion() const = 0;

    /// `Gestalt`. One number of the version, the older way; nothing when the selector is not answered.
    [[nodiscard]] virtual std::optional<std::int32_t> gestalt(GestaltSelector selector) const = 0;

    /// `[[NSBundle mainBundle] bundlePath]`. The folder that the running program came in; "" when that is not known.
    [[nodiscard]] virtual NSString mainBundlePath() const = 0;

    /// `[[NSBundle bundleForClass:] bundlePath]`. The folder of the bundle that has the class of that name; nothing
    /// when the process has no such class.
    [[nodiscard]] virtual std::optional<NSString> bundlePathForClass(const NSString& name) const = 0;
};

} // namespace platform
} // namespace qk
