// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/NSProcessInfo+OSVersion.h"
#include "QKFoundation/system_info/internal/OSVersion.h"

#include <array>
#include <tuple>

namespace qk {

using platform::GestaltSelector;

NSOperatingSystemVersion internal::OSXVersion(const platform::Services& services) {
    const platform::ProcessInfo& processInfo = *services.processInfo;
    if (const auto version = processInfo.operatingSystemVersion()) {
        return *version;
    }
    const auto number = [&](GestaltSelector selector) { return processInfo.gestalt(selector).value_or(0); };
    return {number(GestaltSelector::gestaltSystemVersionMajor), number(GestaltSelector::gestaltSystemVersionMinor),
            number(GestaltSelector::gestaltSystemVersionBugFix)};
}

NSString internal::versionString(const NSOperatingSystemVersion& version) {
    return NSString::fromInteger(version.majorVersion) + "." + NSString::fromInteger(version.minorVersion);
}

NSString internal::versionLongString(const NSOperatingSystemVersion& version) {
    return versionString(version) + "." + NSString::fromInteger(version.patchVersion);
}

std::optional<NSString> internal::versionCodeName(const NSOperatingSystemVersion& version) {
    static constexpr std::array<std::u16string_view, 13> kNames{
        u"Cheetah", u"Puma",          u"Jaguar",    u"Panther",  u"Tiger",      u"Leopard", u"Snow Leopard",
        u"Lion",    u"Mountain Lion", u"Mavericks", u"Yosemite", u"El Capitan", u"Sierra"};
    if (version.minorVersion < 0 || version.minorVersion >= std::ssize(kNames)) {
        return std::nullopt;
    }
    return NSString(kNames[static_cast<std::size_t>(version.minorVersion)]);
}

bool internal::versionIs(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                         std::int64_t minorVersion) {
    return version.majorVersion == majorVersion && version.minorVersion == minorVersion;
}

bool internal::versionIsGreaterThan(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                                    std::int64_t minorVersion) {
    return std::tie(version.majorVersion, version.minorVersion) > std::tie(majorVersion, minorVersion);
}

bool internal::versionIsLessThan(const NSOperatingSystemVersion& version, std::int64_t majorVersion,
                                 std::int64_t minorVersion) {
    return std::tie(version.majorVersion, version.minorVersion) < std::tie(majorVersion, minorVersion);
}

namespace NSProcessInfo_OSVersion {
namespace {

NSOperatingSystemVersion running() {
    return internal::OSXVersion(*platform::services());
}

} // namespace

NSString OSVersionString() {
    return internal::versionString(running());
}

NSString OSVersionLongString() {
    return internal::versionLongString(running());
}

std::optional<NSString> OSVersionCodeName() {
    return internal::versionCodeName(running());
}

bool OSVersionIsEqualTo(std::int64_t majorVersion, std::int64_t minorVersion) {
    return internal::versionIs(running(), majorVersion, minorVersion);
}

bool OSVersionIsGreaterThan(std::int64_t majorVersion, std::int64_t minorVersion) {
    return internal::versionIsGreaterThan(running(), majorVersion, minorVersion);
}

bool OSVersionIsLessThan(std::int64_t majorVersion, std::int64_t minorVersion) {
    return internal::versionIsLessThan(running(), majorVersion, minorVersion);
}

} // namespace NSProcessInfo_OSVersion
} // namespace qk
