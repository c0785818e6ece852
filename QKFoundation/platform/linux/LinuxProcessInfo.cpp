// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxProcessInfo.h"

#include "QKFoundation/platform/linux/ExecutablePath.h"
#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/OperatingSystem.h"

#include <string>

namespace qk::platform {
namespace {

std::optional<std::int64_t> part(const NSOperatingSystemVersion& version, GestaltSelector selector) {
    switch (selector) {
    case GestaltSelector::gestaltSystemVersionMajor: return version.majorVersion;
    case GestaltSelector::gestaltSystemVersionMinor: return version.minorVersion;
    case GestaltSelector::gestaltSystemVersionBugFix: return version.patchVersion;
    }
    return std::nullopt;
}

} // namespace

std::optional<NSOperatingSystemVersion> LinuxProcessInfo::operatingSystemVersion() const {
    const std::optional<parse::Assignments> release = operatingsystem::release(root_);
    if (!release.has_value()) {
        return std::nullopt;
    }
    return parse::versionTriple(operatingsystem::value(*release, "VERSION_ID").value_or(std::string()));
}

std::optional<std::int32_t> LinuxProcessInfo::gestalt(GestaltSelector selector) const {
    const std::optional<NSOperatingSystemVersion> version = operatingSystemVersion();
    const std::optional<std::int64_t> number = version.has_value() ? part(*version, selector) : std::nullopt;
    if (!number.has_value() || !std::in_range<std::int32_t>(*number)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*number);
}

NSString LinuxProcessInfo::mainBundlePath() const {
    const std::optional<std::string> program = executablePath(root_, "/proc/self/exe");
    return program.has_value() ? stringWithFileSystemRepresentation(*program).stringByDeletingLastPathComponent()
                               : NSString();
}

std::optional<NSString> LinuxProcessInfo::bundlePathForClass(const NSString& /*name*/) const {
    return std::nullopt;
}

} // namespace qk::platform
