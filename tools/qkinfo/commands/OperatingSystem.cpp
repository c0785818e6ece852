// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/OperatingSystem.h"

#include "QKFoundation/system_info/NSProcessInfo+OSVersion.h"
#include "QKFoundation/system_info/QKHardwareInfo.h"
#include "QKFoundation/system_info/QKSystemInfo.h"

#include "tools/qkinfo/OsRelease.h"

namespace qk::info {

std::optional<Body> operatingSystem(const Surroundings& surroundings) {
    // A system that tells no version reads as 0.0.0, with the code name of 0: then nothing that says so is true.
    const bool hasVersion = !NSProcessInfo_OSVersion::OSVersionIsEqualTo(0, 0);
    std::optional<NSString> version;
    std::optional<NSString> codeName;
    std::optional<NSString> description;
    if (hasVersion) {
        version = NSProcessInfo_OSVersion::OSVersionLongString();
        codeName = NSProcessInfo_OSVersion::OSVersionCodeName();
        description = QKSystemInfo::osVersionDescription();
    }
    return Facts{
        {"product_name", "Product", textContent(QKSystemInfo::osProductName())},
        {"version", "Version", textContent(version)},
        {"distribution", "Distribution", textContent(distributionName(surroundings.root))},
        {"code_name", "Code name", textContent(codeName)},
        {"description", "Description", textContent(description)},
        {"build", "Build", textContent(QKHardwareInfo::osRevision())},
        {"kernel_version", "Kernel", textContent(QKHardwareInfo::kernelVersion())},
        {"computer_name", "Computer name", textContent(QKSystemInfo::computerName())},
        {"user_name", "User", textContent(QKSystemInfo::username())},
        {"boot_time", "Started", momentContent(QKHardwareInfo::bootDate())},
    };
}

} // namespace qk::info
