// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDate.h"
#include "QKFoundation/platform/values/NSString.h"

#include <optional>

namespace qk {

/// `QKHardwareInfo`: texts about this machine's hardware and kernel, read afresh by every call. The numbers are C
/// functions, in "QKFoundation/system_info/QKHardwareFunctions.h".
///
/// Each answer is nothing when the system does not tell the fact, or tells it in bytes that are not UTF-8.
/// Threads: any, at the same time.
class QK_EXPORT QKHardwareInfo {
public:
    QKHardwareInfo() = delete;

    /// `model`. The model's name as the manufacturer gave it. Linux: /sys/class/dmi/id/product_name, else
    /// /proc/device-tree/model.
    [[nodiscard]] static std::optional<NSString> model();

    /// `osRevision`. The operating system's build. Linux: BUILD_ID of os-release, else the kernel's release
    /// (/proc/sys/kernel/osrelease).
    [[nodiscard]] static std::optional<NSString> osRevision();

    /// `processorTypeName`. The processor's brand. Linux: "model name" of /proc/cpuinfo.
    [[nodiscard]] static std::optional<NSString> processorTypeName();

    /// `kernelVersion`. The kernel's own account of its version. Linux: /proc/version.
    [[nodiscard]] static std::optional<NSString> kernelVersion();

    /// `bootDate`. When the machine was started, in whole seconds. Linux: "btime" of /proc/stat.
    [[nodiscard]] static std::optional<NSDate> bootDate();
};

} // namespace qk
